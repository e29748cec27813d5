// SPDX-License-Identifier: GPL-3.0-or-later
#include "ZephrinMFunctions.h"

#include "host_interfaces/AmateurRegion.h"
#include "support/TemporarySettings.h"

#include <gtest/gtest.h>

#include <iterator>

namespace
{
using Mode = DeviceFunctionsAbstract::Mode;

constexpr QLocale::Country kAustria = QLocale::Austria; // no 60 m limits of its own

/// Region 1 without the 11 m and 60 m bands unless a test says otherwise.
class ZephrinMFunctionsTest : public ::testing::Test
{
protected:
    ZephrinMFunctionsTest()
    {
        static test::TemporarySettings settings;
        region = AmateurRegion::instance();
        region->setCountry(kAustria);
        region->setCurrent(AmateurRegion::Region1);
        region->setEnable11M(false);
        region->setEnable60M(false);
    }

    static QStringList names(ZephrinMFunctions &functions)
    {
        QStringList list;
        for (const auto &band : functions.listAmatureBands())
            list.append(band.name);
        return list;
    }

    AmateurRegion *region = nullptr;
};

TEST_F(ZephrinMFunctionsTest, AmateurBandsAreTheAvailableOnesAtConstruction)
{
    ZephrinMFunctions plain;
    const QStringList without = {
        "160M", "80M", "40M", "30M", "20M", "17M", "15M", "12M", "10M", "6M", "2M"};
    EXPECT_EQ(names(plain), without);

    region->setEnable11M(true);
    region->setEnable60M(true);
    ZephrinMFunctions switched;
    EXPECT_EQ(names(switched),
        (QStringList{"160M", "80M", "60M", "40M", "30M", "20M", "17M", "15M", "12M", "11M", "10M",
            "6M", "2M"}));
    EXPECT_EQ(switched.listAmatureBands()[2].low, 5275000u);
    EXPECT_EQ(switched.listAmatureBands()[2].high, 5450000u);
    EXPECT_EQ(names(plain), without) << "fixed from construction on";

    region->setCountry(QLocale::Thailand);
    ZephrinMFunctions thailand;
    EXPECT_FALSE(names(thailand).contains("40M"));
    EXPECT_FALSE(names(thailand).contains("30M"));
}

TEST_F(ZephrinMFunctionsTest, FrequenciesFindTheirBand)
{
    ZephrinMFunctions functions;
    const struct
    {
        double frequency;
        int band;
    } rows[] = {{1810000.0, 0}, {2000000.0, 0}, {2000000.5, 11}, {1809999.5, 11}, {7100000.0, 2},
        {27000000.0, 11}, {28000000.0, 8}, {146000000.0, 10}, {435000000.0, 11}, {-1.0, 11},
        {qQNaN(), 11}};
    for (const auto &row : rows)
        EXPECT_EQ(functions.getBandFromFreq(row.frequency), row.band) << row.frequency;

    region->setEnable11M(true);
    ZephrinMFunctions with11M;
    EXPECT_EQ(with11M.getBandFromFreq(28000000.0), 8) << "shared edge: the lower band";
    EXPECT_EQ(with11M.getBandFromFreq(28000001.0), 9) << "moved up by one";
}

TEST_F(ZephrinMFunctionsTest, ModesHaveTheirDefaults)
{
    const struct
    {
        int mode;
        double low, high;
        int filter, agc;
        bool symmetric;
        int filters;
        bool fixed;
    } rows[] = {
        {0, -18000, 18000, 3, 1, true, 9, false},
        {1, -18000, 18000, 3, 1, true, 9, false},
        {2, -18000, 18000, 3, 1, true, 9, false},
        {3, -10000, 0, 6, 2, false, 9, false},
        {4, 0, 10000, 6, 2, false, 9, false},
        {5, -10000, 10000, 1, 4, true, 9, false},
        {6, -18000, 18000, 3, 1, true, 9, false},
        {7, -15000, 0, 6, 2, false, 9, false},
        {8, 0, 15000, 6, 2, false, 9, false},
        {9, -156000, 156000, 0, 1, true, 9, false},
        {10, -5000, 5000, 0, 1, true, 1, true},
        {11, -156000, 156000, 0, 1, true, 9, false},
        {-1, -156000, 156000, 0, 1, true, 9, false},
    };
    ZephrinMFunctions functions;
    for (const auto &row : rows) {
        SCOPED_TRACE(row.mode);
        const auto mode = Mode(row.mode);
        EXPECT_EQ(functions.filterLimits(mode), qMakePair(row.low, row.high));
        EXPECT_EQ(functions.defaultFilterId(mode), row.filter);
        EXPECT_EQ(functions.defaultAgcMode(unsigned(row.mode)), row.agc);
        EXPECT_EQ(functions.isSimmetricFilter(mode), row.symmetric);
        EXPECT_EQ(functions.filterNum(mode), row.filters);
        EXPECT_EQ(functions.isLockFilter(mode), row.fixed);
        EXPECT_EQ(functions.isEnableVaribleFilter(mode), !row.fixed);
    }
}

// A filter's name is its width in hertz, or in kilohertz with a K, and for a sideband its far edge.
double hertz(const QString &name)
{
    QString number = name;
    return number.remove('K').toDouble() * (name.endsWith('K') ? 1000.0 : 1.0);
}

TEST_F(ZephrinMFunctionsTest, FiltersAreAsWideAsTheirNamesSay)
{
    const QStringList both = {"3K", "3.5K", "4K", "5K", "6K", "8K", "10K", "12K", "16K"};
    const QStringList one = {"1.8K", "2K", "2.2K", "2.5K", "2.7K", "2.9K", "3.0K", "3.3K", "3.5K"};
    const QStringList cw = {"50", "100", "250", "400", "500", "650", "800", "1000", "1200"};
    const QStringList wide = {"50K", "80K", "110K", "120K", "150K", "180K", "240K", "280K", "310K"};
    const QStringList drm = {"10K", "10K", "10K", "10K", "10K", "10K", "10K", "10K", "10K"};
    const QStringList byMode[] = {both, both, both, one, one, cw, both, one, one, wide, drm};
    constexpr double kCarrierGap = 70.0;

    ZephrinMFunctions functions;
    for (int number = 0; number <= 10; ++number) {
        const auto mode = Mode(number);
        for (unsigned filter = 0; filter < 9; ++filter) {
            SCOPED_TRACE(testing::Message() << "mode " << number << " filter " << filter);
            const QString name = functions.filterName(mode, filter);
            ASSERT_EQ(name, byMode[number][int(filter)]);
            const double width = hertz(name);
            auto expected = qMakePair(-width / 2.0, width / 2.0);
            if (mode == Mode::LSB || mode == Mode::DIGL)
                expected = {-width, -kCarrierGap};
            if (mode == Mode::USB || mode == Mode::DIGU)
                expected = {kCarrierGap, width};
            EXPECT_EQ(functions.listFilterNum(mode, filter), expected);
        }
        EXPECT_EQ(functions.filterName(mode, 9), "");
        EXPECT_EQ(functions.listFilterNum(mode, 9), qMakePair(0.0, 0.0));
    }
    EXPECT_EQ(functions.filterName(Mode(11), 0), "");
    EXPECT_EQ(functions.filterName(Mode(-1), 0), "");
}

TEST_F(ZephrinMFunctionsTest, ModeButtonsKeepTheirOrder)
{
    ZephrinMFunctions functions;
    QStringList modes;
    for (const auto &item : functions.listModes())
        modes.append(QString::number(item.mode) + item.name);
    EXPECT_EQ(modes,
        (QStringList{"0AM", "1SAM", "2DSB", "3LSB", "4USB", "5CW", "6NFM", "9WFM", "7DIGL", "8DIGU",
            "10DRM"}));
    const int byBand[] = {3, 3, 3, 3, 3, 4, 4, 4, 4, 6, 6, 6, 6, 0, 0};
    for (unsigned band = 0; band < std::size(byBand); ++band)
        EXPECT_EQ(functions.defaultMode(band), byBand[band]) << band;
}

TEST_F(ZephrinMFunctionsTest, PreampIndexIsTheSwitchAndBack)
{
    ZephrinMFunctions functions;
    EXPECT_EQ(functions.getPreampIndex(false, true), 0);
    EXPECT_EQ(functions.getPreampIndex(true, true), 0);
    EXPECT_EQ(functions.getPreampIndex(true, false), 1);
    for (bool untouched : {false, true}) {
        for (int index : {0, 1, -1}) {
            bool attenuator = index != 0;
            bool preamp = untouched;
            functions.getAttAmpFromIndex(index, &attenuator, &preamp);
            EXPECT_EQ(attenuator, index == 0) << index;
            EXPECT_EQ(preamp, untouched) << index;
        }
    }
    functions.getAttAmpFromIndex(0, nullptr, nullptr);
}

TEST_F(ZephrinMFunctionsTest, RatesAreThoseOfThePlugin)
{
    ZephrinMFunctions functions;
    const auto rates = [&functions] {
        return QList<double>{functions.getCurrentSampleRateRX(), functions.getCurrentSampleRateTX(),
            functions.getCurrentPanSampleRateRX(), functions.getCurrentPanSampleRateTX()};
    };
    EXPECT_EQ(rates(), (QList<double>{192000.0, 48000.0, 0.0, 0.0}));
    functions.setCurrentSampleRateRX(1.0);
    functions.setCurrentSampleRateTX(2.0);
    functions.setCurrentPanSampleRateRX(3.0);
    functions.setCurrentPanSampleRateTX(4.0);
    EXPECT_EQ(rates(), (QList<double>{1.0, 2.0, 3.0, 4.0}));
}
} // namespace
