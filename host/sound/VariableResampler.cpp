// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/VariableResampler.h"

#include "stream/FrameSource.h"

#include <samplerate.h>

#include <new>

namespace host
{
namespace
{
constexpr std::size_t kChannels = FrameSource::kChannels;
constexpr std::size_t kPulledFrames = 128; // at a time: what waits in here adds to the delay
} // namespace

void VariableResampler::Delete::operator()(SRC_STATE_tag *state) const
{
    src_delete(state);
}

VariableResampler::VariableResampler(Pull pull)
    : m_pull(std::move(pull)), m_in(kPulledFrames * kChannels)
{
    int error = 0;
    m_state.reset(src_new(SRC_SINC_FASTEST, int(kChannels), &error));
    if (!m_state)
        throw std::bad_alloc(); // the only reason that there is
}

VariableResampler::~VariableResampler() = default;

void VariableResampler::clear()
{
    src_reset(m_state.get());
    m_begin = m_end = 0;
}

bool VariableResampler::refill()
{
    m_begin = 0;
    m_end = m_pull(m_in.data(), kPulledFrames);
    return m_end > 0;
}

std::size_t VariableResampler::process(float *out, std::size_t frames, double ratio)
{
    std::size_t done = 0;
    while (done < frames && (m_begin < m_end || refill())) {
        SRC_DATA data{};
        data.data_in = &m_in[m_begin * kChannels];
        data.input_frames = long(waiting());
        data.data_out = out + done * kChannels;
        data.output_frames = long(frames - done);
        data.src_ratio = ratio;
        if (src_process(m_state.get(), &data) != 0)
            break;
        m_begin += std::size_t(data.input_frames_used);
        done += std::size_t(data.output_frames_gen);
        if (data.input_frames_used == 0 && data.output_frames_gen == 0)
            break;
    }
    return done;
}
} // namespace host
