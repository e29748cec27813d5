// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/DeviceChoice.h"

#include "settings/CommandLine.h"

#include "library/DeviceKind.h"

#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
TEST(DeviceChoiceTest, TheCommandLineGoesBeforeWhatIsNeededAndThatBeforeWhatIsStored)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("settings.ini");
    const struct
    {
        const char *stored;
        const char *options;
        const char *kind; // null: a library of one's own
    } cases[] = {
        {"", "", "virtual"},
        {"usb", "", "usb"},
        {"usb", "--device VIRTUAL", "virtual"},
        {"usb", "--scene a.wav", "virtual"},
        {"usb", "--eeprom e", "virtual"},
        {"usb", "--fault none", "virtual"},
        {"usb", "--free-run", "virtual"},
        {"virtual", "--device usb --scene a.wav", "usb"}, // refused later, with its reason
        {"usb", "--d2xx l.so", nullptr},
        {"sundial", "", "virtual"},
    };
    for (const auto &c : cases) {
        QSettings(file, QSettings::IniFormat).setValue("Radio/device", c.stored);
        const auto command =
            host::readCommandLine(QString("velmora-host --headless --settings %1 %2")
                                      .arg(file, c.options)
                                      .split(' ', Qt::SkipEmptyParts));
        ASSERT_TRUE(std::holds_alternative<host::HostSettings>(command)) << c.options;
        const auto choice = host::DeviceChoice::of(std::get<host::HostSettings>(command));
        EXPECT_EQ(choice.kind, host::findDeviceKind(c.kind)) << c.stored << ' ' << c.options;
    }
}
} // namespace
