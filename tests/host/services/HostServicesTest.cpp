// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostBridge.h"
#include "services/HostIqServer.h"
#include "services/HostSensors.h"

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
