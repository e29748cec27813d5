// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/HostSettings.h"
#include "stream/StreamLedger.h"

#include "pictures/WaterfallPicture.h"

#include <QObject>

#include <optional>
#include <vector>

class DeviceAbstract;
struct SpectrumView;

namespace host
{
/// Collects the lines of the band's spectrum while it is received, and draws them: the last line
/// with the largest level of each bin, and all of them over time. The device paces the lines by the
/// clock, so a free run has few. Main thread.
class BandPictures : public QObject
{
    Q_OBJECT

public:
    /// All must outlive the pictures. widthHz: what the device says of its panorama.
    BandPictures(DeviceAbstract &device, const HostSettings &settings, const StreamLedger &ledger,
        double widthHz);

    std::size_t lines() const { return m_lines; }
    std::size_t points() const { return m_levels.size(); }
    double widthHz() const { return m_axis.spanHz; }

    /// Writes what the settings ask for. If there is nothing to draw or a file cannot be written
    /// problems() tells why, one line for each file.
    void save();
    const QStringList &problems() const { return m_problems; }

private:
    void onSpectrum(uint receiver);
    void savePanorama();
    void saveWaterfall();
    QString title(const QString &what) const;

    DeviceAbstract &m_device;
    const HostSettings &m_settings;
    const StreamLedger &m_ledger;
    PictureAxis m_axis;
    std::optional<WaterfallPicture> m_waterfall;
    std::vector<float> m_levels;  // of the last line, dB
    std::vector<float> m_highest; // of all lines, dB
    std::size_t m_lines = 0;
    QStringList m_problems;
};
} // namespace host
