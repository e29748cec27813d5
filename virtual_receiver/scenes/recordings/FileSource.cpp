// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileSource.h"

#include "scenes/SceneLimits.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace vr
{
namespace
{
std::string extension(const std::string &path)
{
    std::string text = std::filesystem::path(path).extension().string();
    std::transform(
        text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text.empty() ? text : text.substr(1);
}
} // namespace

std::unique_ptr<FileSource> FileSource::open(const std::string &path, std::string format,
    double rateHz, double frequencyHz, std::string &error)
{
    std::unique_ptr<FileSource> source(new FileSource);
    if (format.empty())
        format = extension(path);
    source->m_file.open(path, std::ios::binary);
    std::string reason;
    if (!source->m_file.is_open() || std::filesystem::is_directory(path))
        reason = "cannot open the recording";
    else
        reason = format == "wav" ? source->openWav() : source->openRaw(format);

    if (rateHz != 0.0) {
        if (source->m_rateHz != 0.0 && source->m_rateHz != rateHz)
            source->m_notice += (source->m_notice.empty() ? "" : "; ")
                + ("its header has another rate than the " + std::to_string(std::llround(rateHz)))
                + " Hz that are given: " + std::to_string(std::llround(source->m_rateHz)) + " Hz";
        source->m_rateHz = rateHz;
    }
    if (frequencyHz != 0.0)
        source->m_frequencyHz = frequencyHz;
    const std::size_t sampleSize = 2 * bytesPerComponent(source->m_format);
    for (RiffHeader::Segment &segment : source->m_segments) {
        segment.size -= segment.size % sampleSize;
        source->m_length += std::size_t(segment.size / sampleSize);
    }
    if (reason.empty() && source->m_rateHz == 0.0)
        reason =
            source->m_notice + (source->m_notice.empty() ? "" : "; ") + "a sample rate is needed";
    if (reason.empty())
        reason = wrongRate(source->m_rateHz);
    if (reason.empty())
        reason = wrongFrequency(source->m_frequencyHz);
    if (reason.empty() && source->m_length == 0)
        reason = "no samples";
    if (reason.empty())
        return source;
    error = path + ": " + reason;
    return nullptr;
}

std::string FileSource::openWav()
{
    RiffHeader header;
    std::string error;
    if (!header.read(m_file, error))
        return error;
    if (header.channels != 2)
        return std::to_string(header.channels) + " channels, an IQ recording has 2";
    m_rateHz = header.rateHz;
    m_frequencyHz = header.frequencyHz;
    m_segments = header.data;
    m_notice = header.notice;
    const auto kind = std::pair(int(header.format), int(header.bits));
    if (kind == std::pair(1, 8))
        m_format = SampleFormat::U8;
    else if (kind == std::pair(1, 16))
        m_format = SampleFormat::S16;
    else if (kind == std::pair(1, 24))
        m_format = SampleFormat::S24;
    else if (kind == std::pair(1, 32))
        m_format = SampleFormat::S32;
    else if (kind == std::pair(3, 32))
        m_format = SampleFormat::F32;
    else if (kind == std::pair(3, 64))
        m_format = SampleFormat::F64;
    else
        return "WAV format " + std::to_string(kind.first) + " with " + std::to_string(kind.second)
            + " bits is not supported";
    return {};
}

std::string FileSource::openRaw(const std::string &format)
{
    const auto raw = rawFormat(format);
    if (!raw)
        return "unknown recording format \"" + format + "\" (wav, f64, f32, s16, u8)";
    m_format = *raw;
    m_file.seekg(0, std::ios::end);
    m_segments = {{0, std::uint64_t(m_file.tellg())}};
    return {};
}

std::size_t FileSource::read(Sample *out, std::size_t count)
{
    std::size_t done = 0;
    while (done < count && m_segment < m_segments.size()) {
        const std::size_t got = readSegment(out + done, count - done);
        done += got;
        if (got == 0) {
            ++m_segment;
            m_position = 0;
        }
    }
    return done;
}

std::size_t FileSource::readSegment(Sample *out, std::size_t count)
{
    const RiffHeader::Segment &segment = m_segments[m_segment];
    const std::size_t sampleSize = 2 * bytesPerComponent(m_format);
    const std::uint64_t size =
        std::min<std::uint64_t>(count * sampleSize, segment.size - m_position);
    m_bytes.resize(std::size_t(size));
    m_file.clear();
    m_file.seekg(std::streamoff(segment.offset + m_position));
    m_file.read(reinterpret_cast<char *>(m_bytes.data()), std::streamsize(size));
    const auto samples = std::size_t(m_file.gcount()) / sampleSize;
    convert(m_format, m_bytes.data(), out, samples);
    m_position += samples * sampleSize;
    return samples;
}

void FileSource::seek(std::size_t sample)
{
    std::uint64_t bytes = std::uint64_t(sample) * 2 * bytesPerComponent(m_format);
    m_segment = 0;
    while (m_segment < m_segments.size() && bytes >= m_segments[m_segment].size)
        bytes -= m_segments[m_segment++].size;
    m_position = bytes;
}
} // namespace vr
