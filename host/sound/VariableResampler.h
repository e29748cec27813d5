// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

struct SRC_STATE_tag;

namespace host
{
/// Brings stereo audio to another rate whose ratio may change from block to block without a click:
/// the ratio glides over the block. libsamplerate's "fastest" sinc: flat to 80 % of the lower
/// rate's half (the receiver's audio ends at 15 kHz), the rest at least 97 dB down.
///
/// Memory is taken at construction. One thread.
class VariableResampler
{
public:
    /// Gives up to so many frames of the source, as they are there; how many it gave.
    using Pull = std::function<std::size_t(float *interleaved, std::size_t frames)>;

    explicit VariableResampler(Pull pull);
    ~VariableResampler();

    /// Forgets what has been pulled.
    void clear();

    /// Makes up to so many frames at `ratio` frames out for each frame in; fewer only where the
    /// source has no more.
    std::size_t process(float *out, std::size_t frames, double ratio);

    /// Frames pulled and not used yet.
    std::size_t waiting() const { return m_end - m_begin; }

private:
    struct Delete
    {
        void operator()(SRC_STATE_tag *state) const;
    };

    bool refill();

    Pull m_pull;
    std::unique_ptr<SRC_STATE_tag, Delete> m_state;
    std::vector<float> m_in;
    std::size_t m_begin = 0; // frames in m_in
    std::size_t m_end = 0;
};
} // namespace host
