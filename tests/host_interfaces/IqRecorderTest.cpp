// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/IqRecorder.h"
#include "host_interfaces/IQRecorderConfigure.h"
#include "host_interfaces/IqRecorderOption.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
using vm::file::IQFile;

/// The home folder is an empty one.
class IqRecorderTest : public testing::Test
{
protected:
    IqRecorderTest() { qputenv("HOME", m_home.path().toLocal8Bit()); }
    ~IqRecorderTest() override { qputenv("HOME", m_before); }

    QString home(const char *name) const { return m_home.path() + "/" + name; }

private:
    QTemporaryDir m_home;
    const QByteArray m_before = qgetenv("HOME");
};

TEST_F(IqRecorderTest, EachLayoutHasItsPlaceInTheListAndItsFileName)
{
    const QDateTime start(QDate(2024, 2, 9), QTime(3, 4, 5));
    const QString application = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName("App");
    const struct
    {
        int index;
        const char *text;
        IQFile::Format format;
        const char *fileName;
    } rows[] = {
        {1, "HDSDR", IQFile::HDSDR, "/iq/App_Device_20240209_03-04-05_hd.wav"},
        {2, "Standart WAVE", IQFile::StandartWave, "/iq/App_Device_20240209_03-04-05_wv.wav"},
        {0, "VelmoraSDR2", IQFile::VelmoraSDR2, "/iq/App_Device_20240209_03-04-05_.wav"},
    };
    IqRecorderOption page;
    auto *list = page.findChild<QComboBox *>("cbIqFormat");
    ASSERT_NE(list, nullptr);
    IQRecorderConfigure configure;
    configure.path = "/iq";
    QObject::connect(&page, &IqRecorderOption::formathChanged,
        [&](IQFile::Format format) { configure.format = format; });
    for (const auto &row : rows) {
        EXPECT_EQ(list->itemText(row.index), row.text);
        list->setCurrentIndex(row.index);
        EXPECT_EQ(page.format(), row.format);
        EXPECT_EQ(configure.fileName("Device", start), row.fileName);
    }
    QCoreApplication::setApplicationName(application);
}

TEST_F(IqRecorderTest, RecorderPassesOnWhatThePageTellsAndSettingsKeepIt)
{
    const QString path = QString::fromUtf8("/home/J\xc3\xbcrgen/\xd1\x8d\xd1\x84\xd0\xb8\xd1\x80");
    IqRecorder *recorder = IqRecorder::instance();
    recorder->options()->setFormat(IQFile::VelmoraSDR2);
    QStringList told;
    QObject receiver;
    QObject::connect(
        recorder, &IqRecorder::pathChanged, &receiver, [&](const QString &path) { told << path; });
    QObject::connect(recorder, &IqRecorder::formathChanged, &receiver,
        [&](IQFile::Format format) { told << QString::number(format); });
    recorder->setPath(path);
    recorder->options()->setFormat(IQFile::StandartWave);
    EXPECT_EQ(told, (QStringList{path, QString::number(IQFile::StandartWave)}));

    QSettings settings(home("a.ini"), QSettings::IniFormat);
    recorder->writeSettings(&settings);
    EXPECT_EQ(settings.value("IqRecorder/path").toByteArray(), path.toUtf8());
    EXPECT_EQ(settings.value("IqRecorder/format").toInt(), 1);
    recorder->setPath("/other");
    recorder->options()->setFormat(IQFile::HDSDR);
    recorder->readSettings(&settings);
    EXPECT_EQ(recorder->path(), path);
    EXPECT_EQ(recorder->format(), IQFile::StandartWave);
}
} // namespace
