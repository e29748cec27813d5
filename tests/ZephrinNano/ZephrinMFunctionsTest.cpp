// SPDX-License-Identifier: GPL-3.0-or-later
#include "ZephrinMFunctions.h"

#include "DspCore/types.h"
#include "host_interfaces/AmateurRegion.h"
#include "support/TemporarySettings.h"

#include <gtest/gtest.h>

namespace
{
using Functions = ZephrinMFunctions;
using Mode = DeviceFunctionsAbstract::Mode;

/// Region 1 without the 11 m and 60 m bands unless a test says otherwise.
class ZephrinMFunctionsTest : public testing::Test
{
protected:
    ZephrinMFunctionsTest()
    {
        static test::TemporarySettings settings;
        region->setCountry(QLocale::Austria); // no 60 m limits of its own
        region->setCurrent(AmateurRegion::Region1);
        region->setEnable11M(false);
        region->setEnable60M(false);
    }

    AmateurRegion *const region = AmateurRegion::instance();
};

TEST_F(ZephrinMFunctionsTest, FrequenciesFindTheBandsThatWereAvailableAtConstruction)
{
    const auto names = [](Functions &functions) {
        QStringList list;
        for (const auto &band : functions.listAmatureBands())
            list.append(band.name);
        return list.join(' ');
    };
    Functions plain;
    region->setEnable11M(true);
    region->setEnable60M(true);
    Functions more;
    EXPECT_EQ(names(plain), "160M 80M 40M 30M 20M 17M 15M 12M 10M 6M 2M");
    EXPECT_EQ(names(more), "160M 80M 60M 40M 30M 20M 17M 15M 12M 11M 10M 6M 2M");
    const std::pair<double, int> rows[] = {{1810000.0, 0}, {2000000.0, 0}, {2000000.5, 11},
        {1809999.5, 11}, {7100000.0, 2}, {27000000.0, 11}, {28000000.0, 8}, {qQNaN(), 11}};
    for (const auto &[frequency, band] : rows)
        EXPECT_EQ(plain.getBandFromFreq(frequency), band) << frequency;
    EXPECT_EQ(more.getBandFromFreq(28000000.0), 9); // a shared edge: the lower band
    EXPECT_EQ(more.getBandFromFreq(28000001.0), 10);
}

TEST_F(ZephrinMFunctionsTest, ModesAreListedInTheOrderOfTheButtonsWithTheirDefaults)
{
    Functions functions;
    QStringList modes;
    for (const auto &[mode, name] : functions.listModes()) {
        const QString agc = functions.listAgc()[functions.defaultAgcMode(mode)];
        const auto [low, high] = functions.filterLimits(mode);
        modes << QString("%1 %2 %3 %4 %5..%6")
                     .arg(int(mode))
                     .arg(name, agc)
                     .arg(functions.filterName(mode, unsigned(functions.defaultFilterId(mode))))
                     .arg(low)
                     .arg(high);
    }
    EXPECT_EQ(modes,
        (QStringList{"0 AM Long 5K -18000..18000", "1 SAM Long 5K -18000..18000",
            "2 DSB Long 5K -18000..18000", "3 LSB Slow 3.0K -10000..0", "4 USB Slow 3.0K 0..10000",
            "5 CW Fast 100 -10000..10000", "6 NFM Long 5K -18000..18000",
            "9 WFM Long 50K -156000..156000", "7 DIGL Slow 3.0K -15000..0",
            "8 DIGU Slow 3.0K 0..15000", "10 DRM Long 10K -5000..5000"}));
}
} // namespace
