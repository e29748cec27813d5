// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QObject>

#include <deque>

class DeviceFunctionsAbstract;

namespace host
{
/// The host's half of the automatic preamp. The device watches its converter and asks for steps;
/// here they are added to the present level, which goes back to the device.
///
/// A level is a multiple of the step within the limits: negative attenuates, positive amplifies.
/// A step down comes upon an overflow, a step up when the band has been weak for long; a step up
/// soon after one down means that the two thresholds lie too close to each other, which the log of
/// steps shows. GUI thread.
class PreampControl : public QObject
{
    Q_OBJECT

public:
    struct Limits
    {
        float minimumDb = -31.5f;
        float maximumDb = 6.0f;
        float stepDb = 0.5f; // above 0
    };

    /// One request of the device and what became of it; fromDb and toDb are equal at a limit.
    struct Step
    {
        double seconds = 0.0; // since construction
        int deltaDb = 0;
        float fromDb = 0.0f;
        float toDb = 0.0f;
    };

    /// The log forgets its oldest step beyond so many; an overloaded band asks every two seconds.
    static constexpr std::size_t kMaxSteps = 4096;

    explicit PreampControl(const Limits &limits, QObject *parent = nullptr);

    static Limits limitsOf(DeviceFunctionsAbstract &functions);

    float db() const { return m_db; }
    quint64 overflows() const { return m_overflows; }
    const std::deque<Step> &steps() const { return m_steps; }

    /// Rounds to a step and limits. A value that is no number is left out.
    void setDb(float db);

    /// Raises the signal without a change, for a device that does not know the level yet.
    void resend() { Q_EMIT preampValueChanged(m_db); }

public Q_SLOTS:
    void applyDelta(int deltaDb);
    void countOverflow() { ++m_overflows; }

Q_SIGNALS:
    /// A level that differs from the last one.
    void preampValueChanged(float db);

private:
    const Limits m_limits;
    float m_db = 0.0f;
    quint64 m_overflows = 0;
    std::deque<Step> m_steps;
    QElapsedTimer m_clock;
};
} // namespace host
