// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/thread/jthread.h"

#include <spdlog/spdlog.h>

namespace vm::thread
{
namespace
{
// Log readers look for this line, so its text and number do not follow the source.
constexpr auto kExecSignature = "void vm::thread::jthread::exec(vm::thread::jthread::token *)";
constexpr int kExecLine = 113;
} // namespace

jthread::~jthread() = default;

void jthread::open(Priority)
{
    if (m_thread && m_thread->joinable())
        return;
    before();
    m_token.stop.exchange(0);
    m_thread = std::make_unique<std::thread>(&jthread::exec, this, &m_token);
}

void jthread::close()
{
    if (!m_thread)
        return;
    {
        // Under the mutex, so that the flag cannot change between the worker's last look at it and
        // its falling asleep: the notification would be lost and the join would never end.
        const std::lock_guard<std::mutex> guard(m_token.mutex);
        m_token.stop.exchange(1);
    }
    m_token.condition.notify_all();
    m_thread->join();
    m_thread.reset();
    after();
}

void jthread::exec(token *wakeUp)
{
    try {
        for (;;) {
            run();
            std::unique_lock<std::mutex> lock(wakeUp->mutex);
            if (wakeUp->stop)
                return;
            wakeUp->condition.wait(lock);
            if (wakeUp->stop)
                return;
        }
    } catch (...) {
        spdlog::info("{}{}", kExecSignature, kExecLine);
        wakeUp->stop.exchange(1);
        wakeUp->condition.notify_all();
    }
}
} // namespace vm::thread
