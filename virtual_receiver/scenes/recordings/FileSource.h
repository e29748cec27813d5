// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RiffHeader.h"
#include "SampleFormat.h"
#include "SampleSource.h"

#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace vr
{
/// An IQ recording in a file, read piece by piece.
class FileSource : public SampleSource
{
public:
    /// format: "wav" or a raw format's name, empty to take it from the file name. rateHz and
    /// frequencyHz override the header's if they are not 0; what comes of both keeps the limits of
    /// a scene (SceneLimits.h). Null with a one-line reason in error.
    static std::unique_ptr<FileSource> open(const std::string &path, std::string format,
        double rateHz, double frequencyHz, std::string &error);

    double rateHz() const override { return m_rateHz; }
    double frequencyHz() const override { return m_frequencyHz; }
    std::size_t length() const override { return m_length; }

    /// What was wrong with the file and did not keep it from being played; empty: nothing.
    const std::string &notice() const { return m_notice; }

    std::size_t read(Sample *out, std::size_t count) override;
    void seek(std::size_t sample) override;

private:
    FileSource() = default;
    std::string openWav();
    std::string openRaw(const std::string &format);
    std::size_t readSegment(Sample *out, std::size_t count);

    std::ifstream m_file;
    SampleFormat m_format = SampleFormat::S16;
    std::string m_notice;
    double m_rateHz = 0.0;
    double m_frequencyHz = 0.0;
    std::size_t m_length = 0;                    // complex samples
    std::vector<RiffHeader::Segment> m_segments; // whole samples each
    std::size_t m_segment = 0;
    std::uint64_t m_position = 0; // bytes into the segment
    std::vector<std::uint8_t> m_bytes;
};
} // namespace vr
