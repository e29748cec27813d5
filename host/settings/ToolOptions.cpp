// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/ToolOptions.h"

#include "settings/Numbers.h"
#include "settings/UsageError.h"

#include "DspCore/audio/CtcssTones.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr int kLowestAgcGainDb = -20;
constexpr int kHighestAgcGainDb = 120;

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

constexpr int kMostEqualizerDb = 40; // up or down
constexpr int kLowestSquelchDbm = -160;
constexpr int kHighestSquelchDbm = 20;
constexpr double kCtcssToleranceHz = 0.05; // the tones are given to a tenth of a hertz
constexpr int kSilenceDb = -60;

/// The texts of the options of one predictor.
struct PredictorOptions
{
    const char *on;
    const char *taps;
    const char *delay;
    const char *rate;
    const char *leak;
};
constexpr PredictorOptions kNr = {"nr", "nr-taps", "nr-delay", "nr-rate", "nr-leak"};
constexpr PredictorOptions kAnf = {"anf", "anf-taps", "anf-delay", "anf-rate", "anf-leak"};

PredictorSettings readPredictor(const OptionReader &options, const PredictorOptions &names)
{
    for (const char *detail : {names.taps, names.delay, names.rate, names.leak})
        options.require(detail, names.on);
    PredictorSettings settings;
    settings.on = options.isSet(names.on);
    settings.taps = options.findInteger(names.taps, 1, kMostPredictorSamples);
    settings.delay = options.findInteger(names.delay, 1, kMostPredictorSamples);
    settings.rate = options.find(names.rate, kSmallestStep, 1.0);
    settings.leak = options.find(names.leak, kSmallestStep, 1.0);
    return settings;
}

DspCore::AgcMode readAgcMode(const OptionReader &options, DspCore::AgcMode fallback)
{
    if (!options.isSet("agc"))
        return fallback;
    for (std::size_t i = 0; i < kAgcModeNames.size(); ++i)
        if (options.text("agc").compare(kAgcModeNames[i], Qt::CaseInsensitive) == 0)
            return DspCore::AgcMode(i);
    refuse(QString("--agc: '%1' is none of off, long, slow, med, fast, user")
               .arg(options.text("agc")));
}

void readAgc(const OptionReader &options, ToolSettings &settings)
{
    settings.agcMode = readAgcMode(options, settings.agcMode);
    settings.agcGainDb = options.findInteger("agc-gain", kLowestAgcGainDb, kHighestAgcGainDb);
    settings.agcAttackMs = options.find("agc-attack", kShortestAttackMs, kLongestAttackMs);
    settings.agcDecayMs = options.find("agc-decay", kShortestReleaseMs, kLongestReleaseMs);
    settings.agcHangMs = options.find("agc-hang", kShortestReleaseMs, kLongestReleaseMs);
    for (const char *time : {"agc-attack", "agc-decay", "agc-hang"})
        if (settings.agcMode == DspCore::AgcMode::Off && options.isSet(time))
            refuse(QString("--%1 has no meaning with --agc off").arg(time));
}

void readBlankers(const OptionReader &options, ToolSettings &settings)
{
    options.require("nb1-threshold", "nb1");
    options.require("nb2-threshold", "nb2");
    settings.nb1 = options.isSet("nb1");
    settings.nb2 = options.isSet("nb2");
    settings.nb1Threshold = options.find("nb1-threshold", kLowestThreshold, kHighestThreshold);
    settings.nb2Threshold = options.find("nb2-threshold", kLowestThreshold, kHighestThreshold);
}

QVector<int> readEqualizer(const OptionReader &options)
{
    if (!options.isSet("equalizer"))
        return {};
    const QStringList texts = options.text("equalizer").split(',');
    if (texts.size() != ToolSettings::kEqualizerBands)
        refuse(QString("--equalizer: %1 gains instead of %2")
                   .arg(texts.size())
                   .arg(ToolSettings::kEqualizerBands));
    QVector<int> gains;
    for (const QString &text : texts) {
        bool ok = false;
        gains += text.toInt(&ok);
        if (!ok || std::abs(gains.last()) > kMostEqualizerDb)
            refuse(QString("--equalizer: '%1' is not a whole number of dB from -%2 to %2")
                       .arg(text)
                       .arg(kMostEqualizerDb));
    }
    return gains;
}

std::optional<int> readCtcss(const OptionReader &options)
{
    if (!options.isSet("ctcss"))
        return std::nullopt;
    const double hz = options.number("ctcss", 0.0);
    const auto &tones = Velmora::CTCSS;
    const auto nearest =
        std::ranges::min_element(tones, {}, [hz](double tone) { return std::abs(tone - hz); });
    if (std::abs(*nearest - hz) > kCtcssToleranceHz)
        refuse(QString("--ctcss: %1 is no squelch tone, the nearest is %2")
                   .arg(options.text("ctcss"))
                   .arg(double(*nearest), 0, 'f', 1));
    return int(nearest - tones.begin());
}

void readChannels(const OptionReader &options, ToolSettings &settings)
{
    // The receiver passes by the controls of its channels while only one of them is heard.
    options.require("volume-b", "tune-b");
    options.require("balance", "tune-b");
    if (options.isSet("tune-b"))
        settings.tuneBHz = options.number("tune-b", 0.0);
    settings.volumeDb = options.findInteger("volume", kSilenceDb, 0).value_or(0);
    settings.volumeBDb = options.findInteger("volume-b", kSilenceDb, 0).value_or(0);
    settings.balanceDb = options.findInteger("balance", kSilenceDb, -kSilenceDb).value_or(0);
}
} // namespace

void declareToolOptions(QCommandLineParser &parser)
{
    parser.addOptions({
        {"agc", "Gain control: off, long, slow, med, fast or user. Default med.", "MODE"},
        {"agc-gain", "Highest gain of the gain control, or its gain while off: -20 to 120.", "DB"},
        {"agc-attack", "Attack time of the gain control's mode, 0.1 to 2.5.", "MS"},
        {"agc-decay", "Decay time of the gain control's mode, 10 to 5000.", "MS"},
        {"agc-hang", "Hang time of the gain control's mode, 10 to 5000.", "MS"},
        {"nb1", "Mute impulses in the IQ."},
        {"nb1-threshold", "How far an impulse stands out, as a ratio of amplitudes.", "RATIO"},
        {"nb2", "Smooth impulses in the IQ."},
        {"nb2-threshold", "The same for --nb2.", "RATIO"},
        {"nr", "Noise reduction."},
        {"nr-taps", "Length of its filter in samples, 1 to 257.", "N"},
        {"nr-delay", "Distance of its filter in samples, 1 to 257.", "N"},
        {"nr-rate", "Its step size, 1e-6 to 1.", "X"},
        {"nr-leak", "How fast it forgets, 1e-6 to 1.", "X"},
        {"anf", "Automatic notch filter."},
        {"anf-taps", "Length of its filter in samples.", "N"},
        {"anf-delay", "Distance of its filter in samples.", "N"},
        {"anf-rate", "Its step size, 1e-6 to 1.", "X"},
        {"anf-leak", "How fast it forgets, 1e-6 to 1.", "X"},
        {"apf", "Audio peak filter (LSB, USB, CW)."},
        {"dse", "Spread CW between the ears."},
        {"binaural", "Binaural audio."},
        {"equalizer", "18 gains in whole dB, lowest band first.", "G1,...,G18"},
        {"squelch", "Silence below this level.", "DBM"},
        {"ctcss", "Silence without this squelch tone (NFM).", "HZ"},
        {"tune-b", "Frequency of a second station, heard along with --tune.", "HZ"},
        {"volume", "Whole dB from -60 (silence) to 0. Default 0.", "DB"},
        {"volume-b", "The same for the second station.", "DB"},
        {"balance", "Whole dB from -60 to 60, above 0 the right side is quieter; needs --tune-b.",
            "DB"},
        {"cw-tone", "Pitch of a CW station in tune, 300 to 1000.", "HZ"},
        {"mono", "Wide FM without stereo."},
    });
}

ToolSettings readToolOptions(const OptionReader &options)
{
    ToolSettings settings;
    readAgc(options, settings);
    readBlankers(options, settings);
    settings.nr = readPredictor(options, kNr);
    settings.anf = readPredictor(options, kAnf);
    settings.apf = options.isSet("apf");
    settings.dse = options.isSet("dse");
    settings.binaural = options.isSet("binaural");
    settings.equalizerDb = readEqualizer(options);
    settings.squelchDbm = options.findInteger("squelch", kLowestSquelchDbm, kHighestSquelchDbm);
    settings.ctcssIndex = readCtcss(options);
    readChannels(options, settings);
    settings.cwToneHz = options.findInteger("cw-tone", kLowestCwToneHz, kHighestCwToneHz);
    settings.mono = options.isSet("mono");
    return settings;
}
} // namespace host
