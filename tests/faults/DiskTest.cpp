// SPDX-License-Identifier: GPL-3.0-or-later
// The disk is full, read-only or gone under every file that the host writes: what was good before
// stays, each file is named with the reason, and the status is 1.
#include "host/HostProcess.h"
#include "support/FileSizeLimit.h"
#include "support/TemporarySettings.h"

#include "host_interfaces/AmateurRegion.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QThread>
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <sys/mount.h>
#include <sys/stat.h>

namespace
{
using test::HostProcess;

const QStringList kFiles = {
    "a.wav", "v.wav", "l.wav", "p.png", "w.png", "t.png", "r.json", "s.ini", "e.bin"};

/// All that a run writes but its settings, into that folder of the host's.
QString everything(const QString &folder)
{
    return QString("--out %1/a.wav --vac-out %1/v.wav --line-out %1/l.wav --panorama %1/p.png "
                   "--waterfall %1/w.png --audio-spectrum %1/t.png --report %1/r.json --eeprom "
                   "%1/e.bin --record hdsdr --record-path %1 --rate 48k")
        .arg(folder);
}

QString recordingIn(const HostProcess &host, const QString &folder)
{
    return QDir(host.path(folder)).entryList({"*_hd.wav"}, QDir::Files, QDir::Time).value(0);
}

/// So that the next run has something to save.
void forgetSettings(const HostProcess &host, const QString &name)
{
    QFile file(host.path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Mine]\nkey=1\n");
}

void waitForAudio(const HostProcess &host, const QString &name)
{
    constexpr qint64 kSome = 500000; // bytes: more than a second
    for (int i = 0; i < 3000 && QFileInfo(host.path(name)).size() < kSome; ++i)
        QThread::msleep(10);
}

/// One line that begins with or names the file and has the reason.
void expectTold(const HostProcess &host, const QString &file, const QString &reason)
{
    const QRegularExpression line(
        "^velmora-host: [^\n]*" + QRegularExpression::escape(file) + "[^\n]*" + reason + "[^\n]*$",
        QRegularExpression::MultilineOption);
    EXPECT_TRUE(line.match(host.errors()).hasMatch()) << qPrintable(file) << ":\n"
                                                      << qPrintable(host.errors());
}

TEST(DiskTest, AFullDiskTakesNothingThatWasThere)
{
    const QString options = "--seconds 2 --settings d/s.ini " + everything("d");
    HostProcess host;
    QDir().mkpath(host.path("d"));
    host.run(options);
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
    forgetSettings(host, "d/s.ini");
    QFile::remove(host.path("d/" + recordingIn(host, "d")));
    QMap<QString, QByteArray> before;
    for (const QString &name : kFiles)
        before[name] = host.bytes("d/" + name);
    {
        const test::FileSizeLimit full(1000);
        host.run(options);
    }
    EXPECT_TRUE(host.ended());
    EXPECT_EQ(host.status(), 1);
    for (const QString &name : kFiles) {
        EXPECT_FALSE(before[name].isEmpty()) << qPrintable(name);
        EXPECT_EQ(host.bytes("d/" + name), before[name]) << qPrintable(name);
        if (name != "e.bin") // nobody wrote it
            expectTold(host, name, "File too large");
    }
    expectTold(host, recordingIn(host, "d"), "File too large");
    // What came of the new audio until then.
    EXPECT_EQ(host.audio("d/a.wav.part").size(), (1000u - 92u) / 8u);
}

TEST(DiskTest, AFolderThatIsTakenAwayIsTold)
{
    HostProcess host;
    QDir().mkpath(host.path("d"));
    host.start("--seconds 600 " + everything("d"));
    waitForAudio(host, "d/a.wav");
    ASSERT_TRUE(QDir(host.path("d")).removeRecursively());
    kill(pid_t(host.id()), SIGINT);
    host.wait();
    EXPECT_TRUE(host.ended());
    EXPECT_EQ(host.status(), 1);
    for (const char *audio : {"a.wav", "v.wav", "l.wav"})
        expectTold(host, audio, "taken away");
    for (const char *name : {"p.png", "w.png", "t.png", "r.json", "_hd.wav"})
        expectTold(host, name, "No such file or directory");
}

/// A small disk of our own, if the system lets us.
class SmallDisk
{
public:
    explicit SmallDisk(const QString &folder) : m_folder(folder.toLocal8Bit())
    {
        QDir().mkpath(folder);
        m_isThere = mount("tmpfs", m_folder.constData(), "tmpfs", 0, "size=512k") == 0;
    }
    ~SmallDisk()
    {
        if (m_isThere)
            umount2(m_folder.constData(), MNT_DETACH);
    }
    bool isThere() const { return m_isThere; }
    bool makeReadOnly() const
    {
        return mount("tmpfs", m_folder.constData(), "tmpfs", MS_REMOUNT | MS_RDONLY, "") == 0;
    }

private:
    QByteArray m_folder;
    bool m_isThere = false;
};

TEST(DiskTest, ADiskThatBecomesReadOnlyKeepsWhatItHas)
{
    HostProcess host;
    const SmallDisk disk(host.path("d"));
    if (!disk.isThere())
        GTEST_SKIP() << "no disk can be mounted: " << std::strerror(errno);
    for (const char *name : {"d/p.png", "d/r.json"}) {
        QFile file(host.path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("good");
    }
    forgetSettings(host, "d/s.ini");
    host.start("--seconds 600 --out a.wav --panorama d/p.png --report d/r.json --settings d/s.ini");
    waitForAudio(host, "a.wav");
    ASSERT_TRUE(disk.makeReadOnly()) << std::strerror(errno);
    kill(pid_t(host.id()), SIGINT);
    host.wait();
    EXPECT_TRUE(host.ended());
    EXPECT_EQ(host.status(), 1);
    for (const char *name : {"p.png", "r.json"})
        expectTold(host, name, "not writable");
    expectTold(host, "s.ini", "Read-only file system");
    EXPECT_EQ(host.bytes("d/p.png"), "good");
    EXPECT_EQ(host.bytes("d/r.json"), "good");
    EXPECT_GT(host.audio("a.wav").size(), 1000u);
}

TEST(DiskTest, ADiskThatFillsUpEndsTheFilesAtWhatItTook)
{
    HostProcess host;
    const SmallDisk disk(host.path("d"));
    if (!disk.isThere())
        GTEST_SKIP() << "no disk can be mounted: " << std::strerror(errno);
    host.run("--seconds 3 --rate 48k --out d/a.wav --record hdsdr --record-path d --report r.json");
    EXPECT_EQ(host.status(), 1);
    expectTold(host, "a.wav", "No space left on device");
    expectTold(host, recordingIn(host, "d"), "No space left on device");
    EXPECT_GT(host.audio("d/a.wav").size(), 10000u);
}

TEST(DiskTest, TheBandPlanSurvivesAFullDisk)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const test::TemporarySettings folder;
    AmateurRegion::instance()->setEnable60M(!AmateurRegion::instance()->enable60M());
    const QByteArray before = folder.read("itu.ini");
    ASSERT_FALSE(before.isEmpty());
    {
        const test::FileSizeLimit full(10);
        AmateurRegion::instance()->setEnable60M(!AmateurRegion::instance()->enable60M());
    }
    EXPECT_EQ(folder.read("itu.ini"), before);
    AmateurRegion::instance()->setEnable11M(!AmateurRegion::instance()->enable11M());
    EXPECT_NE(folder.read("itu.ini"), before);
}
} // namespace
