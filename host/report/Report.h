// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "report/Measurement.h"
#include "settings/HostSettings.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace host
{
/// What a run did and gave, for programs and for readers.
class Report
{
public:
    /// Both must outlive the report.
    Report(const HostSettings &settings, const Measurement &measurement)
        : m_settings(settings), m_measured(measurement)
    { }

    /// Everything, with the settings it was measured under.
    QJsonObject json() const;

    /// A few lines, each ended.
    QString text() const;

private:
    QJsonObject settingsJson() const;
    QJsonObject optionsJson() const;
    QJsonObject iqJson() const;
    QJsonObject metersJson() const;
    QJsonObject audioJson() const;
    QJsonObject timeJson() const;
    QJsonObject preampJson() const;
    QJsonObject recordingJson() const;
    QJsonObject spectrumJson() const;
    QString receivedLine() const;
    QString inputLine() const;
    QString audioLine() const;
    QString timeLine() const;
    QString repairsLine() const;
    QStringList outputLines() const;

    /// Of seconds of a processor in seconds of IQ, 0 without any.
    double load(double cpuSeconds) const;

    const HostSettings &m_settings;
    const Measurement &m_measured;
};
} // namespace host
