// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host_interfaces/AudioServerAbstract.h"
#include "host_interfaces/BridgeAbstract.h"
#include "host_interfaces/BridgeAudioServerAbstract.h"
#include "host_interfaces/IqServerAbstract.h"
#include "host_interfaces/SensorsAbstract.h"

#include <atomic>
#include <functional>
#include <vector>

/// A stand-in host. Each object hands what it is given to a function of the test, on the thread of
/// the caller; the functions are set before the stream starts and may stay empty.
namespace test
{
class TestIqServer : public IqServerAbstract
{
public:
    std::function<void(COMPLEX *, int)> onWrite;
    std::atomic<bool> opened = true;

    bool isOpen() override { return opened; }
    void write(int, COMPLEX *block, int count) override
    {
        if (onWrite)
            onWrite(block, count);
    }

    void reserved3() override { }
    void reserved4() override { }
    void reserved5() override { }
    void reserved6() override { }
};

class TestAudioServer : public AudioServerAbstract
{
public:
    std::function<void(COMPLEX *, int)> onWrite;
    std::atomic<bool> opened = true;

    bool isOpen(int channel) override { return opened && channel == 0; }
    void write(int, COMPLEX *block, int count) override
    {
        if (onWrite)
            onWrite(block, count);
    }

    void reserved1() override { }
    void reserved4() override { }
    void reserved5() override { }
    void reserved6() override { }
};

/// Counts blocks: the stereo flag is the last thing that the engine tells about each.
class TestSensors : public SensorsAbstract
{
public:
    std::function<void(uint, float, float)> onAdc;
    std::function<void(uint, uint, float)> onDbm;
    std::function<void(uint, bool)> onStereo;
    std::atomic<long> blocks = 0;

    void rxAdc(uint receiver, float re, float im) override
    {
        if (onAdc)
            onAdc(receiver, re, im);
    }
    void rxDbm(uint receiver, uint channel, float value) override
    {
        if (onDbm)
            onDbm(receiver, channel, value);
    }
    void wfmStereo(uint receiver, bool state) override
    {
        if (onStereo)
            onStereo(receiver, state);
        ++blocks;
    }
    void setSwrCoeff(float) override { }

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
};

class TestBridgeAudioServer : public BridgeAudioServerAbstract
{
public:
    std::function<void(COMPLEX32 *, int)> onWrite;
    std::vector<bool> switches; // every setEnabled(), in order

    void setEnabled(bool enabled) override { switches.push_back(enabled); }
    void write(int count, COMPLEX32 *block) override
    {
        if (onWrite)
            onWrite(block, count);
    }
};

/// The services that the engine uses; it never asks for the others.
class TestBridge : public BridgeAbstract
{
public:
    TestBridgeAudioServer sink;

    SoundOutAbstract *soundOut() override { return nullptr; }
    VacManagerAbstract *vacManager() override { return nullptr; }
    LineOutManagerAbstract *lineOutManager() override { return nullptr; }
    tp::ThreadPool &threadPool() override { return m_pool; }
    IQRecorderConfigure *iqRecorderConfigure() override { return nullptr; }
    RadioNotchFilterControlAbstract *radioNotchControl() override { return nullptr; }
    BridgeAudioServerAbstract *audioServer() override { return &sink; }

    void reserved1() override { }
    void reserved2() override { }
    void reserved4() override { }
    void reserved8() override { }

private:
    tp::ThreadPool m_pool{tp::ThreadPoolOptions{.workerCount = 1}};
};
} // namespace test
