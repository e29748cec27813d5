// SPDX-License-Identifier: GPL-3.0-or-later
#include "RiffHeader.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace vr
{
namespace
{
constexpr std::uint16_t kExtensible = 0xfffe;
constexpr std::size_t kSubFormatAt = 24;     // of an extensible "fmt "
constexpr std::size_t kAuxiFrequencyAt = 32; // two time stamps of 16 bytes stand before it
constexpr std::size_t kVsdrFrequencyAt = 40;
constexpr std::size_t kVsdrRateAt = 48;
constexpr std::uint64_t kSizeWrap = std::uint64_t(1) << 32;
constexpr std::uint32_t kLargestKnownChunk = 1u << 16;

// Where the samples begin in the layouts with an "auxi" chunk, a "vsdr" chunk, and plain.
constexpr std::uint64_t kSamplesAt[] = {216, 112, 44};
constexpr std::uint64_t kSampleSize = 6; // bytes of 24-bit IQ

template <typename Number>
Number at(const std::vector<char> &body, std::size_t offset)
{
    Number value = {};
    if (offset + sizeof value <= body.size())
        std::memcpy(&value, body.data() + offset, sizeof value);
    return value;
}

/// Whether another chunk, or the end, is there: a name of letters, digits and blanks.
bool isChunkOrEnd(std::istream &file, std::uint64_t position, std::uint64_t fileSize)
{
    constexpr std::uint64_t kHead = 8;
    if (position + kHead > fileSize)
        return true;
    char name[4] = {};
    file.clear();
    file.seekg(std::streamoff(position));
    file.read(name, sizeof name);
    return std::all_of(name, name + sizeof name,
        [](unsigned char c) { return std::isalnum(c) != 0 || c == ' ' || c == '_' || c == '-'; });
}

std::uint64_t leadingZeros(std::istream &file)
{
    std::vector<char> bytes(kSamplesAt[0]);
    file.clear();
    file.seekg(0);
    file.read(bytes.data(), std::streamsize(bytes.size()));
    bytes.resize(std::size_t(file.gcount()));
    const auto end = std::find_if(bytes.begin(), bytes.end(), [](char byte) { return byte != 0; });
    return std::uint64_t(end - bytes.begin());
}
} // namespace

bool RiffHeader::read(std::istream &file, std::string &error)
{
    *this = RiffHeader();
    file.seekg(0, std::ios::end);
    const auto fileSize = std::uint64_t(file.tellg());
    file.seekg(0);
    char head[12] = {};
    if (readBrokenOff(file, fileSize))
        return true;
    file.clear();
    file.seekg(0);
    if (!file.read(head, sizeof head) || std::memcmp(head, "RIFF", 4) != 0
        || std::memcmp(head + 8, "WAVE", 4) != 0) {
        error = "not a WAV file";
        return false;
    }
    bool sizeless = false; // the next "data" has no size field
    for (std::uint64_t position = sizeof head; position + 8 <= fileSize;) {
        char name[4];
        std::uint32_t claimed = 0;
        file.clear();
        file.seekg(std::streamoff(position));
        file.read(name, sizeof name);
        file.read(reinterpret_cast<char *>(&claimed), sizeof claimed);
        const std::string chunk(name, sizeof name);
        std::uint64_t body = position + 8;
        std::uint64_t size = claimed;
        if (chunk == "data") {
            if (sizeless)
                body -= 4;
            size = sizeless ? 0 : claimed;
            readData(file, body, size, fileSize);
        } else if (claimed <= kLargestKnownChunk) {
            std::vector<char> bytes(claimed);
            file.read(bytes.data(), std::streamsize(bytes.size()));
            bytes.resize(std::size_t(file.gcount()));
            readChunk(chunk, bytes);
            sizeless = chunk == "vsdr";
        }
        position = body + size + size % 2;
    }
    if (channels == 0 || data.empty())
        error = channels == 0 ? "no \"fmt \" chunk" : "no samples";
    return channels != 0 && !data.empty();
}

void RiffHeader::readChunk(const std::string &name, const std::vector<char> &body)
{
    if (name == "fmt ") {
        format = at<std::uint16_t>(body, 0);
        channels = at<std::uint16_t>(body, 2);
        rateHz = at<std::uint32_t>(body, 4);
        bits = at<std::uint16_t>(body, 14);
        if (format == kExtensible)
            format = at<std::uint16_t>(body, kSubFormatAt);
    } else if (name == "auxi") {
        frequencyHz = at<std::uint32_t>(body, kAuxiFrequencyAt);
    } else if (name == "vsdr") {
        frequencyHz = at<double>(body, kVsdrFrequencyAt);
        const double exactRate = at<double>(body, kVsdrRateAt);
        if (exactRate > 0.0)
            rateHz = exactRate;
    }
}

void RiffHeader::readData(
    std::istream &file, std::uint64_t offset, std::uint64_t &size, std::uint64_t fileSize)
{
    const std::uint64_t rest = fileSize - std::min(offset, fileSize);
    const bool wrapped = rest > size && (rest - size) % kSizeWrap == 0;
    if (size > rest)
        notice = "the file is shorter than its header says";
    else if (size != 0 && !wrapped && !isChunkOrEnd(file, offset + size + size % 2, fileSize))
        notice = "the file is longer than its header says";
    if (size == 0 || wrapped || !notice.empty())
        size = rest;
    if (size > 0)
        data.push_back({offset, size});
}

bool RiffHeader::readBrokenOff(std::istream &file, std::uint64_t fileSize)
{
    const std::uint64_t zeros = leadingZeros(file);
    for (const std::uint64_t offset : kSamplesAt) {
        if (zeros < offset || fileSize < offset + kSampleSize)
            continue;
        format = 1;
        channels = 2;
        bits = 24;
        data.push_back({offset, fileSize - offset});
        notice = "the header was never written: the recording was broken off";
        return true;
    }
    return false;
}
} // namespace vr
