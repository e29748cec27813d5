// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <vector>

namespace test
{
/// The listener as a program of its own, with a folder for its files, the user's settings among
/// them. A run mostly waits for the device, so several go on at once at little cost.
class HostProcess
{
public:
    /// Runs to the end with --headless and these options ("--seconds 2 --free-run").
    void run(const QString &options);

    /// The same in two steps, for what happens in between.
    void start(const QString &options);
    void wait();
    qint64 id() const { return m_process.processId(); }

    QString path(const QString &name) const { return m_folder.filePath(name); }

    int status() const { return m_process.exitCode(); }
    bool ended() const { return m_process.exitStatus() == QProcess::NormalExit; }
    const QString &errors() const { return m_errors; }
    const QByteArray &output() const { return m_output; }

    /// Writes raw IQ (64-bit float) as a scene and gives its path.
    QString writeScene(const std::vector<COMPLEX> &iq);

    /// Left and right as real and imaginary part. Empty if the file is not as it should be.
    std::vector<COMPLEX> audio(const QString &name, int rateHz = 48000) const;
    QByteArray bytes(const QString &name) const;

    /// A part of the run's report "r.json"; without a name all of it.
    QJsonObject report(const char *part = nullptr) const;

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_errors;
    QByteArray m_output;
};

/// Runs a table side by side, three rows at a time: with many more on a busy machine the device's
/// watchdog takes a receiver that gets no time for a lost one.
template <typename Case, std::size_t kCases, typename Start, typename Check>
void runSideBySide(const Case (&cases)[kCases], Start start, Check check)
{
    constexpr std::size_t kAtOnce = 3;
    std::vector<HostProcess> hosts(kCases);
    for (std::size_t i = 0; i < kCases + kAtOnce; ++i) {
        if (i >= kAtOnce) {
            hosts[i - kAtOnce].wait();
            check(hosts[i - kAtOnce], cases[i - kAtOnce]);
        }
        if (i < kCases)
            start(hosts[i], cases[i]);
    }
}
} // namespace test
