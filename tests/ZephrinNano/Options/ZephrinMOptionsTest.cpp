// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/ZephrinMOptions.h"
#include "Control/CalibrationControl.h"
#include "OptionsTest.h"

#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTimer>
#include <gtest/gtest.h>

namespace
{
using DspCore::AgcMode;
using test::control;
using test::shown;
using test::turn;

TEST(ZephrinMOptionsTest, DefaultButtons)
{
    struct Values
    {
        const char *control;
        double value;
    };
    const std::pair<const char *, std::vector<Values>> buttons[] = {
        {"btnDefaultNr",
            {{"sbNrTaps", 98}, {"sbNrDelay", 20}, {"dsbNrRate", 0.001}, {"dsbNrLeak", 2e-5}}},
        {"btnDefaultAnf",
            {{"sbAnfTaps", 65}, {"sbAnfDelay", 64}, {"dsbAnfRate", 7e-4}, {"dsbAnfLeak", 1e-5}}},
        {"btnDefaultNb1", {{"dsbNb1Threshold", 2.65}}},
        {"btnDefaultNb2", {{"dsbNb2Threshold", 2.48}}},
        {"btnDefaultDse", {{"sbDseTaps", 200}}},
        {"btnDefaultApfCw", {{"sbApfCwGain", 30}, {"sbApfCwQuality", 5}}},
        {"btnDefaultApfSsb",
            {{"sbApfSsbGain", 20}, {"dsbApfSsbQuality", 0.8}, {"sbApfSsbFreq", 550}}},
        {"btnDefaultFilterTaps",
            {{"sbFilterTapsSsb", 1570}, {"sbFilterTapsAm", 1570}, {"sbFilterTapsDig", 1570},
                {"sbFilterTapsCw", 1570}}},
        {"btnDefaultDigOffset", {{"sbDiglOffset", 2200}, {"sbDiguOffset", 1500}}},
        {"btnDefaultAgcLong",
            {{"dsbAgcLongAttack", 2.5}, {"dsbAgcLongDecay", 800}, {"sbAgcLongHangTime", 800}}},
        {"btnDefaultAgcSlow",
            {{"dsbAgcSlowAttack", 2.0}, {"dsbAgcSlowDecay", 500}, {"sbAgcSlowHangTime", 500}}},
        {"btnDefaultAgcMed",
            {{"dsbAgcMedAttack", 1.7}, {"dsbAgcMedDecay", 250}, {"sbAgcMedHangTime", 250}}},
        {"btnDefaultAgcFast",
            {{"dsbAgcFastAttack", 1.2}, {"dsbAgcFastDecay", 100}, {"sbAgcFastHangTime", 100}}},
    };
    ZephrinMOptions page;
    for (const auto &[button, values] : buttons) {
        for (const Values &row : values)
            turn(page, row.control, 0.0); // the control's minimum
        qobject_cast<QPushButton *>(control(page, button))->click();
        for (const Values &row : values)
            EXPECT_DOUBLE_EQ(shown(page, row.control), row.value) << row.control;
    }
}

TEST(ZephrinMOptionsTest, AgcTimesBelongToTheirMode)
{
    ZephrinMOptions page;
    std::vector<std::tuple<char, AgcMode, double>> told;
    using Self = ZephrinMOptions;
    QObject::connect(&page, &Self::agcAttackChanged,
        [&](AgcMode mode, double ms) { told.emplace_back('a', mode, ms); });
    QObject::connect(&page, &Self::agcDecayChanged,
        [&](AgcMode mode, double ms) { told.emplace_back('d', mode, ms); });
    QObject::connect(&page, &Self::agcHangTimeChanged,
        [&](AgcMode mode, double ms) { told.emplace_back('h', mode, ms); });

    decltype(told) expected;
    for (int i = 1; i <= 5; ++i) {
        const auto mode = AgcMode(i);
        for (int twice = 0; twice < 2; ++twice) { // the second time nothing changes
            page.setAgcAttack(mode, 0.1 * i);
            page.setAgcDecay(mode, 20.5 + i);
            page.setAgcHangTime(mode, 30 + i);
        }
        expected.emplace_back('a', mode, 0.1 * i);
        expected.emplace_back('d', mode, 20.5 + i);
        expected.emplace_back('h', mode, 30.0 + i);
        EXPECT_NEAR(page.agcAttack(mode), 0.1 * i, 1e-12);
        EXPECT_DOUBLE_EQ(page.agcDecay(mode), 20.5 + i);
        EXPECT_EQ(page.agcHangTime(mode), 30 + i);
    }
    for (const AgcMode none : {AgcMode::Off, AgcMode(-1), AgcMode(6)}) {
        page.setAgcAttack(none, 1.1);
        EXPECT_EQ(page.agcAttack(none), 0.0);
    }
    ASSERT_EQ(told.size(), expected.size());
    for (std::size_t i = 0; i < told.size(); ++i) {
        EXPECT_EQ(std::get<0>(told[i]), std::get<0>(expected[i]));
        EXPECT_EQ(std::get<1>(told[i]), std::get<1>(expected[i]));
        EXPECT_NEAR(std::get<2>(told[i]), std::get<2>(expected[i]), 1e-12);
    }
}

TEST(ZephrinMOptionsTest, DiglOffsetIsToldNegative)
{
    ZephrinMOptions page;
    QSignalSpy offsets(&page, &ZephrinMOptions::digOffsetChanged);
    QSignalSpy digl(&page, &ZephrinMOptions::diglOffsetChanged);
    QSignalSpy digu(&page, &ZephrinMOptions::diguOffsetChanged);
    turn(page, "sbDiglOffset", 1000);
    turn(page, "sbDiguOffset", 900);
    EXPECT_EQ(offsets[0], (QVariantList{-1000, 1500}));
    EXPECT_EQ(offsets[1], (QVariantList{-1000, 900}));
    EXPECT_EQ(digl[0][0], 1000);
    EXPECT_EQ(digu[0][0], 900);
    EXPECT_EQ(offsets.size() + digl.size() + digu.size(), 4);
}

TEST(ZephrinMOptionsTest, PreampMovesInHalfDecibels)
{
    const struct
    {
        float asked;
        int position;
        const char *label;
    } rows[] = {{-10.0f, -20, "Preamp: -10.0 dBm"}, {-10.3f, -21, "Preamp: -10.5 dBm"},
        {5.5f, 11, "Preamp: 5.5 dBm"}, {50.0f, 12, "Preamp: 6.0 dBm"},
        {-1e30f, -63, "Preamp: -31.5 dBm"}, {0.0f, 0, "Preamp: 0.0 dBm"}};
    ZephrinMOptions page;
    QSignalSpy told(&page, &ZephrinMOptions::preampChanged);
    for (const auto &row : rows) {
        told.clear();
        page.setPreampValue(row.asked);
        page.setPreampValue(row.asked);
        EXPECT_EQ(page.attValue(), row.position);
        EXPECT_EQ(page.findChild<QLabel *>("lbPreamp")->text(), row.label);
        ASSERT_EQ(told.size(), 1);
        EXPECT_EQ(told[0][0].toFloat(), float(row.position) / 2.0f);
    }
    page.setPreampValue(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(page.attValue(), 0);
    page.setAttValue(-7);
    EXPECT_EQ(told.last()[0].toFloat(), -3.5f);
}

TEST(ZephrinMOptionsTest, StartOfAStreamTellsTheFilterLengths)
{
    ZephrinMOptions page;
    QSignalSpy ssb(&page, &ZephrinMOptions::filterTapsSsbChanged);
    QSignalSpy am(&page, &ZephrinMOptions::filterTapsAmChanged);
    QSignalSpy dig(&page, &ZephrinMOptions::filterTapsDigChanged);
    QSignalSpy cw(&page, &ZephrinMOptions::filterTapsCwChanged);
    QSignalSpy preamp(&page, &ZephrinMOptions::preampChanged);
    page.onUpdate();
    turn(page, "sbFilterTapsDig", 4000);
    page.onUpdate();
    const auto values = [](const QSignalSpy &spy) {
        std::vector<int> list;
        for (const QVariantList &arguments : spy)
            list.push_back(arguments[0].toInt());
        return list;
    };
    EXPECT_EQ(values(ssb), (std::vector{1525, 1525}));
    EXPECT_EQ(values(am), (std::vector{1521, 1521}));
    EXPECT_EQ(values(dig), (std::vector{1523, 4000, 4000}));
    EXPECT_EQ(values(cw), (std::vector{1529, 1529}));
    EXPECT_TRUE(preamp.isEmpty());
}

// Page and calibration connected both ways, as in the plugin.
TEST(ZephrinMOptionsTest, PageDoesNotRoundTheCalibration)
{
    ZephrinMOptions page;
    CalibrationControl calibration;
    using Page = ZephrinMOptions;
    using Store = CalibrationControl;
    QObject::connect(
        &page, &Page::userPreampCoeffChanged, &calibration, &Store::setUserPreampCoeff);
    QObject::connect(&page, &Page::userPreampFreqChanged, &calibration, &Store::setUserFreqCoeff);
    QObject::connect(
        &page, &Page::adminPreampCoeffChanged, &calibration, &Store::setAdminPreampCoeff);
    QObject::connect(&page, &Page::adminPreampFreqChanged, &calibration, &Store::setAdminFreqCoeff);
    QObject::connect(
        &calibration, &Store::userPreampCoeffChanged, &page, &Page::setUserPreampCoeff);
    QObject::connect(&calibration, &Store::userFreqChanged, &page, &Page::setUserFreqCoeff);
    QObject::connect(
        &calibration, &Store::adminPreampCoeffChanged, &page, &Page::setAdminPreampCoeff);
    QObject::connect(&calibration, &Store::adminFreqChanged, &page, &Page::setAdminFreqCoeff);

    calibration.setUserPreampCoeff(3.0);           // beyond the control
    calibration.setUserFreqCoeff(2.0000123);       // finer than the control
    calibration.setAdminPreampCoeff(1.2345678901); // same
    calibration.setAdminFreqCoeff(-7.5);
    EXPECT_EQ(calibration.userPreampCoeff(), 3.0);
    EXPECT_EQ(calibration.userFreqCoeff(), 2.0000123);
    EXPECT_EQ(calibration.adminPreampCoeff(), 1.2345678901);
    EXPECT_EQ(calibration.adminFreqCoeff(), -7.5);
    EXPECT_DOUBLE_EQ(shown(page, "dsbUserPreampCoeff"), 2.0);
    EXPECT_DOUBLE_EQ(shown(page, "dsbUserFreqCoeff"), 2.0);
    EXPECT_DOUBLE_EQ(shown(page, "dsbAdminPreampCoeff"), 1.23456789);
    EXPECT_DOUBLE_EQ(shown(page, "dsbAdminFreqCoeff"), -7.5);

    turn(page, "dsbUserPreampCoeff", 0.75);
    turn(page, "dsbUserFreqCoeff", 1.1);
    turn(page, "dsbAdminPreampCoeff", 1.000001);
    turn(page, "dsbAdminFreqCoeff", -80.5);
    EXPECT_DOUBLE_EQ(calibration.userPreampCoeff(), 0.75);
    EXPECT_DOUBLE_EQ(calibration.userFreqCoeff(), 1.1);
    EXPECT_DOUBLE_EQ(calibration.adminPreampCoeff(), 1.000001);
    EXPECT_DOUBLE_EQ(calibration.adminFreqCoeff(), -80.0);

    QSignalSpy told(&page, &Page::userPreampCoeffChanged);
    page.setUserPreampCoeff(0.75);
    EXPECT_TRUE(told.isEmpty());
}

TEST(ZephrinMOptionsTest, AdcWordIsMadeOfTwoHexFields)
{
    const struct
    {
        const char *data;
        const char *number;
        int word; // -1: refused
    } rows[] = {{"2A", "1F", 0x1f2a}, {"0", "0", 0}, {"ff", "FF", 0xffff}, {"0x3C", "7", 0x073c},
        {"1ff", "1", 0x01ff}, {"12", "", -1}, {"xyz", "1", -1}, {"10000", "1", -1},
        {"-1", "1", -1}};
    ZephrinMOptions page;
    QSignalSpy told(&page, &ZephrinMOptions::adcRegChanged);
    for (const auto &row : rows) {
        told.clear();
        page.findChild<QLineEdit *>("leAdcData")->setText(row.data);
        page.findChild<QLineEdit *>("leAdcRegister")->setText(row.number);
        QString message;
        QTimer::singleShot(0, &page, [&message] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                message = box->windowTitle() + ": " + box->text();
                box->accept();
            }
        });
        qobject_cast<QPushButton *>(control(page, "btnAdcRegWrite"))->click();
        QCoreApplication::processEvents();
        if (row.word < 0) {
            EXPECT_EQ(message, "VelmoraSDR2: Incorrect HEX value for ADC REG!") << row.data;
            EXPECT_TRUE(told.isEmpty());
        } else {
            EXPECT_TRUE(message.isEmpty()) << row.data;
            ASSERT_EQ(told.size(), 1);
            EXPECT_EQ(told[0][0].toInt(), row.word);
        }
    }
}

TEST(ZephrinMOptionsTest, ServiceButtons)
{
    ZephrinMOptions page;
    const auto click = [&](const char *name) {
        qobject_cast<QAbstractButton *>(control(page, name))->click();
    };
    QSignalSpy attenuator(&page, &ZephrinMOptions::attValueChanged);
    for (const auto &[text, value] : {std::pair{"1F", 31}, {"abcdef", 0xabcdef}, {"zz", 0}}) {
        page.findChild<QLineEdit *>("leAttenuator")->setText(text);
        click("btnAttWrite");
        EXPECT_EQ(attenuator.last()[0], value);
    }
    QSignalSpy reset(&page, &ZephrinMOptions::adcResetChanged);
    QSignalSpy read(&page, &ZephrinMOptions::readArminCalibrations);
    QSignalSpy write(&page, &ZephrinMOptions::writeArminCalibrations);
    click("chbAdcReset");
    EXPECT_EQ(reset.last()[0], true);
    click("btnReadCalibrations");
    EXPECT_EQ(read.size() * 10 + write.size(), 10);
    click("btnWriteCalibrations");
    EXPECT_EQ(read.size() * 10 + write.size(), 11);
}

TEST(ZephrinMOptionsTest, BypassIsTheFilterSwitchedOff)
{
    ZephrinMOptions page;
    QSignalSpy told(&page, &ZephrinMOptions::bypassChanged);
    EXPECT_FALSE(page.bypass());
    page.setBypass(true);
    page.setBypass(true);
    EXPECT_TRUE(page.bypass());
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0][0], true);
    EXPECT_FALSE(test::shown(page, "chbLpf"));
}

TEST(ZephrinMOptionsTest, WheelTurnsNoBox)
{
    ZephrinMOptions page;
    QList<QWidget *> boxes;
    for (auto *box : page.findChildren<QAbstractSpinBox *>())
        boxes << box;
    for (auto *box : page.findChildren<QComboBox *>())
        boxes << box;
    EXPECT_EQ(boxes.size(), 46); // 38 of the tools, 4 of the calibration, 2 + 2 combo boxes
    for (QWidget *box : boxes) {
        const char *property = test::valueOf(box);
        const QVariant before = box->property(property);
        EXPECT_FALSE(test::turnWheel(box)) << qPrintable(box->objectName());
        EXPECT_EQ(box->property(property), before) << qPrintable(box->objectName());
    }
}

TEST(ZephrinMOptionsTest, AdvancedTabGoesAndItsControlsStay)
{
    ZephrinMOptions page;
    auto *tabs = page.findChild<QTabWidget *>("tbwOptions");
    ASSERT_NE(tabs, nullptr);
    const QPointer<QWidget> advanced = tabs->widget(2);
    ASSERT_TRUE(advanced->isAncestorOf(control(page, "leAdcData")));
    ASSERT_TRUE(advanced->isAncestorOf(control(page, "dsbAdminFreqCoeff")));
    advanced->close();
    tabs->removeTab(2);
    ASSERT_FALSE(advanced.isNull());
    QSignalSpy told(&page, &ZephrinMOptions::adminPreampFreqChanged);
    page.setAdminFreqCoeff(5.5);
    EXPECT_EQ(told.size(), 1);
}

// A control without a name on the screen, or one that does not say what it does, is of no use.
TEST(ZephrinMOptionsTest, EveryControlIsLabelledAndExplained)
{
    ZephrinMOptions page;
    QSet<QWidget *> labelled;
    for (auto *label : page.findChildren<QLabel *>())
        labelled << label->buddy();
    QList<QWidget *> controls;
    for (auto *box : page.findChildren<QAbstractSpinBox *>())
        controls << box;
    for (auto *box : page.findChildren<QComboBox *>())
        controls << box;
    for (QWidget *box : controls) {
        EXPECT_TRUE(labelled.contains(box) || !box->accessibleName().isEmpty())
            << qPrintable(box->objectName());
        EXPECT_FALSE(box->toolTip().isEmpty()) << qPrintable(box->objectName());
    }
}
} // namespace
