// SPDX-License-Identifier: GPL-3.0-or-later
#include "peer/Sigtool.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <stdexcept>

namespace
{
constexpr char kFrameSeconds[] = "1.75";

struct Outcome
{
    int status;
    QByteArray output;
};

Outcome run(const QString &program, const QStringList &arguments, const QByteArray &input = {})
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit)
        throw std::runtime_error(qPrintable(program + ": " + process.errorString()));
    return {process.exitCode(), process.readAllStandardOutput()};
}
} // namespace

namespace bench
{
std::vector<std::uint8_t> Sigtool::frames() const
{
    const Outcome made = run(m_options.sigtool,
        {"frames", m_options.mode->name, QString::number(m_options.rateHz), kFrameSeconds});
    if (made.status != 0 || made.output.isEmpty())
        throw std::runtime_error("sigtool makes no frames");
    return {made.output.begin(), made.output.end()};
}

QString Sigtool::variant() const
{
    QString text = QString("%1 taps").arg(m_options.taps);
    if (m_options.linesPerSecond > 0.0)
        text += " +spectrum";
    if (m_options.tools)
        text += " +tools";
    return text;
}

Sigtool::Verdict Sigtool::check(
    const std::vector<float> &audio, const std::vector<double> &cpu) const
{
    const PeerOptions::Mode &mode = *m_options.mode;
    const char *channels = mode.stereo ? "1" : "2";
    QStringList arguments{"check", mode.name, "ZephrinNano:" + variant(),
        QString::number(m_options.rateHz), channels, QString::number(m_options.seconds)};
    for (const double seconds : cpu)
        arguments << QString::number(seconds, 'f', 6);
    const auto bytes = int(audio.size() * sizeof(float));
    const Outcome judged = run(m_options.sigtool, arguments,
        QByteArray::fromRawData(reinterpret_cast<const char *>(audio.data()), bytes));

    Verdict verdict{judged.output.trimmed(), judged.status == 0, 0.0};
    const auto json = QJsonDocument::fromJson(verdict.line).object();
    if (!json.contains("sinad_db"))
        throw std::runtime_error("sigtool gives no verdict");
    verdict.sinadDb = json["sinad_db"].toDouble();
    if (mode.floorDb > 0.0) {
        verdict.good = verdict.sinadDb >= mode.floorDb;
        verdict.line.replace("\"check\":\"ok\"", "\"check\":\"FAIL\"");
        verdict.line.replace("\"check\":\"FAIL\"",
            QString("\"check\":\"%1\",\"floor_db\":%2")
                .arg(verdict.good ? "ok" : "FAIL")
                .arg(mode.floorDb)
                .toUtf8());
    }
    return verdict;
}
} // namespace bench
