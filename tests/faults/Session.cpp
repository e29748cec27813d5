// SPDX-License-Identifier: GPL-3.0-or-later
#include "Session.h"

#include <QScopeGuard>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
constexpr int kStepMs = 5;
constexpr int kTriesToStart = 2;
constexpr int kLossMs = 2300;            // two periods of the device's watchdog
constexpr int kWorkMs = 120;             // what is set again 100 ms after a start included
constexpr std::uint64_t kFlowing = 2048; // samples

constexpr char kPage[] = "ZephrinMOptions";
} // namespace

template <typename Body>
auto Session::call(Body body)
{
    QElapsedTimer clock;
    clock.start();
    const auto note = qScopeGuard([&] { m_longestMs = std::max(m_longestMs, clock.elapsed()); });
    return body();
}

Session::Session()
{
    new QVBoxLayout(&m_page);
    QObject::connect(
        m_plugin.device, &DeviceAbstract::devClosed, &m_page, [this] { m_wasLost = true; });
    call([this] { return m_plugin.init(m_page.layout()); });
}

Session::~Session()
{
    call([this] { return m_plugin.device->deinit(); });
}

bool Session::waitFor(const std::function<bool()> &condition, int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (!call(condition)) {
        if (clock.elapsed() > ms)
            return false;
        call([] { test::runEvents(kStepMs); });
    }
    return true;
}

bool Session::flows(int ms)
{
    const std::uint64_t before = m_plugin.ledger.processedSamples();
    return waitFor([&] { return m_plugin.ledger.processedSamples() >= before + kFlowing; }, ms);
}

/// What does not flow is given the time in which the device gives up by itself.
bool Session::flowsOrIsLost(int ms)
{
    if (flows(ms))
        return true;
    waitFor([this] { return !m_plugin.device->isStart(); }, kLossMs);
    return false;
}

bool Session::listen(int searchMs, int flowMs)
{
    waitFor([this] { return m_plugin.manager->isDeviceAvailable(); }, searchMs);
    waitFor([] { return false; }, kStepMs); // it is in the device's list after a queued signal
    for (int i = 0; i < kTriesToStart && !m_plugin.device->isStart(); ++i)
        call([this] { return m_plugin.device->start(); });
    bool hasFlowed = false;
    if (m_plugin.device->isStart()) {
        hasFlowed = flowsOrIsLost(flowMs) && m_plugin.device->isStart();
        if (hasFlowed) {
            work();
            hasFlowed = flowsOrIsLost(flowMs);
        }
    }
    call([this] { return m_plugin.device->stop(); });
    call([this] { m_plugin.device->close(); });
    return hasFlowed;
}

/// All that sends something to the receiver in a running stream.
void Session::work()
{
    const auto tell = [this](QObject *object, const char *method) {
        call([&] { return QMetaObject::invokeMethod(object, method); });
    };
    call([this] {
        return m_plugin.device->setRxFreq(0, m_plugin.ledger.processedSamples() % 2 ? 7.1e6 : 60e6);
    });
    m_plugin.manager->preamp().setDb(-10);
    call([this] { m_plugin.manager->preamp().resend(); });
    for (QObject *page : m_page.children())
        if (page->inherits(kPage)) {
            // Another page than the one in the memory, or nothing would be written.
            static double correction = 0.0;
            correction += 0.5;
            call([&] {
                return QMetaObject::invokeMethod(
                    page, "userPreampCoeffChanged", Q_ARG(double, correction));
            });
            tell(page, "writeArminCalibrations");
            tell(page, "readArminCalibrations");
        }
    waitFor([] { return false; }, kWorkMs);
    static int rate = 0;
    rate = rate == 1 ? 2 : 1;
    call([this] {
        return QMetaObject::invokeMethod(m_plugin.device, "onSampleRate", Q_ARG(int, rate));
    });
}
