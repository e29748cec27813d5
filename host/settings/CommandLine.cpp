// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/CommandLine.h"

#include "settings/Numbers.h"
#include "settings/OptionTable.h"

#include "library/DeviceKind.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
const QString kMoreHelp = R"(Modes and their filters, in hertz from --tune:
%1In CW a station in tune is heard at --cw-tone. In DIGL and DIGU a station in
tune is heard at --digl-offset or --digu-offset, and --filter counts from 0 Hz
of the audio, so --digu-offset 1500 --filter 300:2700 receives from 1200 Hz
below --tune to 1200 Hz above.

Exit status: 0 when all went well, 1 when the receiver failed or a result could
not be kept, 2 for options or files that cannot be used.

Examples:
  velmora-host --headless --mode LSB --seconds 60 --out - | aplay
  velmora-host --headless --scene band.wav --tune 14.074M --mode DIGU \
      --free-run --out data.wav --report data.json
  velmora-host --headless --panorama band.png --waterfall time.png --seconds 15
)";

/// As the parser wants them.
const QList<QCommandLineOption> &parserOptions()
{
    static const QList<QCommandLineOption> options = [] {
        QList<QCommandLineOption> all;
        for (const Option &option : optionTable())
            all += QCommandLineOption(option.name, option.helpText(), option.argument);
        all += QCommandLineOption({"h", "help"}, "Show this text.");
        all += QCommandLineOption("version", "Show the version.");
        return all;
    }();
    return options;
}

/// Declares the options of the table and turns their texts into settings, one after the other.
class Reader
{
public:
    explicit Reader(const QStringList &arguments)
    {
        m_parser.setApplicationDescription(
            "A receiver in a window; with --headless it receives a station and writes what a sound "
            "card would have played.\nFrequencies may be written as 14074000, 14.074M, 7.1e6 or "
            "192k.");
        m_parser.addOptions(parserOptions());
        if (!m_parser.parse(arguments))
            refuse(m_parser.errorText().simplified().chopped(1));
        if (!m_parser.positionalArguments().isEmpty())
            refuse("unexpected argument '" + m_parser.positionalArguments().first() + "'");
    }

    bool isSet(const char *option) const { return m_parser.isSet(option); }
    QString helpText() const { return m_parser.helpText() + '\n' + kMoreHelp.arg(modeHelp()); }

    HostSettings settings()
    {
        for (const Option &option : optionTable())
            read(option);
        for (const Option &option : optionTable())
            if (isSet(option.name))
                judge(option);
        checkTogether();
        chooseFrequencies();
        return m_settings;
    }

private:
    void read(const Option &option)
    {
        const QString name = option.name;
        if (option.needs && isSet(option.name) && !isSet(option.needs))
            refuse(QString("--%1 needs --%2").arg(name, option.needs));
        if (option.standard)
            m_settings.standard[name] = option.value.read(option.standard);
        if (!isSet(option.name)) {
            if (option.standard)
                take(option, m_settings.standard[name]);
            return;
        }
        try {
            QVariantList values;
            for (const QString &text : option.argument ? m_parser.values(name) : QStringList{{}})
                values += option.argument ? option.value.read(text) : QVariant(true);
            if (!option.isRepeatable)
                values = {values.last()};
            for (const QVariant &value : qAsConst(values))
                take(option, value);
            m_settings.given[name] = option.isRepeatable ? QVariant(values) : values.last();
        } catch (const UsageError &error) {
            refuse(QString("--%1: %2").arg(name, error.text));
        }
    }

    void take(const Option &option, const QVariant &value)
    {
        if (option.keep && option.modes.has(m_settings.mode->mode))
            option.keep(m_settings, value);
    }

    /// Notes what has no effect.
    void judge(const Option &option)
    {
        const QString name = option.name;
        if (!option.modes.has(m_settings.mode->mode))
            m_settings.notices +=
                QString("--%1 does nothing in %2.").arg(name, m_settings.mode->name)
                + option.modes.remark();
        const auto isGiven = [this](const QString &other) { return m_parser.isSet(other); };
        if (!option.serves.isEmpty() && std::ranges::none_of(option.serves, isGiven))
            m_settings.notices +=
                QString("--%1 does nothing without --%2.").arg(name, option.serves.join(" or --"));
    }

    /// What no row can say of itself.
    void checkTogether() const
    {
        if (m_settings.autoPreamp && m_settings.freeRun)
            refuse("--auto-preamp goes by the clock, which --free-run does not");
        if (isSet("device") && isSet("d2xx"))
            refuse("--device and --d2xx both name the library");
        if (m_settings.rigPort && m_settings.freeRun)
            refuse("--rig-port is for a run in real time, which --free-run is not");
        for (const char *time : {"agc-attack", "agc-decay", "agc-hang"})
            if (isSet(time) && m_settings.given["agc"] == "off")
                refuse(QString("--%1 has no meaning with --agc off").arg(time));
    }

    /// The centre is where the scene is, or the station if it is out of reach from there.
    void chooseFrequencies()
    {
        HostSettings &s = m_settings;
        if (!isSet("center")) {
            if (s.sceneFrequencyHz > 0.0)
                s.centerHz = s.sceneFrequencyHz;
            if (isSet("tune") && !isInReach(s.tuneHz))
                s.centerHz = s.tuneHz;
        }
        if (!isSet("tune"))
            s.tuneHz = isBuiltinBand() && !isSet("center") ? s.mode->builtinHz : s.centerHz;
        checkReach("tune", s.tuneHz);
        if (s.tuneBHz)
            checkReach("tune-b", *s.tuneBHz);
        for (const NotchSettings &notch : qAsConst(s.notches))
            checkReach("notch", notch.frequencyHz);
    }

    /// In whose middle there is nothing.
    bool isBuiltinBand() const
    {
        const DeviceKind *kind = findDeviceKind(m_settings.device);
        return m_settings.sceneFile.isEmpty() && m_settings.d2xxFile.isEmpty()
            && !(kind && kind->isHardware);
    }

    double reachHz() const { return m_settings.deviceRateHz / 2.0; }
    bool isInReach(double frequencyHz) const
    {
        return std::abs(frequencyHz - m_settings.centerHz) <= reachHz();
    }

    void checkReach(const char *option, double frequencyHz) const
    {
        if (!isInReach(frequencyHz))
            refuse(QString("--%1: %2 is not within %3 of the centre %4")
                       .arg(option, formatNumber(frequencyHz), formatNumber(reachHz()),
                           formatNumber(m_settings.centerHz)));
    }

    QCommandLineParser m_parser;
    HostSettings m_settings;
};
} // namespace

std::variant<HostSettings, Information, UsageError> readCommandLine(const QStringList &arguments)
{
    try {
        Reader reader(arguments);
        if (reader.isSet("help"))
            return Information{reader.helpText()};
        if (reader.isSet("version"))
            return Information{"velmora-host " + QCoreApplication::applicationVersion() + '\n'};
        return reader.settings();
    } catch (const UsageError &error) {
        return error;
    }
}
} // namespace host
