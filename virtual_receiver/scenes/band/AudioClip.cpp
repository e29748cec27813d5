// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioClip.h"

#include "scenes/RateConverter.h"
#include "scenes/SceneLimits.h"

#include <algorithm>
#include <cmath>
#include <sndfile.h>

namespace vr
{
namespace
{
constexpr double kCutoffHz = 6000.0;
constexpr double kTransitionHz = 2000.0;
constexpr double kMaxSeconds = 900.0;
constexpr std::size_t kReadFrames = 4096;
constexpr std::size_t kActivityBlock = 960; // 20 ms: a short vowel
constexpr double kActivity = 0.1;           // of the loudest block's level: -20 dB

std::vector<float> bandLimited(const std::vector<float> &in, double rateHz)
{
    RateConverter rateConverter;
    rateConverter.init(rateHz, kAudioRateHz, kTransitionHz / std::min(rateHz, kAudioRateHz));
    rateConverter.setCutoff(std::min(kCutoffHz, rateHz / 2.0));
    std::vector<float> out(std::size_t(double(in.size()) * kAudioRateHz / rateHz));
    std::vector<Sample> input;
    std::vector<Sample> output(4096);
    std::size_t read = 0;
    for (std::size_t done = 0; done < out.size(); done += output.size()) {
        const std::size_t count = std::min(output.size(), out.size() - done);
        input.assign(rateConverter.needed(count), Sample());
        for (std::size_t i = 0; i < input.size() && read < in.size(); ++i)
            input[i] = in[read++];
        rateConverter.push(input.data(), input.size());
        rateConverter.pull(output.data(), count);
        for (std::size_t i = 0; i < count; ++i)
            out[done + i] = float(output[i].real());
    }
    return out;
}

/// The mean of all channels. Memory is taken for what comes out of the file, not for what its
/// header announces.
std::vector<float> readMono(SNDFILE *file, const SF_INFO &info)
{
    const auto most = std::size_t(kMaxSeconds * info.samplerate);
    const auto channels = std::size_t(info.channels);
    std::vector<float> mono;
    std::vector<float> interleaved(kReadFrames * channels);
    while (mono.size() < most) {
        const std::size_t wanted = std::min(kReadFrames, most - mono.size());
        const sf_count_t got = sf_readf_float(file, interleaved.data(), sf_count_t(wanted));
        if (got <= 0)
            break;
        for (std::size_t i = 0; i < std::size_t(got); ++i) {
            float sum = 0.0f;
            for (std::size_t c = 0; c < channels; ++c)
                sum += interleaved[i * channels + c] / float(channels);
            mono.push_back(sum);
        }
    }
    return mono;
}

double measureActiveRms(const std::vector<float> &samples)
{
    std::vector<double> powers;
    for (std::size_t begin = 0; begin < samples.size(); begin += kActivityBlock) {
        const std::size_t end = std::min(begin + kActivityBlock, samples.size());
        double sum = 0.0;
        for (std::size_t i = begin; i < end; ++i)
            sum += double(samples[i]) * samples[i];
        powers.push_back(sum / double(end - begin));
    }
    const double loudest = *std::max_element(powers.begin(), powers.end());
    double sum = 0.0;
    std::size_t active = 0;
    for (double power : powers) {
        if (power < loudest * kActivity * kActivity)
            continue;
        sum += power;
        ++active;
    }
    return std::sqrt(sum / double(active));
}
} // namespace

std::shared_ptr<const AudioClip> AudioClip::make(const std::vector<float> &samples, double rateHz)
{
    auto clip = std::make_shared<AudioClip>();
    clip->samples = bandLimited(samples, rateHz);
    if (clip->samples.empty())
        clip->samples.assign(1, 0.0f);
    float peak = 0.0f;
    for (float sample : clip->samples)
        peak = std::max(peak, std::fabs(sample));
    for (float &sample : clip->samples)
        sample /= peak > 0.0f ? peak : 1.0f;
    clip->activeRms = measureActiveRms(clip->samples);
    return clip;
}

std::shared_ptr<const AudioClip> AudioClip::load(const std::string &path, std::string &error)
{
    SF_INFO info = {};
    const std::unique_ptr<SNDFILE, int (*)(SNDFILE *)> file(
        sf_open(path.c_str(), SFM_READ, &info), sf_close);
    if (!file) {
        error = "cannot read audio file " + path;
        return nullptr;
    }
    if (const std::string reason = wrongRate(info.samplerate); !reason.empty()) {
        error = reason + ", in audio file " + path;
        return nullptr;
    }
    const std::vector<float> mono = readMono(file.get(), info);
    if (mono.empty()) {
        error = "no samples in audio file " + path;
        return nullptr;
    }
    return make(mono, info.samplerate);
}
} // namespace vr
