// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/Dial.h"

#include "settings/ToolLimits.h"

#include "DspCore/audio/CtcssTones.h"
#include "host_interfaces/DeviceAbstract.h"

#include <QCoreApplication>

namespace host
{
namespace
{
constexpr int kReceiver = 0;

void setSquelch(DeviceAbstract &device, double dbm)
{
    for (const unsigned channel : {0u, 1u})
        device.setSqlValue(kReceiver, channel, int(dbm));
}

// A station that is heard has some 20 dB more in its filter than this.
constexpr double kSquelchDbm = -100.0;
constexpr double kVolumeDb = -12.0; // room above for who wants it louder
} // namespace

const std::array<DialRow, kDials> &dialTable()
{
    using namespace limits;
    static const std::array<DialRow, kDials> kTable{{
        {Dial::Volume, "volume", QT_TRANSLATE_NOOP("Dial", "Volume"),
            QT_TRANSLATE_NOOP("Dial", "Loudness of all that is heard; at the left end silence"),
            "dB", kSilenceDb, 0.0, 1.0, kVolumeDb, ModeSet::every(),
            [](DeviceAbstract &device, double db) { device.setMainVolume(int(db)); }},
        {Dial::VolumeA, "volumea", QT_TRANSLATE_NOOP("Dial", "Volume A"),
            QT_TRANSLATE_NOOP("Dial", "Loudness of VFO A beside B"), "dB", kSilenceDb, 0.0, 1.0,
            0.0, kWithChannelB, nullptr},
        {Dial::VolumeB, "volumeb", QT_TRANSLATE_NOOP("Dial", "Volume B"),
            QT_TRANSLATE_NOOP("Dial", "Loudness of VFO B beside A"), "dB", kSilenceDb, 0.0, 1.0,
            0.0, kWithChannelB, nullptr},
        {Dial::Balance, "balance", QT_TRANSLATE_NOOP("Dial", "Balance"),
            QT_TRANSLATE_NOOP("Dial", "Above 0 the right ear is quieter, below 0 the left"), "dB",
            kSilenceDb, -kSilenceDb, 1.0, 0.0, kWithChannelB, nullptr},
        {Dial::AgcGain, "agcgain", QT_TRANSLATE_NOOP("Dial", "AGC gain"),
            QT_TRANSLATE_NOOP("Dial", "Highest gain of the gain control, or its gain while off"),
            "dB", kLowestAgcGainDb, kHighestAgcGainDb, 1.0, kComfortableAgcGainDb, kWithAgc,
            [](DeviceAbstract &device, double db) { device.setAgcGain(kReceiver, 0, int(db)); }},
        {Dial::Squelch, "squelchlevel", QT_TRANSLATE_NOOP("Dial", "Squelch"),
            QT_TRANSLATE_NOOP("Dial", "Level that a signal needs to be heard"), "dBm",
            kLowestSquelchDbm, kHighestSquelchDbm, 1.0, kSquelchDbm, kWithSquelch, setSquelch},
        {Dial::CtcssTone, "ctcsstone", QT_TRANSLATE_NOOP("Dial", "Tone"),
            QT_TRANSLATE_NOOP("Dial", "Squelch tone, by its number"), "", 0.0,
            double(Velmora::CTCSS.size() - 1), 1.0, 8.0, {Mode::NFM}, // 88.5 Hz, the commonest
            [](DeviceAbstract &device, double index) {
                device.setToneCTCSS(kReceiver, int(index));
            }},
        {Dial::Preamp, "preamp", QT_TRANSLATE_NOOP("Dial", "Preamp"),
            QT_TRANSLATE_NOOP(
                "Dial", "Below 0 attenuates, above 0 amplifies what the aerial gives"),
            "dB", 0.0, 0.0, 1.0, 0.0, ModeSet::every(), nullptr},
        {Dial::Rit, "ritoffset", QT_TRANSLATE_NOOP("Dial", "RIT"),
            QT_TRANSLATE_NOOP("Dial", "How far beside the frequency shown is received"), "Hz",
            -kMostRitHz, kMostRitHz, 1.0, 0.0, ModeSet::every(), nullptr},
    }};
    return kTable;
}

QString nameOf(Dial id)
{
    return QCoreApplication::translate("Dial", rowOf(id).name);
}

QString helpOf(Dial id)
{
    return QCoreApplication::translate("Dial", rowOf(id).help);
}
} // namespace host
