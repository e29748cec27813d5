// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/StreamLedger.h"

#include "host_interfaces/SensorsAbstract.h"

#include <array>
#include <atomic>

namespace host
{
/// Keeps the device's meters for whoever looks, and books into the ledger that a block has ended:
/// the stereo flag is the engine's last word on each.
///
/// Threads: the engine feeds, any thread reads. The signals of the levels come on the engine thread
/// for each of its blocks, up to some thousand times a second: a window looks at the values now and
/// then instead.
class HostSensors : public SensorsAbstract
{
    Q_OBJECT

public:
    /// ledger must outlive the meters.
    explicit HostSensors(StreamLedger &ledger) : m_ledger(ledger) { }

    /// Level after the band filter, dBm, of channel 0 (A) or 1 (B).
    double channelDbm(uint channel) const { return m_channelDbm.at(channel); }

    /// Levels of the two parts of the input, dB.
    double inputReDb() const { return m_inputReDb; }
    double inputImDb() const { return m_inputImDb; }

    /// Whether wide FM is heard in stereo.
    bool isStereo() const { return m_stereo; }

    void rxAdc(uint receiver, float re, float im) override;

    /// A channel above 1 is passed on and not kept.
    void rxDbm(uint receiver, uint channel, float value) override;

    /// Raises its signal on a change only.
    void wfmStereo(uint receiver, bool state) override;

    void reserved4() override { }
    void reserved5() override { }
    void reserved6() override { }
    void reserved7() override { }
    void reserved8() override { }
    void reserved9() override { }
    void reserved10() override { }
    void reserved11() override { }
    void reserved12() override { }
    void reserved13() override { }
    void reserved14() override { }
    void reserved15() override { }
    void reserved16() override { }
    void reserved17() override { }
    void reserved18() override { }
    void reserved19() override { }
    void reserved20() override { }
    void reserved21() override { }
    void reserved22() override { }
    void reserved23() override { }
    void reserved24() override { }

public Q_SLOTS:
    /// A receiver has no standing-wave meter.
    void setSwrCoeff(float) override { }

private:
    static constexpr float kNothingYetDb = -120.0f;

    StreamLedger &m_ledger;
    std::array<std::atomic<float>, 2> m_channelDbm{kNothingYetDb, kNothingYetDb};
    std::atomic<float> m_inputReDb = kNothingYetDb;
    std::atomic<float> m_inputImDb = kNothingYetDb;
    std::atomic<bool> m_stereo = false;
};
} // namespace host
