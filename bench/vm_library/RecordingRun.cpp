// SPDX-License-Identifier: GPL-3.0-or-later
// A recording in real time on a busy machine: samples come as the receiver's reads bring them, some
// blocks at once, and the file is compared with them byte by byte.
//
//   recording_run [--seconds S] [--rate HZ] [--busy N] [--folder DIR]
#include "host_interfaces/EngineLimits.h"
#include "vm_library/source/file/IQFile.h"
#include "vm_library/source/file/PackedSample.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

namespace
{
using vm::file::IQFile;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kBlock = EngineLimits::kBlock;
// One read at the highest rate, in whole blocks.
constexpr std::size_t kBurst = 10;

/// A sample whose code in the file is the number: I its lower 23 bits, Q the bits above.
COMPLEX numbered(std::uint64_t number)
{
    constexpr double kFullScale = 2147483647.0; // of the packing
    const auto part = [](std::uint64_t code) { return double((code & 0x7FFFFF) << 8 | 0x80); };
    return {part(number) / kFullScale, part(number >> 23) / kFullScale};
}

void store(unsigned char *bytes, std::uint64_t number)
{
    vm::file::storePair(bytes, (number & 0x7FFFFF) << 8 | (number >> 23 & 0x7FFFFF) << 40);
}

/// Writes for so long. Returns the first samples of the blocks that were taken.
struct Written
{
    std::vector<std::uint64_t> blocks;
    std::uint64_t refused = 0;
    double latestMs = 0.0; // that a burst came after its time
};

Written write(IQFile &file, double rateHz, double seconds)
{
    Written written;
    const auto blocks = std::uint64_t(seconds * rateHz / double(kBlock));
    written.blocks.reserve(blocks);
    std::vector<COMPLEX> block(kBlock);
    const auto start = Clock::now();
    for (std::uint64_t n = 0; n < blocks; ++n) {
        if (n % kBurst == 0) {
            const std::chrono::duration<double> due(double((n + kBurst) * kBlock) / rateHz);
            const auto at = start + std::chrono::duration_cast<Clock::duration>(due);
            std::this_thread::sleep_until(at);
            const std::chrono::duration<double, std::milli> late = Clock::now() - at;
            written.latestMs = std::max(written.latestMs, late.count());
        }
        for (std::size_t i = 0; i < kBlock; ++i)
            block[i] = numbered(n * kBlock + i);
        if (file.write(block))
            written.blocks.push_back(n * kBlock);
        else
            ++written.refused;
    }
    return written;
}

/// Whether the file holds these blocks, whole and in order, and nothing else but the tail that
/// every recording drops.
bool holds(const QString &path, const std::vector<std::uint64_t> &blocks)
{
    constexpr qint64 kBlockBytes = qint64(kBlock * vm::file::kPackedSampleSize);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)
        || file.size()
            != IQFile::headerBytes(IQFile::VelmoraSDR2) + qint64(blocks.size()) * kBlockBytes)
        return false;
    file.seek(IQFile::headerBytes(IQFile::VelmoraSDR2));
    std::vector<unsigned char> expected(kBlockBytes), found(kBlockBytes);
    for (const std::uint64_t first : blocks) {
        for (std::size_t i = 0; i < kBlock; ++i)
            store(expected.data() + i * vm::file::kPackedSampleSize, first + i);
        file.read(reinterpret_cast<char *>(found.data()), kBlockBytes);
        if (found != expected)
            return false;
    }
    return true;
}
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{"seconds", "Length of the recording.", "S", "60"},
        {"rate", "Sample rate in hertz.", "HZ", "3072000"},
        {"busy", "Threads that take the processor away.", "N", "2"},
        {"folder", "Where the file goes; it is deleted.", "DIR", "."}});
    parser.addHelpOption();
    parser.process(application);

    std::atomic<bool> ended = false;
    std::vector<std::thread> busy;
    for (int n = 0; n < parser.value("busy").toInt(); ++n)
        busy.emplace_back([&ended] {
            while (!ended) { }
        });
    const QTemporaryDir folder(parser.value("folder") + "/recording");
    const QString path = folder.filePath("a.wav");
    IQFile file;
    file.setFormat(IQFile::VelmoraSDR2);
    const bool isOpen = file.open(path);
    const Written written =
        write(file, parser.value("rate").toDouble(), parser.value("seconds").toDouble());
    const auto closing = Clock::now();
    file.close();
    const std::chrono::duration<double, std::milli> closed = Clock::now() - closing;
    ended = true;
    for (std::thread &thread : busy)
        thread.join();

    const bool isWhole = isOpen && holds(path, written.blocks);
    std::printf(
        "%zu blocks taken, %llu refused, bursts up to %.1f ms late, close %.1f ms, file %s\n",
        written.blocks.size(), static_cast<unsigned long long>(written.refused), written.latestMs,
        closed.count(), isWhole ? "exact" : "WRONG");
    return isWhole && written.refused == 0 ? 0 : 1;
}
