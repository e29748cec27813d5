// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "StreamLedger.h"

#include "host_interfaces/BridgeAudioServerAbstract.h"
#include "host_interfaces/IqServerAbstract.h"
#include "host_interfaces/SensorsAbstract.h"

#include <array>
#include <atomic>

namespace host
{
/// The three places at which the engine tells of one block, in the order in which it comes by: the
/// IQ before the receiver, the audio out of it, the meters when all is done. Each books into the
/// ledger on the engine thread.
class IqTap : public IqServerAbstract
{
    Q_OBJECT

public:
    explicit IqTap(StreamLedger &ledger) : m_ledger(ledger) { }

    void write(int, COMPLEX *block, int count) override { m_ledger.beginBlock(block, count); }
    bool isOpen() override { return true; }

    void reserved3() override { }
    void reserved4() override { }
    void reserved5() override { }
    void reserved6() override { }

private:
    void run() override { } // sends nothing, so its thread is never started

    StreamLedger &m_ledger;
};

class AudioTap : public BridgeAudioServerAbstract
{
    Q_OBJECT

public:
    explicit AudioTap(StreamLedger &ledger) : m_ledger(ledger) { }

    void setEnabled(bool) override { }
    void write(int count, COMPLEX32 *) override { m_ledger.addAudio(std::uint64_t(count)); }

private:
    StreamLedger &m_ledger;
};

class HostSensors : public SensorsAbstract
{
    Q_OBJECT

public:
    explicit HostSensors(StreamLedger &ledger) : m_ledger(ledger) { }

    /// Meters after the last block. Any thread. Levels behind the band filter, dBm, of channel 0
    /// (A) or 1 (B); levels of the two parts of the input, dB; whether wide FM was heard in stereo.
    double channelDbm(uint channel) const { return m_channelDbm.at(channel); }
    double inputReDb() const { return m_inputReDb; }
    double inputImDb() const { return m_inputImDb; }
    bool isStereo() const { return m_stereo; }

    void rxAdc(uint, float re, float im) override
    {
        m_inputReDb = re;
        m_inputImDb = im;
    }

    void rxDbm(uint, uint channel, float value) override { m_channelDbm.at(channel) = value; }

    /// The last of the engine's words on a block.
    void wfmStereo(uint, bool state) override
    {
        m_stereo = state;
        m_ledger.endBlock();
    }

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
    void setSwrCoeff(float) override { }

private:
    StreamLedger &m_ledger;
    std::array<std::atomic<float>, 2> m_channelDbm{-120.0f, -120.0f};
    std::atomic<float> m_inputReDb = -120.0f;
    std::atomic<float> m_inputImDb = -120.0f;
    std::atomic<bool> m_stereo = false;
};
} // namespace host
