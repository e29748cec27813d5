// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/AudioFile.h"

#include "stream/WavHeader.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sndfile.h>

namespace
{
using host::AudioFile;
using host::WavHeader;

/// A file as another program reads it.
class Reader
{
public:
    explicit Reader(const QString &path) : m_file(sf_open(qPrintable(path), SFM_READ, &info)) { }
    ~Reader() { sf_close(m_file); }
    std::vector<float> samples()
    {
        std::vector<float> samples(std::size_t(info.frames) * 2);
        sf_readf_float(m_file, samples.data(), info.frames);
        return samples;
    }
    SF_INFO info{};

private:
    SNDFILE *m_file;
};

class AudioFileTest : public testing::Test
{
protected:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("a.wav");
    AudioFile m_file;
};

TEST_F(AudioFileTest, KeepsEverySampleAsItIsOrInverted)
{
    const std::vector<float> audio = {0.1f, -0.2f, 1.5f, -3.0f, 1e-20f, 0.0f}; // nothing is clipped
    for (const float sign : {1.0f, -1.0f}) {
        ASSERT_TRUE(m_file.open(m_path, {44100, sign < 0.0f})) << qPrintable(m_file.error());
        EXPECT_TRUE(m_file.write(audio.data(), 2));
        EXPECT_TRUE(m_file.write(audio.data() + 4, 1));
        EXPECT_TRUE(m_file.close());

        Reader reader(m_path);
        EXPECT_EQ(reader.info.samplerate, 44100);
        EXPECT_EQ(reader.info.channels, 2);
        std::vector<float> expected = audio;
        for (float &sample : expected)
            sample *= sign;
        EXPECT_EQ(reader.samples(), expected);
    }
}

TEST_F(AudioFileTest, AFileThatIsBrokenOffTellsOfAllButTheLastSecond)
{
    const std::vector<float> second(2 * 8000, 0.25f);
    ASSERT_TRUE(m_file.open(m_path, {8000}));
    for (int i = 0; i < 3; ++i)
        m_file.write(second.data(), 8000);
    m_file.write(second.data(), 4000);
    EXPECT_EQ(Reader(m_path).info.frames, 3 * 8000);
}

TEST(WavHeaderTest, OtherProgramsFindAllFramesOnBothSidesOf4GiB)
{
    constexpr std::uint64_t kSmallest64 = (0xffffffff - sizeof(WavHeader) + 8 + 7) / 8;
    const std::pair<std::uint64_t, int> cases[] = {
        {0, SF_FORMAT_WAV}, {kSmallest64 - 1, SF_FORMAT_WAV}, {kSmallest64, SF_FORMAT_RF64},
        {700'000'000, SF_FORMAT_RF64}, // 5.2 GiB, 4 h
    };
    const QTemporaryDir folder;
    for (const auto &[frames, format] : cases) {
        QFile file(folder.filePath("a.wav"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        const WavHeader header(48000, frames);
        file.write(reinterpret_cast<const char *>(&header), sizeof header);
        // The samples are a hole, which takes no room on the disk.
        ASSERT_TRUE(file.resize(qint64(sizeof header + frames * WavHeader::kBytesPerFrame)));
        file.close();
        const Reader reader(file.fileName());
        EXPECT_EQ(reader.info.format, format | SF_FORMAT_FLOAT) << frames;
        EXPECT_EQ(std::uint64_t(reader.info.frames), frames);
    }
}
} // namespace
