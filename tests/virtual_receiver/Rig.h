// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "d2xx/ftd2xx.h"
#include "virtual_receiver.h"

#include <QTemporaryDir>

#include <cstdint>
#include <string>
#include <vector>

namespace test
{
constexpr double kRatesHz[9] = {
    48000, 96000, 192000, 384000, 768000, 1536000, 1920000, 2560000, 3072000};
constexpr std::size_t kFrameSize = 512;

std::vector<std::uint8_t> command(std::uint8_t code, std::uint32_t value);

/// Tuning word of a frequency.
std::uint32_t frequencyWord(double hertz);

/// State word of a stream, and of no stream.
std::uint32_t streaming(unsigned rateCode, bool shortSamples = false);

/// A stream frame taken apart by the layout alone.
struct Frame
{
    std::uint16_t peakWord = 0;
    std::vector<std::int32_t> codes; // I, Q, I, Q...
};
Frame decode(const std::uint8_t *bytes, bool shortSamples = false);

/// The virtual receiver, reset at either end of its life, open in sync FIFO mode with a read
/// timeout of 200 ms at the free pace.
class Rig
{
public:
    Rig();
    ~Rig() { vr_reset(); }

    FT_HANDLE handle() const { return m_handle; }
    FT_STATUS write(std::vector<std::uint8_t> bytes);
    void send(std::uint8_t code, std::uint32_t value);
    void tune(double hertz) { send(1, frequencyWord(hertz)); }
    void stream(unsigned rateCode, bool shortSamples = false);
    void stop() { send(2, 0); }

    /// Bytes of one read; fewer than asked after a timeout. Fails the test on a bad status.
    std::vector<std::uint8_t> read(std::size_t bytes);
    std::vector<Frame> frames(std::size_t count, bool shortSamples = false);

    /// Samples of 24-bit frames, the largest code as 1.0; at least count, cut to count.
    std::vector<COMPLEX> samples(std::size_t count);

    vr_status status() const;

private:
    FT_HANDLE m_handle = nullptr;
};

/// A folder for one test's files, removed afterwards.
class TemporaryFolder
{
public:
    std::string file(const std::string &name) const
    {
        return m_folder.filePath(QString::fromStdString(name)).toStdString();
    }
    std::string write(const std::string &name, const std::string &content) const;

private:
    QTemporaryDir m_folder;
};
} // namespace test
