// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

namespace vr
{
/// What the chunks of a WAV recording say.
///
/// Recordings come from many programs, and some were cut short, so the sizes in the file are not
/// trusted: a "data" chunk that claims nothing, or more than is there, or after which no other
/// chunk begins, reaches to the end of the file; after a "vsdr" chunk "data" has no size field at
/// all; sizes above 4 GiB have wrapped. Samples may come in several "data" chunks with others
/// between them.
///
/// A recorder that writes its header last leaves zeros in its place when it is broken off. Such a
/// file is taken for 24-bit IQ after as many zeros as one of the layouts of this product has; its
/// rate is not known.
struct RiffHeader
{
    struct Segment
    {
        std::uint64_t offset = 0; // bytes from the start of the file
        std::uint64_t size = 0;   // bytes
    };

    std::uint16_t format = 0; ///< 1 PCM, 3 float
    std::uint16_t channels = 0;
    std::uint16_t bits = 0;
    double rateHz = 0.0;
    double frequencyHz = 0.0; ///< of zero hertz, 0 if the file does not tell
    std::string notice;       ///< what was not as it should be; empty: nothing
    std::vector<Segment> data;

    /// False with a reason in error.
    bool read(std::istream &file, std::string &error);

private:
    bool readBrokenOff(std::istream &file, std::uint64_t fileSize);
    void readChunk(const std::string &name, const std::vector<char> &body);
    void readData(
        std::istream &file, std::uint64_t offset, std::uint64_t &size, std::uint64_t fileSize);
};
} // namespace vr
