// SPDX-License-Identifier: GPL-3.0-or-later
// IQ recordings of any layout and raw scenes: as the virtual receiver plays them, and as the host
// mends the header of one of its own.
#include "FuzzInput.h"
#include "MemoryFile.h"
#include "scenes/recordings/FileSource.h"
#include "scenes/recordings/RecordedScene.h"
#include "stream/IqFileRepair.h"

#include <array>

namespace
{
using fuzz::require;

constexpr std::size_t kPiece = 300; // samples

/// Between these the filter of another rate is designed in well below a millisecond.
constexpr double kDeviceHz = 48000.0;
constexpr double kLowestHz = 24000.0;
constexpr double kHighestHz = 96000.0;

void readAll(vr::FileSource &source)
{
    std::array<vr::Sample, kPiece> samples;
    std::size_t count = 0;
    while (const std::size_t got = source.read(samples.data(), samples.size()))
        count += got;
    require(count <= source.length(), "a pass is not longer than it was said to be");
    for (const std::size_t from : {source.length(), source.length() / 2, std::size_t(0)}) {
        source.seek(from);
        require(source.read(samples.data(), samples.size()) <= source.length() - from,
            "what follows a place ends with the recording");
    }
}

void play(std::unique_ptr<vr::FileSource> source, double tunedHz, bool loop)
{
    std::array<vr::Sample, kPiece> samples;
    const double rate = source->rateHz();
    const bool isNear = rate >= kLowestHz && rate <= kHighestHz;
    vr::RecordedScene scene(std::move(source), false);
    scene.setLoop(loop);
    scene.start(isNear ? kDeviceHz : rate, tunedHz);
    scene.render(samples.data(), samples.size());
    scene.seek(scene.seconds() / 2.0);
    scene.retune(tunedHz + rate / 3.0);
    scene.render(samples.data(), samples.size());
    require(scene.position() >= 0.0 && scene.position() <= scene.seconds() + 1.0,
        "the place is within the recording");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static fuzz::MemoryFile file;
    constexpr std::array kFormats = {"wav", "wav", "wav", "f64", "f32", "s16", "u8", "mp3"};
    constexpr std::array kRates = {0.0, 0.0, 48000.0, 44100.0, 1e-3, 1e9};
    constexpr std::array kFrequencies = {0.0, 7.1e6, 900e6};
    fuzz::Input input(data, size);
    const std::string format = kFormats[input.below(kFormats.size())];
    const double rate = kRates[input.below(kRates.size())];
    const double frequency = kFrequencies[input.below(kFrequencies.size())];
    const bool loop = input.flag();
    const auto layout = vm::file::IQFile::Format(input.below(3));
    require(file.set(input.bytes(input.size())), "the file is written");

    std::string error;
    auto source = vr::FileSource::open(file.path(), format, rate, frequency, error);
    require(bool(source) == error.empty(), "a refusal has a reason");
    if (source) {
        readAll(*source);
        play(std::move(source), frequency, loop);
    }
    const QString path = QString::fromStdString(file.path());
    if (const auto samples = host::IqFileRepair::repair(path, layout))
        require(host::IqFileRepair::repair(path, layout) == samples, "what is mended stays so");
    return 0;
}
