// SPDX-License-Identifier: GPL-3.0-or-later
#include "RiffHeader.h"

#include <algorithm>
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

template <typename Number>
Number at(const std::vector<char> &body, std::size_t offset)
{
    Number value = {};
    if (offset + sizeof value <= body.size())
        std::memcpy(&value, body.data() + offset, sizeof value);
    return value;
}
} // namespace

bool RiffHeader::read(std::istream &file, std::string &error)
{
    *this = RiffHeader();
    file.seekg(0, std::ios::end);
    const auto fileSize = std::uint64_t(file.tellg());
    file.seekg(0);
    char head[12] = {};
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
            readData(body, size, fileSize);
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

void RiffHeader::readData(std::uint64_t offset, std::uint64_t &size, std::uint64_t fileSize)
{
    const std::uint64_t rest = fileSize - std::min(offset, fileSize);
    const bool wrapped = rest > size && (rest - size) % kSizeWrap == 0;
    if (size == 0 || size > rest || wrapped)
        size = rest;
    if (size > 0)
        data.push_back({offset, size});
}
} // namespace vr
