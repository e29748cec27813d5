// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include "ZephrinMFunctions.h"
#include "host_interfaces/AmateurRegion.h"
#include "support/TemporarySettings.h"

#include <stdexcept>

TEST(EngineBandTest, TheBandIsThatOfTheDeviceFrequency)
{
    test::TemporarySettings settings;
    AmateurRegion::instance()->setCountry(QLocale::Austria);
    AmateurRegion::instance()->setCurrent(AmateurRegion::Region1);
    const auto functions = std::make_shared<ZephrinMFunctions>();
    test::TestBridge bridge;
    ZephrinMDSP engine(bridge.threadPool(), bridge, functions);

    EXPECT_EQ(engine.currentBand(0), 0) << "160 m until the device is tuned";
    engine.setDds(0, 14350000.0);
    engine.setDownConverter(0, 20000.0);
    EXPECT_EQ(engine.currentBand(0), 4) << "20 m; a channel's own offset does not count";
    engine.setDds(0, 14350001.0);
    EXPECT_EQ(engine.currentBand(0), functions->listAmatureBands().size()) << "no band";
    EXPECT_THROW(engine.currentBand(1), std::out_of_range);
}
