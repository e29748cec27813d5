// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/Switch.h"

#include "settings/ToolLimits.h"

#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/DeviceManagerAbstract.h"

#include <QCoreApplication>

namespace host
{
namespace
{
constexpr int kReceiver = 0;
constexpr int kSum = -1; // instead of a channel

/// A call of the device with the receiver's number and the switch.
template <auto Set>
void set(DeviceAbstract &device, DeviceManagerAbstract &, bool on)
{
    (device.*Set)(kReceiver, on);
}

void setApf(DeviceAbstract &, DeviceManagerAbstract &manager, bool on)
{
    Q_EMIT manager.apfChanged(kReceiver, on);
}

void setDse(DeviceAbstract &, DeviceManagerAbstract &manager, bool on)
{
    Q_EMIT manager.dseChanged(kReceiver, on);
}

// Channel 0 is the one that listens to the active VFO, channel 1 to the other.
void setSquelch(DeviceAbstract &device, DeviceManagerAbstract &, bool on)
{
    for (const unsigned channel : {0u, 1u})
        device.setSqlEnable(kReceiver, channel, on);
}

void setMute(DeviceAbstract &device, DeviceManagerAbstract &, bool on)
{
    device.setMute(kReceiver, kSum, on);
}
} // namespace

const std::array<SwitchRow, kSwitches> &switchTable()
{
    using namespace limits;
    static const std::array<SwitchRow, kSwitches> kTable{{
        {Switch::Nb1, "nb1", QT_TRANSLATE_NOOP("Switch", "NB1"),
            QT_TRANSLATE_NOOP("Switch", "Mutes impulses, such as those of an electric fence"),
            ModeSet::every(), false, set<&DeviceAbstract::setNb1>},
        {Switch::Nb2, "nb2", QT_TRANSLATE_NOOP("Switch", "NB2"),
            QT_TRANSLATE_NOOP("Switch", "Smooths impulses, such as those of an ignition"),
            ModeSet::every(), false, set<&DeviceAbstract::setNb2>},
        {Switch::Nr, "nr", QT_TRANSLATE_NOOP("Switch", "NR"),
            QT_TRANSLATE_NOOP("Switch", "Takes noise out of speech and telegraphy"),
            kWithPredictors, false, set<&DeviceAbstract::setNr>},
        {Switch::Anf, "anf", QT_TRANSLATE_NOOP("Switch", "ANF"),
            QT_TRANSLATE_NOOP("Switch", "Finds steady whistles and takes them out"),
            kWithPredictors, false, set<&DeviceAbstract::setAnf>},
        {Switch::Apf, "apf", QT_TRANSLATE_NOOP("Switch", "APF"),
            QT_TRANSLATE_NOOP("Switch", "Lifts the pitch of a weak station out of the noise"),
            kWithPeakFilter, false, setApf},
        {Switch::Dse, "dse", QT_TRANSLATE_NOOP("Switch", "DSE"),
            QT_TRANSLATE_NOOP("Switch", "Spreads telegraphy between the ears by its pitch"),
            {Mode::CW}, false, setDse},
        {Switch::Binaural, "binaural", QT_TRANSLATE_NOOP("Switch", "BIN"),
            QT_TRANSLATE_NOOP("Switch", "Gives each ear its own phase, which sounds wider"),
            kWithBinaural, false, set<&DeviceAbstract::setBin>},
        {Switch::Squelch, "squelch", QT_TRANSLATE_NOOP("Switch", "SQL"),
            QT_TRANSLATE_NOOP("Switch", "Silence while the signal is below the level"),
            kWithSquelch, false, setSquelch},
        {Switch::Ctcss, "ctcss", QT_TRANSLATE_NOOP("Switch", "CTCSS"),
            QT_TRANSLATE_NOOP("Switch",
                "Silence without the tone; together with SQL the end of a transmission is quiet"),
            {Mode::NFM}, false,
            [](DeviceAbstract &device, DeviceManagerAbstract &, bool on) {
                device.setEnableCTCSS(kReceiver, on);
            }},
        {Switch::Equalizer, "equalizer", QT_TRANSLATE_NOOP("Switch", "EQ"),
            QT_TRANSLATE_NOOP("Switch", "Shapes the audio with 18 sliders"), kWithEqualizer, false,
            set<&DeviceAbstract::setEqualizerEnable>},
        {Switch::Stereo, "stereo", QT_TRANSLATE_NOOP("Switch", "Stereo"),
            QT_TRANSLATE_NOOP("Switch", "Wide FM in stereo where it is broadcast so"), {Mode::WFM},
            true, set<&DeviceAbstract::setWfmStereo>},
        {Switch::Mute, "mute", QT_TRANSLATE_NOOP("Switch", "Mute"),
            QT_TRANSLATE_NOOP("Switch", "No sound"), ModeSet::every(), false, setMute},
        {Switch::AutoPreamp, "autopreamp", QT_TRANSLATE_NOOP("Switch", "Auto"),
            QT_TRANSLATE_NOOP("Switch", "The receiver chooses attenuator and preamplifier"),
            ModeSet::every(), false, nullptr},
        {Switch::Rit, "rit", QT_TRANSLATE_NOOP("Switch", "RIT"),
            QT_TRANSLATE_NOOP("Switch", "Receives beside the frequency shown"), ModeSet::every(),
            false, nullptr},
    }};
    return kTable;
}

QString nameOf(Switch id)
{
    return QCoreApplication::translate("Switch", rowOf(id).name);
}

QString helpOf(Switch id)
{
    return QCoreApplication::translate("Switch", rowOf(id).help);
}
} // namespace host
