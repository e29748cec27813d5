// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/spectrum/Spectrum.h"

#include <atomic>
#include <future>
#include <vector>

namespace test
{
/// A pool whose one worker stands until it is let go, so that posted jobs wait in its queue.
class HeldPool
{
public:
    explicit HeldPool(std::size_t queueSize = 1024)
        : m_pool({.workerCount = 1, .queueSize = queueSize})
    {
        std::promise<void> started;
        m_pool.post([this, &started] {
            started.set_value();
            m_gate.get_future().wait();
        });
        started.get_future().wait();
    }
    ~HeldPool() { letGo(); }

    void letGo()
    {
        if (!m_open.exchange(true))
            m_gate.set_value();
    }
    tp::ThreadPool &pool() { return m_pool; }

private:
    std::promise<void> m_gate;
    std::atomic<bool> m_open = false;
    tp::ThreadPool m_pool;
};

struct Lines
{
    std::vector<float> spectrum;
    std::vector<float> waterfall;
};

inline Lines read(DspCore::Spectrum &spectrum)
{
    Lines lines;
    spectrum.read(lines.spectrum, lines.waterfall);
    return lines;
}

/// Puts a block into the window and makes a frame of it here and now.
inline Lines frameOf(DspCore::Spectrum &spectrum, std::vector<COMPLEX> block)
{
    spectrum.append(block.data(), int(block.size()));
    spectrum.makeFrame();
    return read(spectrum);
}
} // namespace test
