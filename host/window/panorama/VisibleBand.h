// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace host
{
class Radio;

/// The part of the sampled band that panorama and waterfall show: all of it, or what was zoomed
/// into. It stays inside the band, follows a change of the band, and keeps the active VFO in sight
/// when that is tuned. Hertz. GUI thread.
class VisibleBand : public QObject
{
    Q_OBJECT

public:
    static constexpr double kNarrowestHz = 500.0; ///< arbitrary; some ten bins at 192 kHz

    /// The radio must outlive it.
    explicit VisibleBand(Radio &radio);

    double lowHz() const { return m_lowHz; }
    double highHz() const { return m_highHz; }
    double spanHz() const { return m_highHz - m_lowHz; }
    bool isWhole() const;

    /// By a factor above 0, below 1 to see less; what is at that frequency stays where it is.
    void zoom(double factor, double aboutHz);

    /// Moves the view up by so much; where it meets the end of the sampled band the receiver moves.
    void pan(double hertz);

    /// All of the sampled band.
    void fit();

signals:
    void changed();

private:
    void set(double lowHz, double highHz);
    void onBand();
    void onTuned();

    Radio &m_radio;
    double m_lowHz = 0.0;
    double m_highHz = 1.0;
};
} // namespace host
