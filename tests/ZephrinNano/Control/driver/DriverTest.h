// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Control/driver/HardwareZephrinNANO.h"
#include "Dsp/ZephrinMDSP.h"
#include "support/LogCapture.h"
#include "support/TestHost.h"
#include "virtual_receiver.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QRegularExpression>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

/// The driver on the virtual receiver, with a real engine.
class DriverTest : public testing::Test
{
protected:
    /// A command as the device gets it.
    struct Sent
    {
        int code;
        std::uint32_t value;
        bool operator==(const Sent &) const = default;
        friend std::ostream &operator<<(std::ostream &out, const Sent &sent)
        {
            return out << sent.code << ':' << std::hex << sent.value << std::dec;
        }
    };

    DriverTest() { resetDevice(); }

    void resetDevice()
    {
        vr_reset();
        m_read = 0;
        m_calls = 0;
    }

    /// Commands since the last call.
    std::vector<Sent> sent()
    {
        std::vector<std::uint8_t> bytes(11 * vr_get_commands(nullptr, 0));
        vr_get_commands(bytes.data(), bytes.size() / 11);
        std::vector<Sent> list;
        for (; m_read < bytes.size(); m_read += 11) {
            const std::uint8_t *p = &bytes[m_read];
            EXPECT_EQ(std::vector<std::uint8_t>(p, p + 6),
                (std::vector<std::uint8_t>{0x55, 0x55, 0x55, 0x55, 0x55, 0x01}));
            const auto word =
                std::uint32_t(p[7] | p[8] << 8 | p[9] << 16) | std::uint32_t(p[10]) << 24;
            list.push_back({p[6], word});
        }
        return list;
    }

    /// FT_ calls since the last call, without the reader's.
    QStringList calls()
    {
        QStringList all = QString(vr_get_calls()).split('\n', Qt::SkipEmptyParts);
        all = all.mid(m_calls);
        m_calls += all.size();
        return all.filter(QRegularExpression("^(?!FT_Read)"));
    }

    static vr_status device()
    {
        vr_status status;
        vr_get_status(&status);
        return status;
    }

    /// Lines of the driver alone: the engine has warnings of its own.
    QStringList warnings() const { return log.warnings().filter("HardwareZephrinNANO::"); }

    /// Runs the event loop until the condition holds; false if it does not in time.
    static bool wait(int ms, const std::function<bool()> &condition)
    {
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < ms && !condition();) {
            QEventLoop loop;
            QTimer::singleShot(5, &loop, &QEventLoop::quit);
            loop.exec();
        }
        return condition();
    }

    void open()
    {
        ASSERT_TRUE(driver.open(0));
        sent();
        calls();
    }

    test::LogCapture log;
    test::TestBridge bridge;
    std::shared_ptr<ZephrinMDSP> engine =
        std::make_shared<ZephrinMDSP>(bridge.threadPool(), bridge, nullptr);
    HardwareZephrinNANO driver{engine, nullptr};

private:
    std::size_t m_read = 0;
    int m_calls = 0;
};
