// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsStore.h"

#include "support/FileSizeLimit.h"
#include "support/TemporarySettings.h"

#include <QLockFile>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
constexpr const char *kFile = "velmora-host.ini";

class SettingsStoreTest : public testing::Test
{
protected:
    static QVariant stored(const QString &key)
    {
        return host::SettingsStore().settings().value(key);
    }

private:
    test::TemporarySettings m_settings;
};
} // namespace

TEST_F(SettingsStoreTest, ChangesAndRemovalsReachTheFileInAFolderThatWasNotThere)
{
    host::SettingsStore store;
    EXPECT_EQ(store.error(), "");
    store.settings().setValue("Group/bytes", QByteArray("caf\xc3\xa9/\0x", 8));
    store.settings().setValue("gone", 1);
    ASSERT_TRUE(store.save()) << qPrintable(store.error());
    store.settings().remove("gone");
    ASSERT_TRUE(store.save()) << qPrintable(store.error());
    EXPECT_EQ(stored("Group/bytes").toByteArray(), QByteArray("caf\xc3\xa9/\0x", 8));
    EXPECT_FALSE(stored("gone").isValid());
}

TEST_F(SettingsStoreTest, ValuesForThisRunStayOutOfTheFile)
{
    test::TemporarySettings::write(kFile, "[Device]\nrate=3\npreamp=-10\n");
    host::SettingsStore store;
    store.overlay("Device/rate", 7);
    store.overlay("Device/serial", "X1");
    EXPECT_EQ(store.settings().value("Device/rate").toInt(), 7);
    EXPECT_EQ(store.settings().value("Device/preamp").toInt(), -10);

    // A device writes all that it has, in a group that it opens and empties first.
    store.settings().beginGroup("Device");
    store.settings().remove("");
    store.settings().setValue("rate", 8);
    store.settings().setValue("serial", "X2");
    store.settings().setValue("preamp", -12);
    store.settings().endGroup();
    ASSERT_TRUE(store.save()) << qPrintable(store.error());
    EXPECT_EQ(stored("Device/rate").toInt(), 3);
    EXPECT_EQ(stored("Device/preamp").toInt(), -12);
    EXPECT_FALSE(stored("Device/serial").isValid());
}

TEST_F(SettingsStoreTest, ADamagedFileIsToldOfUsedAndKept)
{
    const QByteArray text = "[Device]\nrate=3\nno value on this line\n";
    test::TemporarySettings::write(kFile, text);
    host::SettingsStore store;
    EXPECT_TRUE(store.error().contains("damaged"));
    store.settings().setValue("Device/preamp", -2);
    ASSERT_TRUE(store.save()) << qPrintable(store.error());
    EXPECT_EQ(stored("Device/rate").toInt(), 3);
    EXPECT_EQ(stored("Device/preamp").toInt(), -2);
    EXPECT_EQ(test::TemporarySettings::read("velmora-host.ini.damaged"), text);
}

TEST_F(SettingsStoreTest, APlaceThatCannotBeReadOrWrittenIsToldAndTheRunGoesOn)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    for (const QString &path :
        {folder.path(), file.fileName() + "/a.ini", QString("/proc/a.ini")}) {
        host::SettingsStore store(path);
        store.overlay("a", 1);
        store.settings().setValue("b", 2);
        EXPECT_EQ(store.settings().value("a").toInt() + store.settings().value("b").toInt(), 3);
        EXPECT_FALSE(store.save()) << qPrintable(path);
        EXPECT_TRUE(store.error().contains(path)) << qPrintable(store.error());
    }
}

TEST_F(SettingsStoreTest, ASaveInTheBackgroundTellsTheNextTime)
{
    QFile::remove(test::TemporarySettings::path(kFile));
    host::SettingsStore store;
    store.settings().setValue("a", 1);
    EXPECT_TRUE(store.saveLater());
    store.settings().setValue("b", 2);
    ASSERT_TRUE(store.save()) << "after what is under way";
    EXPECT_EQ(stored("a").toInt(), 1);
    EXPECT_EQ(stored("b").toInt(), 2);

    host::SettingsStore nowhere("/proc/a.ini");
    nowhere.settings().setValue("a", 1);
    EXPECT_TRUE(nowhere.saveLater()) << "not known yet";
    bool isGood = true;
    for (int i = 0; i < 500 && isGood; ++i) {
        usleep(10000);
        isGood = nowhere.saveLater();
    }
    EXPECT_FALSE(isGood);
    EXPECT_TRUE(nowhere.error().contains("/proc/a.ini"));
}

// Room for the change alone is not enough: the file is written anew.
TEST_F(SettingsStoreTest, ADiskTooSmallForALargeFileLeavesItAsItWas)
{
    constexpr rlim_t kFullBytes = 1000; // enough for the lock beside the file
    const QByteArray text = "[Device]\nnote=" + QByteArray(2 * kFullBytes, 'x') + "\nrate=3\n";
    test::TemporarySettings::write(kFile, text);
    host::SettingsStore store;
    store.settings().setValue("Device/rate", 4);
    std::signal(SIGXFSZ, SIG_IGN);
    {
        const test::FileSizeLimit limit(kFullBytes);
        EXPECT_FALSE(store.save());
    }
    EXPECT_EQ(test::TemporarySettings::read(kFile), text);
}

TEST_F(SettingsStoreTest, ASaveWaitsForTheOneUnderWayAndKeepsWhatOthersSaved)
{
    test::TemporarySettings::write(kFile, "");
    host::SettingsStore early; // has read nothing of the others
    QLockFile turn(test::TemporarySettings::path(kFile) + ".turn");
    ASSERT_TRUE(turn.tryLock());
    const pid_t other = fork();
    if (other == 0) {
        host::SettingsStore store;
        store.settings().setValue("other/key", 1);
        _exit(store.save() ? 0 : 1);
    }
    usleep(100000); // many times as long as a save
    int status = -1;
    EXPECT_EQ(waitpid(other, &status, WNOHANG), 0);
    test::TemporarySettings::write(kFile, "[own]\nkey=2\n");
    turn.unlock();
    waitpid(other, &status, 0);
    EXPECT_EQ(status, 0);
    early.settings().setValue("early/key", 3);
    EXPECT_TRUE(early.save()) << qPrintable(early.error());
    EXPECT_EQ(stored("early/key").toInt(), 3);
    EXPECT_EQ(stored("other/key").toInt(), 1);
    EXPECT_EQ(stored("own/key").toInt(), 2);
}
