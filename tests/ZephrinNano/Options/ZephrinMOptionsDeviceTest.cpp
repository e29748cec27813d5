// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/DiscoverZephrinNANO.h"
#include "Options/DeviceMenuZephrinNano.h"
#include "Options/ZephrinMOptions.h"
#include "OptionsTest.h"
#include "ZephrinNano/BrokenLibrary.h"
#include "virtual_receiver.h"
#include <QMenu>

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <thread>

namespace
{
constexpr char kSerial[] = "ZN000001"; // of the virtual receiver

class OptionsDeviceTest : public testing::Test
{
protected:
    OptionsDeviceTest() { vr_reset(); }
    ~OptionsDeviceTest() override
    {
        vr_reset();
        vr_set_plugged(0);
        scan(); // the list outlives the test
        vr_reset();
    }

    // As the device control does it every two seconds; the page follows by itself.
    static void scan()
    {
        DiscoverZephrinNANO::instance()->scan();
        DiscoverZephrinNANO::instance()->wait();
        QCoreApplication::processEvents(); // delivers discovered()
    }

    QString chosen() const { return box(page)->currentText(); }
    static QComboBox *box(const QWidget &parent)
    {
        return parent.findChild<QComboBox *>("cbCurrentDevice", Qt::FindChildrenRecursively);
    }

    ZephrinMOptions page;
    DeviceMenuZephrinNano *panel = page.deviceMenu()->findChild<DeviceMenuZephrinNano *>();
};

TEST_F(OptionsDeviceTest, PageDoesNotWaitForAScan)
{
    constexpr int kPatienceMs = 2000; // then the bus answers, and the page has waited for it
    test::BrokenLibrary library;
    library.listHeld = 1;
    auto *const finder = DiscoverZephrinNANO::instance();
    finder->scan();
    std::thread bus([&] { finder->wait(kPatienceMs), library.listHeld = 0; });
    ZephrinMOptions early;
    EXPECT_TRUE(finder->isScanning());
    EXPECT_EQ(early.getCurrentDeviceID(), -1);
    library.listHeld = 0;
    bus.join();
    QCoreApplication::processEvents();
    EXPECT_EQ(early.getCurrentDeviceID(), 0);
    EXPECT_EQ(ZephrinMOptions().getCurrentDeviceID(), 0); // of the scan before
}

TEST_F(OptionsDeviceTest, SerialIsStoredAndKeptWhileTheDeviceIsAway)
{
    QTemporaryDir folder;
    QSettings settings(folder.filePath("device.ini"), QSettings::IniFormat);
    const char *key = "ZephrinMOptions/Serial";
    for (const QByteArray serial : {"ZN000001", "ZN000009"}) { // the second is not there
        settings.setValue(key, serial);
        page.readSettings(&settings);
        scan();
        EXPECT_EQ(chosen(), kSerial);
        settings.remove(key);
        page.writeSettings(&settings);
        EXPECT_EQ(settings.value(key).type(), QVariant::ByteArray);
        EXPECT_EQ(settings.value(key).toByteArray(), serial);
    }
}

// Two receivers, of which one scan brings only the other.
TEST_F(OptionsDeviceTest, DeviceAskedForIsChosenWhenItComes)
{
    box(page)->addItem("ZN000007", 4);
    box(page)->addItem("ZN000001", 5);
    panel->setDevices({{4, "ZN000007"}, {5, "ZN000001"}});
    const auto expectChosen = [this](int id, const QString &serial) {
        EXPECT_EQ(page.getCurrentDeviceID(), id);
        EXPECT_EQ(panel->serial(), serial);
    };
    page.restoreDevice("nobody");
    EXPECT_EQ(page.getCurrentDeviceID(), 4);
    page.restoreDevice("ZN000001");
    expectChosen(5, "ZN000001");

    page.setSerial(u"ZN000007");
    expectChosen(4, "ZN000007");
    box(*panel)->setCurrentIndex(1); // by the user
    expectChosen(5, "ZN000001");

    page.setSerial(u"ZN000009");
    scan();
    EXPECT_EQ(page.getCurrentDeviceID(), 0); // ZN000001 is what there is
    page.setSerial(u"ZN000001");
    EXPECT_EQ(page.getCurrentDeviceID(), 0);
}

TEST_F(OptionsDeviceTest, PageAndMenuFollowEachOtherAndTellOnce)
{
    QSignalSpy rate(&page, &ZephrinMOptions::sampleRateChanged);
    QSignalSpy preamp(&page, &ZephrinMOptions::preampAutoChanged);
    const auto *const pages = page.findChild<QWidget *>("tbwOptions");
    auto *const menuRate = panel->findChild<QComboBox *>("cbSampleRate");
    auto *const menuPreamp = panel->findChild<QCheckBox *>("chbPreamp");

    menuRate->setCurrentIndex(3);
    EXPECT_EQ(page.sampleRateIndex(), 3);
    page.setSampleRateIndex(8);
    EXPECT_EQ(menuRate->currentIndex(), 8);
    for (const int none : {-1, 9})
        page.setSampleRateIndex(none);
    EXPECT_EQ(rate, (QList<QVariantList>{{3}, {8}}));

    menuPreamp->click();
    EXPECT_TRUE(page.preampAuto());
    pages->findChild<QCheckBox *>("chbPreamp")->click();
    EXPECT_FALSE(menuPreamp->isChecked());
    EXPECT_EQ(preamp, (QList<QVariantList>{{true}, {false}}));

    page.on4k(true); // other texts of the same rates
    EXPECT_EQ(rate.size(), 2);
}

} // namespace
