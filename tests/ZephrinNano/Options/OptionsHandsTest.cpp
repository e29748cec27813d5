// SPDX-License-Identifier: GPL-3.0-or-later
// The options page and the device menu as a person has them in hand: keys, questions, languages.
#include "Options/DeviceMenuZephrinNano.h"
#include "Options/ZephrinMOptions.h"
#include "OptionsTest.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTranslator>
#include <gtest/gtest.h>

namespace
{
/// Every text in brackets: a language in which nothing can be missed.
class Brackets : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        static const QStringList kOurs = {"ZephrinMOptions", "DeviceMenuZephrinNano"};
        return kOurs.contains(context) ? '[' + QString::fromUtf8(text) + ']' : QString();
    }
};

class OptionsHandsTest : public testing::Test
{
protected:
    OptionsHandsTest() { page.show(); }

    QMessageBox *question() const { return page.findChild<QMessageBox *>(); }

    static void press(QMessageBox &box, QMessageBox::ButtonRole role)
    {
        for (QAbstractButton *button : box.buttons())
            if (box.buttonRole(button) == role)
                return button->click();
    }

    QString focused() const
    {
        const QWidget *widget = QApplication::focusWidget();
        return widget ? widget->objectName() : QString();
    }

    ZephrinMOptions page;
    QMenu &menu = *page.deviceMenu();
    DeviceMenuZephrinNano *panel = menu.findChild<DeviceMenuZephrinNano *>();
};

TEST_F(OptionsHandsTest, TheDeviceMenuIsWorkedByKeysAlone)
{
    QSignalSpy rate(&page, &ZephrinMOptions::sampleRateChanged);
    QSignalSpy preamp(&page, &ZephrinMOptions::preampAutoChanged);
    menu.popup({});
    QApplication::setActiveWindow(&menu);
    QTest::keyClick(&menu, Qt::Key_Down);
    ASSERT_EQ(focused(), "cbCurrentDevice");
    const auto type = [](int key) { QTest::keyClick(QApplication::focusWidget(), Qt::Key(key)); };
    for (const char *next : {"cbSampleRate", "chbPreamp", "cbCurrentDevice"}) {
        type(Qt::Key_Tab);
        EXPECT_EQ(focused(), next);
    }
    for (const char *before : {"chbPreamp", "cbSampleRate"}) {
        type(Qt::Key_Up);
        EXPECT_EQ(focused(), before);
    }
    auto *const rates = panel->findChild<QComboBox *>("cbSampleRate");
    type(Qt::Key_Space); // opens the box
    ASSERT_TRUE(rates->view()->isVisible());
    QTest::keyClick(rates->view(), Qt::Key_Down);
    QTest::keyClick(rates->view(), Qt::Key_Return);
    EXPECT_EQ(rate, QList<QVariantList>{{1}});
    rates->setFocus();
    type(Qt::Key_Down);
    type(Qt::Key_Space);
    EXPECT_EQ(preamp, QList<QVariantList>{{true}});
    page.setLock(true); // the device cannot be changed: it is passed over
    type(Qt::Key_Tab);
    EXPECT_EQ(focused(), "cbSampleRate");
    EXPECT_TRUE(menu.isVisible());
}

TEST_F(OptionsHandsTest, TheCalibrationIsWrittenAfterAYes)
{
    QSignalSpy written(&page, &ZephrinMOptions::writeArminCalibrations);
    auto *const write = page.findChild<QPushButton *>("btnWriteCalibrations");
    EXPECT_FALSE(write->isEnabled());
    page.setLock(true);
    write->click();
    ASSERT_NE(question(), nullptr);
    EXPECT_EQ(question()->defaultButton(), question()->button(QMessageBox::Cancel));
    press(*question(), QMessageBox::RejectRole);
    EXPECT_EQ(written.size(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    write->click();
    press(*question(), QMessageBox::AcceptRole);
    EXPECT_EQ(written.size(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    write->click();
    page.setLock(false); // the device is closed: nobody to write to
    EXPECT_FALSE(question() && question()->isVisible());
    EXPECT_EQ(written.size(), 1);
}

TEST_F(OptionsHandsTest, AnEmptyListSaysWhatToDo)
{
    auto *const hint = panel->findChild<QLabel *>("lbNoDevice");
    panel->setDevices({{0, "ZN000007"}});
    EXPECT_TRUE(hint->isHidden());
    panel->setDevices({});
    EXPECT_FALSE(hint->isHidden());
    EXPECT_EQ(panel->findChild<QComboBox *>("cbCurrentDevice")->count(), 0);
}

TEST_F(OptionsHandsTest, AnotherLanguageChangesWordsAndNothingElse)
{
    panel->setDevices({{0, "ZN000007"}, {3, "ZN000009"}});
    panel->setCurrentDevice(1);
    page.setSampleRateIndex(4);
    page.on4k(true);
    page.setStatus("connected");
    page.setPreampValue(-10.0f);
    page.setLock(true);
    test::turn(page, "sbNrTaps", 44);
    page.findChild<QLineEdit *>("leAdcData")->setText("7F");
    const auto values = [this] {
        QStringList all;
        for (const QWidget *control : page.findChildren<QWidget *>())
            for (const char *value : {"value", "currentIndex", "checked", "enabled"})
                if (!control->objectName().startsWith("qt_"))
                    all += control->objectName() + ' ' + control->property(value).toString();
        return all;
    };
    const QStringList before = values();
    QSignalSpy rate(&page, &ZephrinMOptions::sampleRateChanged);
    QSignalSpy taps(&page, &ZephrinMOptions::nrTapsChanged);

    Brackets brackets;
    QCoreApplication::installTranslator(&brackets);
    QCoreApplication::processEvents(); // windows hear of it by a posted event
    EXPECT_EQ(values(), before);
    EXPECT_EQ(rate.size() + taps.size(), 0);
    EXPECT_EQ(page.findChild<QLineEdit *>("leAdcData")->text(), "7F");
    EXPECT_EQ(page.findChild<QTabWidget *>()->tabText(1), "[&Noise]");
    EXPECT_EQ(panel->findChild<QLabel *>("lbCurrentDevice")->text(), "[ZephrinNANO:]");
    EXPECT_EQ(page.findChild<QLabel *>("lbPreamp")->text(), "[Preamp: ]-10.0[ dBm]");
    for (QWidget *side :
        {static_cast<QWidget *>(page.findChild<QTabWidget *>()), static_cast<QWidget *>(panel)}) {
        EXPECT_TRUE(side->findChild<QLabel *>("lbConnectStatus")->text().contains("connected"));
        EXPECT_FALSE(side->findChild<QLabel *>("lbConnectStatus")->text().contains('['));
        EXPECT_EQ(side->findChild<QComboBox *>("cbSampleRate")->currentText(), "[768 kHz]  ");
    }
    test::turn(page, "sbNrTaps", 45);
    panel->findChild<QComboBox *>("cbSampleRate")->setCurrentIndex(2);
    EXPECT_EQ(taps.size(), 1);
    EXPECT_EQ(rate, QList<QVariantList>{{2}});

    QCoreApplication::removeTranslator(&brackets);
    QCoreApplication::processEvents();
    EXPECT_EQ(page.findChild<QTabWidget *>()->tabText(1), "&Noise");
}

TEST_F(OptionsHandsTest, EachControlHasANameAndMnemonicsOfATabDiffer)
{
    auto *const tabs = page.findChild<QTabWidget *>();
    QString ofTabs;
    const auto mnemonicOf = [](const QString &text) {
        const int at = QString(text).replace("&&", "  ").indexOf('&');
        return at < 0 ? QString() : QString(text[at + 1].toLower());
    };
    for (int i = 0; i < tabs->count(); ++i)
        ofTabs += mnemonicOf(tabs->tabText(i));
    EXPECT_EQ(ofTabs.size(), tabs->count());
    int controls = 0;
    for (int i = 0; i < tabs->count(); ++i) {
        QString taken = ofTabs;
        for (const char *property : {"text", "title"})
            for (const QWidget *widget : tabs->widget(i)->findChildren<QWidget *>())
                taken += mnemonicOf(widget->property(property).toString());
        QString once = taken;
        for (int k = once.size() - 1; k >= 0; --k)
            if (once.indexOf(once[k]) < k)
                once.remove(k, 1);
        EXPECT_EQ(taken, once) << tabs->tabText(i).toStdString();
        for (QWidget *widget : tabs->widget(i)->findChildren<QWidget *>()) {
            if (!(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy()
                || widget->objectName().startsWith("qt_") || widget->window() != &page)
                continue; // parts of Qt's own
            const QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(widget);
            EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty())
                << widget->objectName().toStdString();
            ++controls;
        }
    }
    EXPECT_GT(controls, 60);
    for (const char *control : {"cbCurrentDevice", "cbSampleRate", "chbPreamp"}) {
        QWidget *widget = test::control(*panel, control);
        EXPECT_FALSE(
            QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
            << control;
    }
}
} // namespace
