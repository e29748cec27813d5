// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/LineOutAbstract.h"
#include "host_interfaces/RadioNotchFilterControlAbstract.h"
#include "host_interfaces/VacAbstract.h"

#include <QMetaMethod>
#include <QStringList>
#include <cstring>
#include <gtest/gtest.h>
#include <type_traits>

namespace
{
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
    const char *expected =
        "changedSampleRate(double)\ndevClosed()\ntxDrive(uint,uint)\n"
        "txToneDrive(uint,uint)\ntxMicId(uint,uint)\ntxMicValue(uint,int)\n"
        "txEqualizer(uint,bool)\ntxEqualizer(uint,QList<int>)\n"
        "txVoxEnable(uint,bool)\nrxSpectrum(uint)\ntxSpectrum(uint)\nbsSpectrum()\n"
        "dBmMeter(uint,uint,double)\nadcMeter(uint,uint,double,double)\n"
        "powerMeter(uint,uint,double)\nswrMeter(uint,uint,double)\n"
        "micMeter(uint,uint,double)\ntemperatureMeter(double)\nUpitMeter(double)\n"
        "IpitMeter(double)\nfanEnable(bool)\ntxEnable(uint,bool)\n"
        "toneChacked(uint,bool)\nmoxChacked(uint,bool)\nmoxEnable(uint,bool)\n"
        "trxLock(uint,bool)\nsTxComp(uint,bool)\nsTxCompValue(uint,int)\n"
        "sTxCompThr(uint,int)\ntxMicAgcEnable(uint,bool)\nsCwKeyProg(uint,bool)\n"
        "sCwKeyProgDashDot(uint,bool,bool)\nsVacEnable(uint,bool)\n"
        "sCw(uint,bool,bool,bool,bool,uint,uint,double,uint,uint)\n"
        "sWriteIQ(bool,int)\nsIqFixedFreqDds(bool,double)\n"
        "sTxBandFilter(uint,int,int)\nsDigOffset(int,int)\nsVoicePlay(uint,bool)\n"
        "sVoiceRec(uint,bool)\nupdatePreamp()";
    EXPECT_EQ(
        ownMethods(DeviceAbstract::staticMetaObject, QMetaMethod::Signal).join('\n').toStdString(),
        expected);
}

// Those of the host's classes to which the device connects by number. A connection by text that
// fails stops the program.
TEST(HostSideTest, SignalsStandInTheOrderOfTheContract)
{
    const std::pair<const QMetaObject &, QStringList> rows[] = {
        {VacAbstract::staticMetaObject, {"opened()", "closed()", "bufferSizeChanged(uint)"}},
        {LineOutAbstract::staticMetaObject,
            {"opened()", "closed()", "openedSC()", "closedSC()", "openedWave()", "closedWave()",
                "bufferSizeChanged(uint)"}},
        {RadioNotchFilterControlAbstract::staticMetaObject,
            {"paramChanged(size_t,size_t,bool,double,double)",
                "enableFiltersChanged(size_t,bool)"}},
    };
    for (const auto &[object, expected] : rows)
        EXPECT_EQ(ownMethods(object, QMetaMethod::Signal), expected) << object.className();
}

TEST(DeviceAbstractTest, SlotsAreFoundByTheirText)
{
    EXPECT_EQ(ownMethods(DeviceAbstract::staticMetaObject, QMetaMethod::Slot),
        (QStringList{"open()", "close()", "start()", "stop()", "retranslate()"}));
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
} // namespace
