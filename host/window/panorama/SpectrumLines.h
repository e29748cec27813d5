// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pictures/PictureAxis.h"

#include <QElapsedTimer>
#include <QObject>

#include <vector>

namespace host
{
class Radio;

/// The lines of the radio's spectrum as they come, at most so many a second as are wanted, with the
/// largest level of each bin while that is held. dBFS. GUI thread.
class SpectrumLines : public QObject
{
    Q_OBJECT

public:
    static constexpr int kSlowest = 5; ///< lines a second
    static constexpr int kFastest = 60;

    /// The radio must outlive it.
    explicit SpectrumLines(Radio &radio);

    /// The last line, averaged as the device was asked to, and the one for the waterfall, which is
    /// not. Empty before the first.
    const std::vector<float> &line() const { return m_line; }
    const std::vector<float> &waterfall() const { return m_waterfall; }

    /// Of each bin since setPeakHold(true), or since the band moved. Empty if not held.
    const std::vector<float> &peaks() const { return m_peaks; }

    const PictureAxis &axis() const { return m_axis; }

    int perSecond() const { return m_perSecond; }
    void setPerSecond(int lines);

    /// 1: none, to 30.
    int averaging() const { return m_averaging; }
    void setAveraging(int lines);

    bool isPeakHold() const { return m_isPeakHold; }
    void setPeakHold(bool hold);

signals:
    void lineReady();

private:
    void onSpectrum();
    void forget();

    Radio &m_radio;
    PictureAxis m_axis;
    std::vector<float> m_line;
    std::vector<float> m_waterfall;
    std::vector<float> m_peaks;
    int m_perSecond = 25;
    int m_averaging = 4;
    bool m_isPeakHold = false;
    QElapsedTimer m_sinceLine;
    qint64 m_dueNs = 0;
};
} // namespace host
