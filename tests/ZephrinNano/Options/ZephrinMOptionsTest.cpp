// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/ZephrinMOptions.h"
#include "Control/CalibrationControl.h"
#include "OptionsTest.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <gtest/gtest.h>
#include <limits>

namespace
{
using DspCore::AgcMode;
using test::control;
using test::shown;
using test::turn;

QList<QWidget *> boxes(const QWidget &page)
{
    QList<QWidget *> list;
    for (auto *box : page.findChildren<QAbstractSpinBox *>())
        list << box;
    for (auto *box : page.findChildren<QComboBox *>())
        list << box;
    return list;
}

void click(const QWidget &page, const char *button)
{
    qobject_cast<QAbstractButton *>(control(page, button))->click();
}

TEST(ZephrinMOptionsTest, AgcTimesBelongToTheirMode)
{
    ZephrinMOptions page;
    std::vector<std::pair<AgcMode, double>> told;
    using Self = ZephrinMOptions;
    for (const auto signal :
        {&Self::agcAttackChanged, &Self::agcDecayChanged, &Self::agcHangTimeChanged})
        QObject::connect(&page, signal, [&](auto mode, auto ms) { told.emplace_back(mode, ms); });
    for (const auto mode :
        {AgcMode::Long, AgcMode::Slow, AgcMode::Med, AgcMode::Fast, AgcMode::User}) {
        told.clear();
        for (int twice = 0; twice < 2; ++twice) { // the second time nothing changes
            page.setAgcAttack(mode, 0.3);
            page.setAgcDecay(mode, 20.5);
            page.setAgcHangTime(mode, 31);
        }
        EXPECT_EQ(told, (decltype(told){{mode, 0.3}, {mode, 20.5}, {mode, 31.0}}));
        EXPECT_DOUBLE_EQ(page.agcAttack(mode), 0.3);
        EXPECT_EQ(page.agcDecay(mode), 20.5);
        EXPECT_EQ(page.agcHangTime(mode), 31);
    }
    for (const AgcMode none : {AgcMode::Off, AgcMode(-1), AgcMode(6)}) {
        page.setAgcAttack(none, 1.1);
        EXPECT_EQ(page.agcAttack(none), 0.0);
    }
}

TEST(ZephrinMOptionsTest, DiglOffsetIsToldNegative)
{
    ZephrinMOptions page;
    QSignalSpy offsets(&page, &ZephrinMOptions::digOffsetChanged);
    turn(page, "sbDiglOffset", 1000);
    turn(page, "sbDiguOffset", 900);
    EXPECT_EQ(offsets, (QList<QVariantList>{{-1000, 1500}, {-1000, 900}}));
}

TEST(ZephrinMOptionsTest, PreampMovesInHalfDecibels)
{
    const struct
    {
        float asked;
        int position;
        const char *label;
    } rows[] = {{-10.3f, -21, "Preamp: -10.5 dBm"}, {5.5f, 11, "Preamp: 5.5 dBm"},
        {50.0f, 12, "Preamp: 6.0 dBm"}, {-1e30f, -63, "Preamp: -31.5 dBm"}};
    ZephrinMOptions page;
    QSignalSpy told(&page, &ZephrinMOptions::preampChanged);
    for (const auto &row : rows) {
        told.clear();
        page.setPreampValue(row.asked);
        page.setPreampValue(row.asked);
        EXPECT_EQ(page.attValue(), row.position);
        EXPECT_EQ(page.findChild<QLabel *>("lbPreamp")->text(), row.label);
        EXPECT_EQ(told, (QList<QVariantList>{{float(row.position) / 2.0f}}));
    }
    page.setPreampValue(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(page.attValue(), -63);
    page.setAttValue(-7);
    EXPECT_EQ(told.last()[0].toFloat(), -3.5f);
}

// Page and calibration connected both ways, as in the plugin.
TEST(ZephrinMOptionsTest, PageDoesNotRoundTheCalibration)
{
    using Page = ZephrinMOptions;
    using Store = CalibrationControl;
    const struct
    {
        const char *control;
        void (Page::*told)(double);
        void (Page::*show)(double);
        void (Store::*set)(double);
        double (Store::*get)() const;
        void (Store::*changed)(double);
        double fine, shown; // what the control cannot hold, and what it shows of it
        double turned, taken;
    } rows[] = {{"dsbUserPreampCoeff", &Page::userPreampCoeffChanged, &Page::setUserPreampCoeff,
                    &Store::setUserPreampCoeff, &Store::userPreampCoeff,
                    &Store::userPreampCoeffChanged, 3.0, 2.0, 0.75, 0.75},
        {"dsbUserFreqCoeff", &Page::userPreampFreqChanged, &Page::setUserFreqCoeff,
            &Store::setUserFreqCoeff, &Store::userFreqCoeff, &Store::userFreqChanged, 2.0000123,
            2.0, 40.5, 40.0},
        {"dsbAdminPreampCoeff", &Page::adminPreampCoeffChanged, &Page::setAdminPreampCoeff,
            &Store::setAdminPreampCoeff, &Store::adminPreampCoeff, &Store::adminPreampCoeffChanged,
            1.2345678901, 1.23456789, 0.4, 0.5},
        {"dsbAdminFreqCoeff", &Page::adminPreampFreqChanged, &Page::setAdminFreqCoeff,
            &Store::setAdminFreqCoeff, &Store::adminFreqCoeff, &Store::adminFreqChanged, -7.5, -7.5,
            -80.5, -80.0}};
    for (const auto &row : rows) {
        Page page;
        Store calibration;
        QObject::connect(&page, row.told, &calibration, row.set);
        QObject::connect(&calibration, row.changed, &page, row.show);
        (calibration.*row.set)(row.fine);
        EXPECT_EQ((calibration.*row.get)(), row.fine) << row.control;
        EXPECT_DOUBLE_EQ(shown(page, row.control), row.shown);
        turn(page, row.control, row.turned);
        EXPECT_DOUBLE_EQ((calibration.*row.get)(), row.taken) << row.control;
    }
}

TEST(ZephrinMOptionsTest, AdcWordIsMadeOfTwoHexFields)
{
    const struct
    {
        const char *data;
        const char *number;
        int word; // -1: refused
    } rows[] = {{"2A", "1F", 0x1f2a}, {"0x3C", "7", 0x073c}, {"1ff", "1", 0x01ff}, {"12", "", -1},
        {"10000", "1", -1}};
    ZephrinMOptions page;
    for (const auto &row : rows) {
        QSignalSpy told(&page, &ZephrinMOptions::adcRegChanged);
        page.findChild<QLineEdit *>("leAdcData")->setText(row.data);
        page.findChild<QLineEdit *>("leAdcRegister")->setText(row.number);
        QString message;
        QTimer::singleShot(0, &page, [&message] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                message = box->windowTitle() + ": " + box->text();
                box->accept();
            }
        });
        click(page, "btnAdcRegWrite");
        QCoreApplication::processEvents();
        EXPECT_EQ(message, row.word < 0 ? "VelmoraSDR2: Incorrect HEX value for ADC REG!" : "");
        EXPECT_EQ(told.value(0).value(0, -1).toInt(), row.word) << row.data;
    }
}

TEST(ZephrinMOptionsTest, ServiceButtons)
{
    ZephrinMOptions page;
    QStringList told;
    using Self = ZephrinMOptions;
    QObject::connect(&page, &Self::attValueChanged, [&](int n) { told << QString::number(n); });
    QObject::connect(&page, &Self::adcResetChanged, [&](bool on) { told << (on ? "on" : "off"); });
    QObject::connect(&page, &Self::readArminCalibrations, [&] { told << "read"; });
    QObject::connect(&page, &Self::writeArminCalibrations, [&] { told << "write"; });
    page.findChild<QLineEdit *>("leAttenuator")->setText("1F");
    for (const char *button :
        {"btnAttWrite", "chbAdcReset", "btnReadCalibrations", "btnWriteCalibrations"})
        click(page, button);
    EXPECT_EQ(told, (QStringList{"31", "on", "read", "write"}));
    page.setBypass(true); // the low pass switched off
    EXPECT_TRUE(page.bypass() && !shown(page, "chbLpf"));
}

TEST(ZephrinMOptionsTest, WheelTurnsNoBoxOfPageOrMenu)
{
    ZephrinMOptions page;
    const auto all = boxes(page); // the menu's among them
    EXPECT_EQ(all.size(), 46);    // 38 of the tools, 4 of the calibration, 2 + 2 combo boxes
    for (QWidget *box : all) {
        const QVariant before = box->property(test::valueOf(box));
        EXPECT_FALSE(test::turnWheel(box)) << qPrintable(box->objectName());
        EXPECT_EQ(box->property(test::valueOf(box)), before) << qPrintable(box->objectName());
    }
}

// A control without a name on the screen, or one that does not say what it does, is of no use.
TEST(ZephrinMOptionsTest, EveryControlIsLabelledAndExplained)
{
    ZephrinMOptions page;
    QSet<QWidget *> labelled;
    for (auto *label : page.findChildren<QLabel *>())
        labelled << label->buddy();
    for (QWidget *box : boxes(page)) {
        EXPECT_TRUE(labelled.contains(box) || !box->accessibleName().isEmpty())
            << qPrintable(box->objectName());
        EXPECT_FALSE(box->toolTip().isEmpty()) << qPrintable(box->objectName());
    }
    for (const char *idle : {"chbLpf", "leAdcData", "leAdcRegister", "btnAdcRegWrite",
             "leAttenuator", "btnAttWrite", "chbAdcReset"})
        EXPECT_TRUE(control(page, idle)->toolTip().contains("no effect")) << idle;
}
} // namespace
