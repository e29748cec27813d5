// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include <random>
#include <utility>
#include <variant>
#include <vector>

class QAbstractSlider;
class QCheckBox;
class QDoubleSpinBox;
class QSpinBox;
class QWidget;

namespace test
{
class PluginRig;
}

namespace soak
{
class SoakStream;

/// All that a person can turn at a receiver while its stream runs, turned at random: what the host
/// calls, what its manager tells, and every control of the options page but the rate, the
/// calibration and the raw registers. GUI thread.
class SoakKnobs
{
public:
    /// Takes the options page as it stands for the known state.
    SoakKnobs(test::PluginRig &rig, SoakStream &stream, double rateHz, unsigned seed);

    /// Turns one to four things.
    void turnSome();

    /// One of kTourSteps steps that bring every buffer to its full size and make every transform
    /// that is kept.
    static constexpr int kTourSteps = 55;
    void tour(int step);

    /// The state in which the carrier is heard at kPitchHz and nothing works on it but the filters
    /// and the fixed gain.
    void setKnownState();

    /// Pitch of the carrier in the known state, as the receiver is really tuned.
    double pitchHz() const;

    /// Changes made so far.
    long turned() const { return m_turned; }

private:
    using Control = std::variant<QSpinBox *, QDoubleSpinBox *, QCheckBox *, QAbstractSlider *>;

    int whole(int low, int high) { return std::uniform_int_distribution(low, high)(m_random); }
    double real(double low, double high)
    {
        return std::uniform_real_distribution(low, high)(m_random);
    }
    bool flag() { return whole(0, 1) != 0; }

    void turnOne();
    void turnOption();
    void turnNotch();
    void setMode(int mode);
    void setTaps(int taps);
    void openCable(int rateHz);
    void switchTools(bool on);

    test::PluginRig &m_rig;
    SoakStream &m_stream;
    double m_rateHz;
    std::mt19937 m_random;
    std::vector<std::pair<Control, double>> m_options; // each with its known value
    long m_turned = 0;
};
} // namespace soak
