// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SampleSource.h"
#include "scenes/Mixer.h"
#include "scenes/RateConverter.h"

#include <memory>
#include <vector>

namespace vr
{
/// A recording on the air: shifted by the tuning and brought to the stream's sample rate.
///
///   equal rates:    source -> channel mixer -> out
///   other rates:    source -> input mixer -> rateConverter -> channel mixer -> out
///
/// With unequal rates the low-pass covers what the recording and the device's band have in common:
/// the input mixer moves the middle of it to zero hertz, the channel mixer moves it to where it
/// belongs. So a recording that is tuned half out of the band is cut off there and does not come
/// back at the other edge. With equal rates the samples pass bit by bit while the device is tuned
/// to the recording's own frequency; tuned elsewhere only the mixer acts and the band wraps round.
class RecordedScene : public Scene
{
public:
    RecordedScene(std::unique_ptr<SampleSource> source, bool repeat);

    void start(double rateHz, double tunedHz) override;
    void retune(double tunedHz) override;
    void render(Sample *out, std::size_t count) override;
    bool ended() const override { return !isRepeating() && m_rendered >= m_length; }
    bool isSeekable() const override { return !m_repeat; }
    void seek(double seconds) override;
    double position() const override;
    void setLoop(bool loop) override;
    double frequencyHz() const override { return m_source->frequencyHz(); }
    double widthHz() const override { return m_source->rateHz(); }
    double seconds() const override;

private:
    bool isRepeating() const { return m_repeat || m_loop; }
    void readSource(Sample *out, std::size_t count);
    void renderBlock(Sample *out, std::size_t count);

    std::unique_ptr<SampleSource> m_source;
    bool m_repeat;       // always
    bool m_loop = false; // as it is asked for

    double m_rateHz = 0.0;
    double m_frequencyHz = 0.0; // of the recording's zero hertz
    bool m_resampling = false;
    bool m_inBand = true; // false: recording and device have nothing in common
    RateConverter m_rateConverter;
    Mixer m_inputMixer;   // at the recording's rate
    Mixer m_channelMixer; // at the device's rate
    std::vector<Sample> m_input;
    std::uint64_t m_rendered = 0; // samples of this pass
    std::uint64_t m_length = 0;   // samples of one pass at the device's rate
};
} // namespace vr
