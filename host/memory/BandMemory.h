// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/Vfo.h"

#include <QMap>
#include <QString>
#include <QVector>

class DeviceFunctionsAbstract;
class QSettings;

namespace host
{
/// Where each amateur band was left: the last frequency, mode and filter. Bands are counted as in
/// the device's list, which another region of the world makes another one; what is kept goes by
/// their names. GUI thread.
class BandMemory
{
public:
    struct Band
    {
        QString name;
        double lowHz; ///< both edges included
        double highHz;
    };

    /// functions must outlive the memory.
    explicit BandMemory(DeviceFunctionsAbstract &functions) : m_functions(functions) { }

    QVector<Band> bands() const;

    /// -1 outside of all bands.
    int bandOf(double hertz) const;

    /// The next band above (1) or below (-1) a frequency, round the end; -1 if there is none.
    int neighbour(double hertz, int direction) const;

    /// Keeps it for the band that it lies in, if any.
    void remember(const Reception &reception);

    /// What was last remembered, at first the middle of the band in its usual mode.
    Reception recall(int band) const;

    /// Group "BandMemory".
    void writeSettings(QSettings &settings) const;

    /// What is no reception is left out.
    void readSettings(QSettings &settings);

private:
    DeviceFunctionsAbstract &m_functions;
    QMap<QString, Reception> m_last;
};
} // namespace host
