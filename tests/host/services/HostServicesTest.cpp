// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostBridge.h"
#include "services/HostIqServer.h"
#include "services/HostSensors.h"

#include "host_interfaces/IqRecorder.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(HostServicesTest, OneBlockOfTheEngineIsBookedFromItsIqToItsMeters)
{
    host::StreamLedger ledger;
    host::HostIqServer iq(ledger);
    host::HostBridge bridge(ledger);
    host::HostSensors sensors(ledger);
    int stereoChanges = 0;
    QObject::connect(&sensors, &SensorsAbstract::wfmStereoChanged, [&] { ++stereoChanges; });
    std::vector<COMPLEX> block(512, COMPLEX{0.5, 0.0});
    for (int i = 0; i < 2; ++i) {
        iq.write(0, block.data(), int(block.size()));
        bridge.audioServer()->write(128, nullptr);
        EXPECT_EQ(ledger.readyFrames(), std::uint64_t(i * 128));
        sensors.rxAdc(0, -20.0f, -21.0f);
        sensors.rxDbm(0, 1, -73.0f);
        sensors.rxDbm(0, 7, -1.0f);
        sensors.wfmStereo(0, true);
    }
    EXPECT_EQ(ledger.readyFrames(), 256u);
    EXPECT_EQ(ledger.processedSamples(), 1024u);
    EXPECT_EQ(sensors.inputImDb(), -21.0);
    EXPECT_EQ(sensors.channelDbm(1), -73.0);
    EXPECT_EQ(stereoChanges, 1);
}

TEST(HostServicesTest, RecordingsFollowTheUsersChoice)
{
    const QTemporaryDir home; // the option page makes its folder there
    qputenv("HOME", home.path().toLocal8Bit());
    host::StreamLedger ledger;
    host::HostBridge bridge(ledger);
    IqRecorder &recorder = *IqRecorder::instance();
    const IQRecorderConfigure &recording = *bridge.iqRecorderConfigure();
    recorder.setPath("/before");
    bridge.followRecorder(recorder);
    EXPECT_EQ(recording.path, "/before");
    EXPECT_EQ(recording.format, recorder.format());
    recorder.setPath("/after");
    EXPECT_EQ(recording.path, "/after");
    Q_EMIT recorder.formathChanged(vm::file::IQFile::StandartWave);
    EXPECT_EQ(recording.format, vm::file::IQFile::StandartWave);
}
