// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/DeviceManagerAbstract.h"
#include "support/BareDevice.h"

#include <QMetaMethod>
#include <QStringList>
#include <cstring>
#include <gtest/gtest.h>
#include <type_traits>

namespace
{
using test::BareDevice;

QStringList ownMethods(const QMetaObject &object, QMetaMethod::MethodType type)
{
    QStringList signatures;
    for (int i = object.methodOffset(); i < object.methodCount(); ++i) {
        if (object.method(i).methodType() == type)
            signatures << QString::fromLatin1(object.method(i).methodSignature());
    }
    return signatures;
}

// The numbers that connections use at run time, so the order counts.
TEST(DeviceAbstractTest, SignalsStandInTheOrderOfTheContract)
{
    const QStringList expected = {
        "changedSampleRate(double)",
        "devClosed()",
        "txDrive(uint,uint)",
        "txToneDrive(uint,uint)",
        "txMicId(uint,uint)",
        "txMicValue(uint,int)",
        "txEqualizer(uint,bool)",
        "txEqualizer(uint,QList<int>)",
        "txVoxEnable(uint,bool)",
        "rxSpectrum(uint)",
        "txSpectrum(uint)",
        "bsSpectrum()",
        "dBmMeter(uint,uint,double)",
        "adcMeter(uint,uint,double,double)",
        "powerMeter(uint,uint,double)",
        "swrMeter(uint,uint,double)",
        "micMeter(uint,uint,double)",
        "temperatureMeter(double)",
        "UpitMeter(double)",
        "IpitMeter(double)",
        "fanEnable(bool)",
        "txEnable(uint,bool)",
        "toneChacked(uint,bool)",
        "moxChacked(uint,bool)",
        "moxEnable(uint,bool)",
        "trxLock(uint,bool)",
        "sTxComp(uint,bool)",
        "sTxCompValue(uint,int)",
        "sTxCompThr(uint,int)",
        "txMicAgcEnable(uint,bool)",
        "sCwKeyProg(uint,bool)",
        "sCwKeyProgDashDot(uint,bool,bool)",
        "sVacEnable(uint,bool)",
        "sCw(uint,bool,bool,bool,bool,uint,uint,double,uint,uint)",
        "sWriteIQ(bool,int)",
        "sIqFixedFreqDds(bool,double)",
        "sTxBandFilter(uint,int,int)",
        "sDigOffset(int,int)",
        "sVoicePlay(uint,bool)",
        "sVoiceRec(uint,bool)",
        "updatePreamp()",
    };
    ASSERT_EQ(expected.size(), 41);
    EXPECT_EQ(
        ownMethods(DeviceAbstract::staticMetaObject, QMetaMethod::Signal).join('\n').toStdString(),
        expected.join('\n').toStdString());
}

TEST(DeviceAbstractTest, SlotsReachTheDeviceThroughTheMetaObject)
{
    EXPECT_EQ(ownMethods(DeviceAbstract::staticMetaObject, QMetaMethod::Slot),
        (QStringList{"open()", "close()", "start()", "stop()", "retranslate()"}));

    BareDevice device;
    QObject *object = &device;
    for (const char *slot : {"open", "start"}) {
        bool result = false;
        EXPECT_TRUE(QMetaObject::invokeMethod(object, slot, Q_RETURN_ARG(bool, result))) << slot;
        EXPECT_TRUE(result) << slot;
    }
    for (const char *slot : {"close", "stop", "retranslate"})
        EXPECT_TRUE(QMetaObject::invokeMethod(object, slot)) << slot;
    EXPECT_EQ(device.calls, (QStringList{"close", "stop", "retranslate"}));
}

TEST(DeviceAbstractTest, WhatADeviceDoesNotOfferReportsFalseOrNothing)
{
    BareDevice device;
    EXPECT_EQ(device.name(), "No name");
    EXPECT_EQ(device.getScRingBuffer(), nullptr);
    EXPECT_TRUE(device.getLineOutBuffers().isEmpty());
    EXPECT_EQ(device.getIqRingBuffer(0), nullptr);
    const bool offered[] = {
        device.setRxToneMode(0, true),
        device.setRxTxMode(0, true),
        device.setRxFreq(0, 1e6),
        device.setPreamp(1),
        device.setMute(true),
        device.setExtCtrl(1),
        device.setDrive(0, 1),
        device.setToneDrive(0, 1),
        device.setMonEnable(true),
        device.setMonValue(1),
        device.setMicId(0, 1),
        device.setMicGain(0, 1),
        device.setTxFreq(0, 1000000),
        device.setMicAgcEnable(0, 1),
    };
    for (const bool answer : offered)
        EXPECT_FALSE(answer);
}

TEST(DeviceAbstractTest, InterfaceIdIsTheHosts)
{
    EXPECT_STREQ(qobject_interface_iid<DeviceAbstract *>(), "Velmora.VelmoraSDR2.plugin");
}

TEST(CwParamTest, DefaultBytesAreTheHosts)
{
    static_assert(std::is_trivially_copyable_v<SDR::CwParam>);
    constexpr std::size_t kBytes = 13 * 2 + 1;
    static_assert(sizeof(SDR::CwParam) >= kBytes);
    const unsigned char expected[kBytes] = {30, 0, 30, 0, 100, 0, 0, 0, 10, 0, 0xBC, 2, 100, 0,
        0x2C, 1, 100, 0, 0x2C, 1, 7, 0, 0, 0, 1, 0, 0};
    const SDR::CwParam defaults;
    EXPECT_EQ(std::memcmp(&defaults, expected, kBytes), 0);
}

TEST(SpectrumViewTest, IsThreeWordsCountWaterfallSpectrum)
{
    static_assert(sizeof(SpectrumView) == 3 * sizeof(void *));
    const float first = 1.0f;
    const float second = 2.0f;
    const auto [count, waterfall, spectrum] = SpectrumView{1, &second, &first};
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(*waterfall, second);
    EXPECT_EQ(*spectrum, first);
}
} // namespace
