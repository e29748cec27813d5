// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QRegularExpression>
#include <QString>

/// One row: a session program with its fault, run to its end.
class SessionProcess
{
public:
    SessionProcess() = default;
    SessionProcess(const char *program, const QString &fault)
    {
        constexpr int kLongestMs = 120000;
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, {fault});
        m_hasEnded =
            process.waitForFinished(kLongestMs) && process.exitStatus() == QProcess::NormalExit;
        m_status = process.exitCode();
        m_output = QString::fromLocal8Bit(process.readAll());
    }

    bool hasEnded() const { return m_hasEnded; }
    int status() const { return m_status; }
    const QString &output() const { return m_output; }

    /// In what it printed; 0 without the text.
    int numberAfter(const QString &text) const
    {
        const auto match = QRegularExpression(text + " (\\d+)").match(m_output);
        return match.hasMatch() ? match.captured(1).toInt() : 0;
    }

private:
    bool m_hasEnded = false;
    int m_status = 0;
    QString m_output;
};
