// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QWidget>

namespace host
{
class Radio;

/// Signal strength of the active VFO in S-units and dBm, with the peak of the last seconds and the
/// level of the squelch. S9 is -73 dBm, above 30 MHz -93 dBm, an S-unit 6 dB (IARU Region 1
/// Technical Recommendation R.1, 1990). GUI thread.
class SMeter : public QWidget
{
    Q_OBJECT

public:
    explicit SMeter(Radio &radio, QWidget *parent = nullptr);

    QSize sizeHint() const override { return {300, 52}; }
    QSize minimumSizeHint() const override { return {170, 46}; }

    /// dBm that reads S9 at a frequency.
    static double s9Dbm(double hertz);

    /// "S7", "S9+20".
    static QString text(double dbm, double hertz);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void onReadings();
    double shareOf(double dbm) const;

    Radio &m_radio;
    double m_shownDbm = -200.0;
    double m_peakDbm = -200.0;
    QElapsedTimer m_sincePeak;
};
} // namespace host
