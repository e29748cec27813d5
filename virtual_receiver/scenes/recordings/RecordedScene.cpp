// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecordedScene.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vr
{
namespace
{
constexpr std::size_t kBlock = 1024; // output samples made at a time

// One step of the device's synthesiser: a device told the recording's own frequency ends up less
// than this below it and counts as tuned to it exactly.
constexpr double kTuningStepHz = 122.88e6 / 4294967296.0;
} // namespace

RecordedScene::RecordedScene(std::unique_ptr<SampleSource> source, bool repeat)
    : m_source(std::move(source)), m_repeat(repeat)
{ }

double RecordedScene::seconds() const
{
    return m_repeat ? 0.0 : double(m_source->length()) / m_source->rateHz();
}

double RecordedScene::position() const
{
    return isSeekable() ? double(std::min(m_rendered, m_length)) / m_rateHz : 0.0;
}

// What the filters remember glides into what comes.
void RecordedScene::seek(double seconds)
{
    const double length = double(m_source->length());
    const double sample = std::clamp(seconds * m_source->rateHz(), 0.0, length);
    m_source->seek(std::size_t(sample));
    m_rendered = std::uint64_t(double(m_length) * (sample / length));
}

void RecordedScene::setLoop(bool loop)
{
    if (loop && ended())
        seek(0.0);
    m_loop = loop;
}

void RecordedScene::start(double rateHz, double tunedHz)
{
    const double sourceHz = m_source->rateHz();
    m_source->seek(0);
    m_rateHz = rateHz;
    m_frequencyHz = m_source->frequencyHz() != 0.0 ? m_source->frequencyHz() : tunedHz;
    m_resampling = sourceHz != rateHz;
    m_rendered = 0;
    m_length = std::uint64_t(std::ceil(double(m_source->length()) * rateHz / sourceHz));
    m_inputMixer.reset();
    m_channelMixer.reset();
    if (m_resampling)
        m_rateConverter.init(sourceHz, rateHz);
    retune(tunedHz);
}

void RecordedScene::retune(double tunedHz)
{
    double offset = m_frequencyHz - tunedHz;
    if (std::fabs(offset) < kTuningStepHz)
        offset = 0.0;
    if (!m_resampling) {
        m_channelMixer.setFrequency(offset / m_rateHz);
        return;
    }
    const double sourceHz = m_source->rateHz();
    const double low = std::max(-sourceHz / 2.0, -m_rateHz / 2.0 - offset);
    const double high = std::min(sourceHz / 2.0, m_rateHz / 2.0 - offset);
    m_inBand = high > low;
    if (!m_inBand)
        return;
    const double middle = (low + high) / 2.0;
    m_inputMixer.setFrequency(-middle / sourceHz);
    m_channelMixer.setFrequency((offset + middle) / m_rateHz);
    m_rateConverter.setCutoff((high - low) / 2.0);
}

void RecordedScene::readSource(Sample *out, std::size_t count)
{
    bool rewound = false;
    while (count > 0) {
        const std::size_t got = m_source->read(out, count);
        out += got;
        count -= got;
        if (count == 0)
            return;
        // A source that gives nothing right after a rewind cannot be read any more.
        if (!isRepeating() || (rewound && got == 0))
            break;
        m_source->seek(0);
        rewound = true;
    }
    std::fill_n(out, count, Sample());
}

void RecordedScene::render(Sample *out, std::size_t count)
{
    for (std::size_t done = 0; done < count; done += kBlock)
        renderBlock(out + done, std::min(kBlock, count - done));
    m_rendered += count;
    if (isRepeating())
        m_rendered %= m_length;
}

void RecordedScene::renderBlock(Sample *out, std::size_t count)
{
    if (m_resampling) {
        m_input.resize(m_rateConverter.needed(count));
        readSource(m_input.data(), m_input.size());
        if (m_inputMixer.frequency() != 0.0)
            m_inputMixer.process(m_input.data(), m_input.size());
        m_rateConverter.push(m_input.data(), m_input.size());
        m_rateConverter.pull(out, count);
        if (!m_inBand)
            std::fill_n(out, count, Sample());
    } else {
        readSource(out, count);
    }
    if (m_channelMixer.frequency() != 0.0)
        m_channelMixer.process(out, count);
}
} // namespace vr
