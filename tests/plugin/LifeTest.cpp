// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRig.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QSignalSpy>
#include <QTimer>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <future>

namespace
{
using test::PluginRig;

bool isMapped(const QByteArray &library)
{
    QFile maps("/proc/self/maps");
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(library);
}

TEST(PluginFileTest, ShowsTheLoadersEntryPointsOnlyAndTellsWhatItIs)
{
    QProcess nm;
    nm.start("nm", {"-D", "-j", "--defined-only", ZEPHRIN_PLUGIN_FILE});
    ASSERT_TRUE(nm.waitForFinished());
    EXPECT_EQ(nm.readAllStandardOutput(), "qt_plugin_instance\nqt_plugin_query_metadata\n");

    const QJsonObject all = QPluginLoader(ZEPHRIN_PLUGIN_FILE).metaData();
    EXPECT_EQ(all["IID"].toString(), "Velmora.VelmoraSDR2.plugin");
    EXPECT_EQ(all["className"].toString(), "ZephrinMInterface");
    const QJsonObject own = all["MetaData"].toObject();
    EXPECT_EQ(own["name"].toString(), "ZephrinNano");
    EXPECT_EQ(own["version"].toString(), "0.0.1");
    EXPECT_TRUE(own["dependencies"].isArray() && own["dependencies"].toArray().isEmpty());
}

TEST(PluginLifeTest, ManyLivesLeaveNothingBehind)
{
    constexpr int kWarmUp = 5; // caches of Qt, FFTW and the C library fill
    constexpr int kLives = 15;
    constexpr long kGrowthKiB = 256;
    int threads = 0;
    long memory = 0;
    for (int life = 0; life < kLives; ++life) {
        {
            PluginRig rig;
            rig.start();
            PluginRig::wait(20);
            rig.device().stop();
            rig.device().deinit();
            ASSERT_TRUE(rig.unload());
        }
        ASSERT_FALSE(isMapped("libZephrinNano.so")) << "life " << life;
        if (life == kWarmUp) {
            threads = test::threadCount();
            memory = test::allocatedKiB();
        }
    }
    EXPECT_EQ(test::threadCount(), threads);
    EXPECT_LT(test::allocatedKiB() - memory, kGrowthKiB);
}

/// What a host can do while a change of rate waits for the stream to restart.
struct Meanwhile
{
    const char *name;
    void (*act)(PluginRig &rig);
    bool isOpen; // afterwards
    bool isStart;
    QList<QVariantList> rates; // told
};

void PrintTo(const Meanwhile &row, std::ostream *out)
{
    *out << row.name;
}

void changeRate(PluginRig &rig, int index)
{
    ASSERT_TRUE(QMetaObject::invokeMethod(&rig.device(), "onSampleRate", Q_ARG(int, index)));
}

class ChangeOfRate : public testing::TestWithParam<Meanwhile>
{ };

TEST_P(ChangeOfRate, LeavesTheLastWordToTheHost)
{
    const Meanwhile &row = GetParam();
    PluginRig rig;
    rig.start();
    QSignalSpy rates(&rig.device(), SIGNAL(changedSampleRate(double)));
    QTimer::singleShot(30, [&] { row.act(rig); });
    changeRate(rig, 4);
    EXPECT_EQ(rates, row.rates);
    EXPECT_EQ(rig.device().isOpen(), row.isOpen);
    EXPECT_EQ(rig.device().isStart(), row.isStart);
    EXPECT_EQ(rig.receiver().streaming, row.isStart);
}

INSTANTIATE_TEST_SUITE_P(Calls, ChangeOfRate,
    testing::Values(Meanwhile{"Nothing", [](PluginRig &) {}, true, true, {{768000.0}}},
        Meanwhile{"Stop", [](PluginRig &rig) { rig.device().stop(); }, true, false, {{768000.0}}},
        Meanwhile{
            "Close", [](PluginRig &rig) { rig.device().close(); }, false, false, {{768000.0}}},
        Meanwhile{"Deinit", [](PluginRig &rig) { rig.device().deinit(); }, false, false, {}},
        Meanwhile{"Another", [](PluginRig &rig) { changeRate(rig, 2); }, true, true, {{192000.0}}}),
    [](const auto &info) { return std::string(info.param.name); });

/// Jobs of the panorama wait in a pool whose workers are taken up by something else.
TEST(PluginLifeTest, APoolThatStandsStillHoldsNobodyUp)
{
    std::promise<void> gate;
    const auto open = gate.get_future().share();
    PluginRig rig;
    rig.prepare();
    for (std::size_t worker = 0; worker < rig.bridge().threadPool().workerCount(); ++worker)
        rig.bridge().threadPool().post([open] { open.wait(); });
    ASSERT_TRUE(rig.device().start());
    PluginRig::wait(200);
    rig.device().stop();
    QElapsedTimer clock;
    clock.start();
    rig.device().deinit();
    EXPECT_LT(clock.elapsed(), 5000);
    rig.unload();
    EXPECT_TRUE(isMapped("libZephrinNano.so")) << "the jobs are code of the plugin";
    gate.set_value();
}

TEST(PluginLifeTest, TheHostsWindowAndServicesMayGoFirst)
{
    PluginRig rig;
    {
        QWidget window;
        QVBoxLayout layout(&window);
        ASSERT_TRUE(rig.device().init(rig.bridge(), &layout, false, true));
        rig.device().setManager(&rig.manager());
        ASSERT_TRUE(rig.waitForReceiver());
    }
    EXPECT_FALSE(rig.device().start()); // without the page no device is chosen
    rig.readSettings();
    rig.loseHost();
    rig.device().deinit();
    EXPECT_TRUE(rig.unload());
}
} // namespace
