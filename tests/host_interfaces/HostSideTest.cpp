// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/BridgeAbstract.h"
#include "host_interfaces/DeviceManagerAbstract.h"
#include "host_interfaces/LineOutAbstract.h"
#include "host_interfaces/QRingBuffers.h"
#include "host_interfaces/RadioNotchFilterControlAbstract.h"
#include "host_interfaces/RingBufferSignal.h"
#include "host_interfaces/SensorsAbstract.h"
#include "host_interfaces/SoundOutAbstract.h"
#include "host_interfaces/VacAbstract.h"

#include <QMetaMethod>
#include <QStringList>
#include <gtest/gtest.h>

namespace
{
// Signals and slots are found by their text at run time, so a wrong one only shows there.
TEST(HostSideTest, EachClassHasItsSignals)
{
    const QStringList output = {"opened()", "closed()", "bufferSizeChanged(uint)"};
    const struct
    {
        const QMetaObject &object;
        QStringList expected;
    } rows[] = {
        {BridgeAbstract::staticMetaObject,
            {"switchedDisplayDpi(bool)", "atuAvalibleChanged(bool)", "atuEnableChanged(bool)",
                "atuLock()", "atuUnlock()"}},
        {DeviceManagerAbstract::staticMetaObject,
            {"apfChanged(uint,bool)", "dseChanged(uint,bool)", "preampValueChanged(float)",
                "waterfallFilterChanged(bool)", "display4kModeChanged(bool)",
                "updateStyleGuiControls()", "sDeviceAvalible()", "hideSpectrumSlopesChanged(bool)",
                "adcOverflow()", "deltaAtt(int)"}},
        {SoundOutAbstract::staticMetaObject, output},
        {VacAbstract::staticMetaObject, output},
        {LineOutAbstract::staticMetaObject,
            {"opened()", "closed()", "openedSC()", "closedSC()", "openedWave()", "closedWave()",
                "bufferSizeChanged(uint)"}},
        {RadioNotchFilterControlAbstract::staticMetaObject,
            {"paramChanged(size_t,size_t,bool,double,double)",
                "enableFiltersChanged(size_t,bool)"}},
        {SensorsAbstract::staticMetaObject,
            {"rxAdcChanged(uint,float,float)", "rxDbmChanged(uint,uint,float)",
                "powerRmsChanged(float)", "powerPeakChanged(float)", "powerSwrChanged(float)",
                "wfmStereoChanged(uint,bool)", "uChanged(float)", "iChanged(float)",
                "temperatureChanged(float)", "enableUChanged(bool)", "enableIChanged(bool)"}},
        {Velmora::QRingBuffer32f::staticMetaObject, {"readyRead()"}},
        {RingBufferSignal::staticMetaObject, {"readyRead(RingBufferSignal*)"}},
    };
    for (const auto &row : rows) {
        QStringList found;
        for (int i = row.object.methodOffset(); i < row.object.methodCount(); ++i) {
            if (row.object.method(i).methodType() == QMetaMethod::Signal)
                found << QString::fromLatin1(row.object.method(i).methodSignature());
        }
        EXPECT_EQ(found.join('\n').toStdString(), row.expected.join('\n').toStdString())
            << row.object.className();
    }
    // Qt resolves the fixed-width names of the device's connections to the same types.
    EXPECT_GE(DeviceManagerAbstract::staticMetaObject.indexOfSignal("apfChanged(quint32,bool)"), 0);
    EXPECT_GE(SensorsAbstract::staticMetaObject.indexOfSlot("setSwrCoeff(float)"), 0);
    EXPECT_GE(DeviceManagerAbstract::staticMetaObject.indexOfSlot("setServerStatus(int)"), 0);
}
} // namespace
