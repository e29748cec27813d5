// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/AudioFile.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sndfile.h>

namespace
{
TEST(AudioFileTest, KeepsEverySampleAsItIs)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("a.wav");
    const std::vector<float> first = {0.1f, -0.2f, 1.5f, -3.0f}; // nothing is clipped
    const std::vector<float> second = {1e-20f, 0.0f};

    host::AudioFile file;
    ASSERT_TRUE(file.open(path)) << qPrintable(file.error());
    EXPECT_TRUE(file.write(first.data(), 2));
    EXPECT_TRUE(file.write(second.data(), 1));
    EXPECT_TRUE(file.close());

    SF_INFO info{};
    SNDFILE *reader = sf_open(qPrintable(path), SFM_READ, &info);
    ASSERT_TRUE(reader);
    EXPECT_EQ(info.samplerate, 48000);
    EXPECT_EQ(info.channels, 2);
    EXPECT_EQ(info.format, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    ASSERT_EQ(info.frames, 3);
    std::vector<float> read(6);
    sf_readf_float(reader, read.data(), 3);
    sf_close(reader);
    EXPECT_EQ(read, (std::vector<float>{0.1f, -0.2f, 1.5f, -3.0f, 1e-20f, 0.0f}));
}

TEST(AudioFileTest, NamesAFileThatCannotBeMade)
{
    host::AudioFile file;
    EXPECT_FALSE(file.open("/no/such/folder/a.wav"));
    EXPECT_TRUE(file.error().startsWith("/no/such/folder/a.wav: "));
    EXPECT_FALSE(file.error().contains('\n'));
}
} // namespace
