// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRig.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtEndian>
#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace
{
using test::PluginRig;

TEST(PluginInterfaceTest, AnswersWithoutAnEngine)
{
    PluginRig rig;
    auto &device = rig.device();
    EXPECT_EQ(device.name(), "ZephrinNANO");
    EXPECT_EQ(device.getAvalibleFunctions()->getCurrentPanSampleRateRX(), 43000.0);
    EXPECT_TRUE(device.setPreamp(3));
    EXPECT_FALSE(device.open());
    EXPECT_EQ(device.getIqRingBuffer(0), nullptr);

    QSignalSpy rates(&device, SIGNAL(changedSampleRate(double)));
    QMetaObject::invokeMethod(&device, "onSampleRate", Q_ARG(int, 3));
    EXPECT_TRUE(rates.isEmpty());
}

TEST(PluginInterfaceTest, SettingsEndInOneRate)
{
    PluginRig rig;
    rig.prepare();
    QSignalSpy rates(&rig.device(), SIGNAL(changedSampleRate(double)));
    rig.readSettings(); // the rate that is set already
    ASSERT_EQ(rates.size(), 1);
    EXPECT_EQ(rates.last().first().toDouble(), 96000.0);
    rig.readSettings({{"SampleRate", 3}});
    rig.readSettings();
    EXPECT_EQ(rates, (QList<QVariantList>{{96000.0}, {384000.0}, {96000.0}}));
    rates.clear();
    emit rig.manager().hideSpectrumSlopesChanged(true);
    rig.readSettings({{"SampleRate", 7}});
    auto &functions = *rig.device().getAvalibleFunctions();
    for (const double rate :
        {functions.getCurrentSampleRateRX(), functions.getCurrentSampleRateTX()})
        EXPECT_EQ(rate, 2560000.0);
    for (const double rate :
        {functions.getCurrentPanSampleRateRX(), functions.getCurrentPanSampleRateTX()})
        EXPECT_EQ(rate, 2293333.0);
    rig.device().setManager(&rig.manager()); // known already
    emit rig.manager().hideSpectrumSlopesChanged(false);
    emit rig.manager().hideSpectrumSlopesChanged(false);
    EXPECT_EQ(rates, (QList<QVariantList>{{86000.0}, {2293333.0}, {2560000.0}}));
}

TEST(PluginInterfaceTest, TakesAManagerThatComesFirstAndGivesItItsMenuAMomentLater)
{
    PluginRig rig;
    rig.device().setManager(&rig.manager());
    ASSERT_TRUE(rig.device().init(rig.bridge(), nullptr, false, true));
    EXPECT_EQ(rig.manager().deviceMenu(), nullptr);
    EXPECT_TRUE(PluginRig::waitFor([&] { return rig.manager().deviceMenu() != nullptr; }, 2000));
    ASSERT_TRUE(rig.waitForReceiver() && rig.device().open());
    rig.manager().preamp().setDb(-3.0f);
    EXPECT_EQ(rig.receiver().attenuator, 6u); // in half decibels
    rig.device().deinit();
    EXPECT_EQ(rig.manager().deviceMenu(), nullptr);
}

class RecordingTest : public testing::Test
{
protected:
    RecordingTest()
    {
        m_rig.bridge().setRecordingPath(m_folder.path());
        m_rig.prepare();
        m_spy.emplace(&m_rig.device(), SIGNAL(sWriteIQ(bool, int)));
    }

    /// What the device tells of a call.
    QList<QVariantList> told(bool state, int channel = 0)
    {
        m_spy->clear();
        m_rig.device().writeIQ(state, channel);
        return *m_spy;
    }

    int files() const { return QDir(m_folder.path()).entryList(QDir::Files).size(); }

    const QList<QVariantList> m_none, m_yes{{true, 0}}, m_no{{false, 0}};
    QTemporaryDir m_folder;
    PluginRig m_rig;
    std::optional<QSignalSpy> m_spy;
};

TEST_F(RecordingTest, IsStartedOnceAndStopped)
{
    ASSERT_TRUE(m_rig.device().open());
    EXPECT_EQ(told(true), m_no) << "no stream";
    ASSERT_TRUE(m_rig.device().start());
    EXPECT_EQ(told(true, 1), m_none);
    EXPECT_EQ(told(true), m_yes);
    EXPECT_EQ(told(true), m_none);
    EXPECT_EQ(files(), 1);
    m_rig.device().setRxFreq(0, 7.05e6);
    // Ten times as many as are looked for, however busy the machine is.
    const auto before = m_rig.receiver().samples_sent;
    ASSERT_TRUE(
        PluginRig::waitFor([&] { return m_rig.receiver().samples_sent > before + 20000; }, 5000));
    EXPECT_EQ(told(false), m_no);
    QFile file(m_folder.filePath(QDir(m_folder.path()).entryList(QDir::Files).first()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.fileName().contains("_ZephrinNANO_"));
    const QByteArray head = file.read(44 + 164);
    EXPECT_EQ(head.mid(36, 4), "auxi"); // the layout that a fresh host is set to
    EXPECT_EQ(qFromLittleEndian<qint32>(head.constData() + 44 + 32), 7050000);
    EXPECT_GT(file.size(), 10000);
}

TEST_F(RecordingTest, EndsWithItsStream)
{
    const std::pair<const char *, std::function<void(DeviceAbstract &)>> rows[] = {
        {"stop", [](auto &device) { device.stop(); }},
        {"rate",
            [this](auto &) {
                m_rig.readSettings({{"SampleRate", 3}});
            }},
    };
    for (const auto &[name, end] : rows) {
        ASSERT_TRUE(m_rig.device().start()) << name;
        ASSERT_EQ(told(true), m_yes) << name;
        PluginRig::wait(50);
        m_spy->clear();
        end(m_rig.device());
        EXPECT_EQ(*m_spy, m_no) << name;
        for (const QString &file : QDir(m_folder.path()).entryList(QDir::Files))
            QFile::remove(m_folder.filePath(file)); // its name counts seconds only
    }
}
} // namespace
