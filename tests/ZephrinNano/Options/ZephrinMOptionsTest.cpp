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
using test::control;
using test::shown;
using test::turn;

void click(const QWidget &page, const char *button)
{
    qobject_cast<QAbstractButton *>(control(page, button))->click();
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
    } rows[] = {{"2A", "1F", 0x1f2a}, {"12", "", -1}};
    ZephrinMOptions page;
    page.setLock(true);
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
    const auto clickAll = [&] {
        for (const char *button :
            {"btnAttWrite", "chbAdcReset", "btnReadCalibrations", "btnWriteCalibrations"})
            click(page, button);
    };
    clickAll();
    EXPECT_EQ(told, QStringList{"on"}); // the rest waits for an open device
    page.setLock(true);
    clickAll();
    EXPECT_EQ(told, (QStringList{"on", "31", "off", "read"})); // writing asks first
    page.setBypass(true);                                      // the low pass switched off
    EXPECT_TRUE(page.bypass() && !shown(page, "chbLpf"));
}

TEST(ZephrinMOptionsTest, WheelTurnsNoBoxOfPageOrMenu)
{
    ZephrinMOptions page;
    QList<QWidget *> all; // the menu's among them
    for (auto *box : page.findChildren<QAbstractSpinBox *>())
        all << box;
    for (auto *box : page.findChildren<QComboBox *>())
        all << box;
    EXPECT_EQ(all.size(), 46); // 38 of the tools, 4 of the calibration, 2 + 2 combo boxes
    for (QWidget *box : all) {
        const QVariant before = box->property(test::valueOf(box));
        EXPECT_FALSE(test::turnWheel(box)) << qPrintable(box->objectName());
        EXPECT_EQ(box->property(test::valueOf(box)), before) << qPrintable(box->objectName());
    }
}
} // namespace
