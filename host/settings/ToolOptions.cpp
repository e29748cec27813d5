// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/HostSettings.h"
#include "settings/OptionTable.h"
#include "settings/ToolLimits.h"
#include "settings/UsageError.h"

#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/DeviceManagerAbstract.h"

#include "DspCore/audio/CtcssTones.h"
#include "DspCore/types.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
using namespace limits;

// The device has one receiver with two channels.
constexpr int kReceiver = 0;
constexpr int kChannelA = 0;
constexpr int kChannelB = 1;

const QStringList kAgcModes = {"off", "long", "slow", "med", "fast", "user"}; // by their numbers
static_assert(int(DspCore::AgcMode::Off) == 0 && int(DspCore::AgcMode::Med) == 3
    && int(DspCore::AgcMode::User) == 5);

// The ranges of the controls on the receiver's options page, which would limit a value silently.
constexpr double kShortestAttackMs = 0.1;
constexpr double kLongestAttackMs = 2.5;
constexpr double kShortestReleaseMs = 10.0; // decay and hang
constexpr double kLongestReleaseMs = 5000.0;
constexpr double kLowestThreshold = 0.01;
constexpr double kHighestThreshold = 20.0;
constexpr int kMostPredictorSamples = 257; // taps and delay
constexpr double kSmallestStep = 1e-6;
constexpr int kLowestCwToneHz = 300;
constexpr int kHighestCwToneHz = 1000;

constexpr double kCtcssToleranceHz = 0.05; // the tones are given to a tenth of a hertz
constexpr double kHighestFrequencyHz = 800e6;

ValueCheck equalizerGains()
{
    const auto read = [](const QString &list) {
        const QStringList texts = list.split(',');
        if (texts.size() != kEqualizerBands)
            refuse(QString("%1 gains instead of %2").arg(texts.size()).arg(kEqualizerBands));
        QVariantList gains;
        for (const QString &text : texts) {
            bool ok = false;
            gains += text.toInt(&ok);
            if (!ok || std::abs(gains.last().toInt()) > kMostEqualizerDb)
                refuse(QString("'%1' is not a whole number of dB from -%2 to %2")
                           .arg(text)
                           .arg(kMostEqualizerDb));
        }
        return gains;
    };
    return {read, {}};
}

std::size_t nearestTone(double hertz)
{
    const auto distance = [hertz](double tone) { return std::abs(tone - hertz); };
    return std::size_t(
        std::ranges::min_element(Velmora::CTCSS, {}, distance) - Velmora::CTCSS.begin());
}

ValueCheck squelchTone()
{
    const auto read = [](const QString &text) {
        const double hertz = numberFrom(text);
        const double nearest = std::round(Velmora::CTCSS[nearestTone(hertz)] * 10.0) / 10.0;
        if (std::abs(nearest - hertz) > kCtcssToleranceHz)
            refuse(QString("%1 is no squelch tone, the nearest is %2")
                       .arg(text)
                       .arg(nearest, 0, 'f', 1));
        return nearest;
    };
    return {read, {}};
}

/// A call of the device with the receiver's number and the switch.
auto turnOn(void (DeviceAbstract::*set)(unsigned, bool))
{
    return [set](const OptionTarget &to, const QVariant &) { (to.device.*set)(kReceiver, true); };
}

// A new engine calls its mode Off while its receiver's control is on, and takes Off for nothing
// new. Of several changes only the last one is heard.
void beginAgc(const OptionTarget &to, const QVariant &name)
{
    const auto set = [&to](
                         int mode) { to.device.setAgcMode(kReceiver, kChannelA, unsigned(mode)); };
    const int mode = kAgcModes.indexOf(name.toString());
    if (mode == int(DspCore::AgcMode::Off))
        set(int(DspCore::AgcMode::Med));
    else if (!to.settings.given.contains("agc-gain"))
        to.device.setAgcGain(kReceiver, kChannelA, kComfortableAgcGainDb);
    set(mode);
}

void setUpSquelch(const OptionTarget &to, const QVariant &dbm)
{
    for (const int channel : {kChannelA, kChannelB}) {
        to.device.setSqlValue(kReceiver, channel, dbm.toInt());
        to.device.setSqlEnable(kReceiver, channel, true);
    }
}

void setUpCtcss(const OptionTarget &to, const QVariant &hertz)
{
    to.device.setToneCTCSS(kReceiver, int(nearestTone(hertz.toDouble())));
    to.device.setEnableCTCSS(kReceiver, true);
}

void setUpEqualizer(const OptionTarget &to, const QVariant &gains)
{
    QList<int> values;
    for (const QVariant &gain : gains.toList())
        values += gain.toInt();
    to.device.setEqualizerGains(kReceiver, values);
    to.device.setEqualizerEnable(kReceiver, true);
}

void setUpChannelB(const OptionTarget &to, const QVariant &hertz)
{
    to.device.setDownConverter(kReceiver, kChannelB, hertz.toDouble() - to.settings.centerHz);
    to.device.receiverChannelEnable(kReceiver, kChannelB, true);
}

void setUpBalance(const OptionTarget &to, const QVariant &db)
{
    for (const int channel : {kChannelA, kChannelB})
        to.device.setBalance(kReceiver, channel, db.toInt());
}

/// The time of an AGC mode, a stored setting of that mode.
Option agcTime(const char *name, const char *help, const char *key, double lowest, double highest)
{
    return {.name = name,
        .argument = "MS",
        .help = help,
        .value = number(lowest, highest),
        .modes = kWithAgc,
        .stored = key,
        .storedBy = "agc"};
}

/// A detail of noise reduction or auto notch: a stored setting of the device.
Option predictorSamples(const char *name, const char *help, const char *owner, const char *key)
{
    return {.name = name,
        .argument = "N",
        .help = help,
        .value = wholeNumber(1, kMostPredictorSamples),
        .needs = owner,
        .stored = key};
}

Option predictorStep(const char *name, const char *help, const char *owner, const char *key)
{
    return {.name = name,
        .argument = "X",
        .help = help,
        .value = number(kSmallestStep, 1.0),
        .needs = owner,
        .stored = key};
}

Option blankerThreshold(const char *name, const char *help, const char *owner, const char *key)
{
    return {.name = name,
        .argument = "RATIO",
        .help = help,
        .value = number(kLowestThreshold, kHighestThreshold),
        .needs = owner,
        .stored = key};
}
} // namespace

std::vector<Option> toolOptions()
{
    return {
        {.name = "agc",
            .argument = "MODE",
            .help = "Gain control",
            .value = oneOf(kAgcModes),
            .standard = "med",
            .modes = kWithAgc,
            .begin = beginAgc},
        {.name = "agc-gain",
            .argument = "DB",
            .help = "Highest gain of the gain control, or its gain while off",
            .value = wholeNumber(kLowestAgcGainDb, kHighestAgcGainDb),
            .otherwise = "60, while off the receiver's own",
            .modes = kWithAgc,
            .begin =
                [](const OptionTarget &to, const QVariant &db) {
                    to.device.setAgcGain(kReceiver, kChannelA, db.toInt());
                }},
        agcTime("agc-attack", "Attack time of the gain control's mode", "agc_%1_Attack",
            kShortestAttackMs, kLongestAttackMs),
        agcTime("agc-decay", "Decay time of the gain control's mode", "agc_%1_Decay",
            kShortestReleaseMs, kLongestReleaseMs),
        agcTime("agc-hang", "Hang time of the gain control's mode", "agc_%1_hangTime",
            kShortestReleaseMs, kLongestReleaseMs),
        {.name = "nb1",
            .help = "Mute impulses in the IQ",
            .setUp = turnOn(&DeviceAbstract::setNb1)},
        blankerThreshold("nb1-threshold", "How far an impulse stands out, as a ratio of amplitudes",
            "nb1", "dsp_nb1_thr"),
        {.name = "nb2",
            .help = "Smooth impulses in the IQ",
            .setUp = turnOn(&DeviceAbstract::setNb2)},
        blankerThreshold("nb2-threshold", "The same for --nb2", "nb2", "dsp_nb2_thr"),
        {.name = "nr",
            .help = "Noise reduction",
            .modes = kWithPredictors,
            .setUp = turnOn(&DeviceAbstract::setNr)},
        predictorSamples("nr-taps", "Length of its filter in samples", "nr", "dsp_nr_taps"),
        predictorSamples("nr-delay", "Distance of its filter in samples", "nr", "dsp_nr_delay"),
        predictorStep("nr-rate", "Its step size", "nr", "dsp_nr_rate"),
        predictorStep("nr-leak", "How fast it forgets", "nr", "dsp_nr_leak"),
        {.name = "anf",
            .help = "Automatic notch filter",
            .modes = kWithPredictors,
            .setUp = turnOn(&DeviceAbstract::setAnf)},
        predictorSamples("anf-taps", "Length of its filter in samples", "anf", "dsp_anf_taps"),
        predictorSamples("anf-delay", "Distance of its filter in samples", "anf", "dsp_anf_delay"),
        predictorStep("anf-rate", "Its step size", "anf", "dsp_anf_rate"),
        predictorStep("anf-leak", "How fast it forgets", "anf", "dsp_anf_leak"),
        {.name = "apf",
            .help = "Audio peak filter",
            .modes = kWithPeakFilter,
            .setUp = [](const OptionTarget &to,
                         const QVariant &) { emit to.manager.apfChanged(kReceiver, true); }},
        {.name = "dse",
            .help = "Spread CW between the ears",
            .modes = {Mode::CW},
            .setUp = [](const OptionTarget &to,
                         const QVariant &) { emit to.manager.dseChanged(kReceiver, true); }},
        {.name = "binaural",
            .help = "Binaural audio",
            .modes = kWithBinaural,
            .setUp = turnOn(&DeviceAbstract::setBin)},
        {.name = "equalizer",
            .argument = "DB1,...,DB18",
            .help = "18 gains in whole dB, lowest band first",
            .value = equalizerGains(),
            .modes = kWithEqualizer,
            .setUp = setUpEqualizer},
        {.name = "squelch",
            .argument = "DBM",
            .help = "Silence below this level",
            .value = wholeNumber(kLowestSquelchDbm, kHighestSquelchDbm),
            .modes = kWithSquelch,
            .setUp = setUpSquelch},
        {.name = "ctcss",
            .argument = "HZ",
            .help = "Silence without this squelch tone",
            .value = squelchTone(),
            .modes = {Mode::NFM},
            .setUp = setUpCtcss},
        {.name = "tune-b",
            .argument = "HZ",
            .help = "Frequency of a second station, heard along with --tune",
            .value = number(0.0, kHighestFrequencyHz),
            .modes = kWithChannelB,
            .keep = [](HostSettings &settings,
                        const QVariant &hertz) { settings.tuneBHz = hertz.toDouble(); },
            .setUp = setUpChannelB},
        {.name = "volume",
            .argument = "DB",
            .help = "Whole dB, the lowest being silence",
            .value = wholeNumber(kSilenceDb, 0),
            .setUp = [](const OptionTarget &to,
                         const QVariant &db) { to.device.setMainVolume(db.toInt()); }},
        {.name = "volume-b",
            .argument = "DB",
            .help = "The same for the second station",
            .value = wholeNumber(kSilenceDb, 0),
            .needs = "tune-b",
            .setUp =
                [](const OptionTarget &to, const QVariant &db) {
                    to.device.setVolume(kReceiver, kChannelB, db.toInt());
                }},
        // The receiver passes by the controls of its channels while only one of them is heard.
        {.name = "balance",
            .argument = "DB",
            .help = "Whole dB of both stations, above 0 the right side is quieter",
            .value = wholeNumber(kSilenceDb, -kSilenceDb),
            .needs = "tune-b",
            .setUp = setUpBalance},
        {.name = "cw-tone",
            .argument = "HZ",
            .help = "Pitch of a CW station in tune",
            .value = wholeNumber(kLowestCwToneHz, kHighestCwToneHz),
            .otherwise = "as stored, at first 700",
            .modes = {Mode::CW},
            .stored = "cw_pitch"},
        {.name = "mono",
            .help = "Wide FM without stereo",
            .modes = {Mode::WFM},
            .setUp = [](const OptionTarget &to,
                         const QVariant &) { to.device.setWfmStereo(kReceiver, false); }},
    };
}
} // namespace host
