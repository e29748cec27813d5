// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/AudioPlayer.h"
#include "recording/AudioRecorder.h"
#include "recording/IqStreamRecorder.h"

#include "support/FileSizeLimit.h"
#include "support/Signals.h"

#include <QDir>
#include <QMap>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <csignal>
#include <cstring>
#include <gtest/gtest.h>
#include <sndfile.h>

namespace
{
using namespace std::chrono_literals;
using host::AudioPlayer;
using host::AudioRecorder;
using host::IqStreamRecorder;
using host::Recorder;
using vm::file::IQFile;

/// Left counts up from 0, right down: every frame tells its place, exactly in 24 bits.
std::vector<float> ramp(int frames)
{
    std::vector<float> samples;
    for (int i = 0; i < frames; ++i) {
        const float value = float(i) / float(1 << 23);
        samples.insert(samples.end(), {value, -value});
    }
    return samples;
}

std::vector<float> contentOf(const QString &path)
{
    SF_INFO info{};
    SNDFILE *file = sf_open(qPrintable(path), SFM_READ, &info);
    std::vector<float> samples(1 << 20); // a file that was broken off does not tell
    samples.resize(std::size_t(sf_read_float(file, samples.data(), sf_count_t(samples.size()))));
    sf_close(file);
    return samples;
}

/// In the order of their making. The system's times of them are too coarse for that.
QStringList filesIn(const QTemporaryDir &folder)
{
    QMap<QString, QString> paths; // by name: the second, then the number in it
    for (const QFileInfo &file : QDir(folder.path()).entryInfoList(QDir::Files))
        paths[file.completeBaseName()] = file.filePath();
    return paths.values();
}

class AudioRecorderTest : public testing::TestWithParam<AudioRecorder::FileType>
{
protected:
    AudioRecorderTest() { std::signal(SIGXFSZ, SIG_IGN); }

    void push(const std::vector<float> &samples, std::size_t from = 0)
    {
        constexpr std::size_t kBlock = 2 * 500;
        for (std::size_t at = from; at < samples.size(); at += kBlock)
            recorder.push(&samples[at], std::min(kBlock, samples.size() - at) / 2);
    }

    QTemporaryDir folder;
    AudioRecorder recorder;
};

TEST_P(AudioRecorderTest, KeepsEveryFrameOverSeveralFiles)
{
    constexpr int kFrames = 100000;
    const auto samples = ramp(kFrames);
    recorder.setMostBytes(8 * 30000); // of a WAV; 40000 of a FLAC
    push(samples);                    // before the beginning
    ASSERT_TRUE(recorder.start(folder.path(), GetParam())) << qPrintable(recorder.error());
    push(samples);
    recorder.stop();
    push(samples); // after the end

    std::vector<float> content;
    const QStringList files = filesIn(folder);
    for (const QString &path : files) {
        const auto part = contentOf(path);
        EXPECT_LE(QFileInfo(path).size(), 8 * 30000 + 100);
        content.insert(content.end(), part.begin(), part.end());
    }
    EXPECT_EQ(content, samples);
    const bool isFlac = GetParam() == AudioRecorder::FileType::Flac;
    EXPECT_EQ(files.size(), isFlac ? 3 : 4);
    const Recorder::Progress &progress = recorder.progress();
    EXPECT_EQ(progress.files, files.size());
    EXPECT_EQ(progress.file, files.last());
    EXPECT_DOUBLE_EQ(progress.seconds, kFrames / 48000.0);
    EXPECT_EQ(progress.lostFrames, 0u);
    EXPECT_GT(progress.freeBytes, 0);
}

// While the disk is full, and when the file is taken away.
TEST_P(AudioRecorderTest, EndsByItselfAndKeepsWhatWasGood)
{
    constexpr int kFrames = 200000;
    const auto noise = test::noise(kFrames, /*seed*/ 3); // cannot be packed
    std::vector<float> samples;
    for (const COMPLEX &sample : noise)
        samples.insert(samples.end(), {float(sample.re), float(sample.im)});
    for (const bool isTaken : {false, true}) {
        SCOPED_TRACE(isTaken ? "taken away" : "full");
        QSignalSpy failed(&recorder, &Recorder::failed);
        ASSERT_TRUE(recorder.start(folder.path(), GetParam()));
        const QString path = recorder.progress().file;
        {
            std::optional<test::FileSizeLimit> full;
            isTaken ? void(QFile::remove(path)) : void(full.emplace(400000));
            push(samples);
            ASSERT_TRUE(failed.count() > 0 || failed.wait(20000));
        }
        EXPECT_FALSE(recorder.isRecording());
        EXPECT_TRUE(recorder.error().startsWith(path + ": ")) << qPrintable(recorder.error());
        EXPECT_EQ(failed[0][0].toString(), recorder.error());
        if (isTaken)
            continue;
        const auto content = contentOf(path);
        EXPECT_GT(content.size(), 80000u);
        for (std::size_t i = 0; i < content.size(); ++i)
            ASSERT_NEAR(content[i], samples[i], 1.0f / float(1 << 23)) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(FileTypes, AudioRecorderTest,
    testing::Values(AudioRecorder::FileType::Wav, AudioRecorder::FileType::Flac),
    [](const auto &info) { return info.param == AudioRecorder::FileType::Wav ? "wav" : "flac"; });

TEST(AudioRecorderStartTest, TellsWhyNothingCanBeWritten)
{
    AudioRecorder recorder;
    EXPECT_FALSE(recorder.start("/nowhere", AudioRecorder::FileType::Wav));
    EXPECT_TRUE(recorder.error().startsWith("/nowhere/")) << qPrintable(recorder.error());
    EXPECT_FALSE(recorder.isRecording());
}

QByteArray bytesOf(const QString &path, qint64 from)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    file.seek(from);
    return file.readAll();
}

class IqStreamRecorderTest : public testing::TestWithParam<IQFile::Format>
{
protected:
    IqStreamRecorderTest() { std::signal(SIGXFSZ, SIG_IGN); }

    void push(const std::vector<COMPLEX> &samples)
    {
        constexpr std::size_t kBlock = 512;
        for (std::size_t at = 0; at < samples.size(); at += kBlock)
            recorder.pushIq(&samples[at], int(std::min(kBlock, samples.size() - at)));
    }

    static constexpr int kSamples = 200000;
    std::vector<COMPLEX> samples = [] {
        auto quiet = test::noise(kSamples, /*seed*/ 4);
        for (COMPLEX &sample : quiet)
            sample = {sample.re * 1e-3, sample.im * 1e-3}; // two layouts have a gain
        return quiet;
    }();
    QTemporaryDir folder;
    IQRecorderConfigure where;
    IqStreamRecorder recorder;
};

/// The 24 bits that begin there.
int code(const QByteArray &bytes, int at)
{
    return int(std::uint32_t(std::uint8_t(bytes[at])) << 8
               | std::uint32_t(std::uint8_t(bytes[at + 1])) << 16
               | std::uint32_t(std::uint8_t(bytes[at + 2])) << 24)
        / 256;
}

// The same as one recording of IQFile.
TEST_P(IqStreamRecorderTest, KeepsEverySampleOverSeveralFiles)
{
    const qint64 header = IQFile::headerBytes(GetParam());
    where.path = folder.path();
    where.format = GetParam();
    recorder.setMostBytes(6 * 70000);
    ASSERT_TRUE(recorder.start(where, "Device", 96000.0, 7.1e6)) << qPrintable(recorder.error());
    push(samples);
    recorder.setFrequency(7.2e6);
    recorder.stop();
    EXPECT_TRUE(recorder.error().isEmpty()) << qPrintable(recorder.error());

    QByteArray content;
    const QStringList files = filesIn(folder);
    EXPECT_EQ(files.size(), 3);
    for (const QString &path : files) {
        QByteArray part = bytesOf(path, header);
        IQFile::WaveHeader wave;
        std::memcpy(&wave, bytesOf(path, 0).constData(), sizeof wave);
        EXPECT_EQ(wave.length, std::uint32_t(part.size()) + IQFile::lengthOverhead(GetParam()));
        EXPECT_EQ(wave.sampleRate, 96000u);
        content += part;
    }

    const QString whole = folder.filePath("whole");
    IQFile reference;
    reference.setFormat(GetParam());
    ASSERT_TRUE(reference.open(whole));
    for (std::size_t at = 0; at < samples.size(); at += 4000) {
        std::vector<COMPLEX> block(&samples[at], &samples[at] + 4000);
        while (!reference.write(block))
            std::this_thread::sleep_for(1ms);
    }
    reference.close();
    const QByteArray expected = bytesOf(whole, header);
    ASSERT_EQ(content.size(), expected.size());
    // What lies below a code before the gain depends on how the file's thread came to its bytes.
    const double largestGain = GetParam() == IQFile::VelmoraSDR2 ? 0.0 : 101.0;
    for (int i = 0; i + 2 < content.size(); i += 3)
        ASSERT_NEAR(code(content, i), code(expected, i), largestGain) << i;
}

TEST_P(IqStreamRecorderTest, EndsOnAFullDiskWithATrueHeader)
{
    where.path = folder.path();
    where.format = GetParam();
    QSignalSpy failed(&recorder, &Recorder::failed);
    ASSERT_TRUE(recorder.start(where, "Device", 48000.0, 7.1e6));
    const QString path = recorder.progress().file;
    {
        test::FileSizeLimit full(300001);
        push(samples);
        ASSERT_TRUE(failed.count() > 0 || failed.wait(20000));
    }
    EXPECT_TRUE(recorder.error().startsWith(path + ": ")) << qPrintable(recorder.error());
    const QByteArray content = bytesOf(path, 0);
    const auto bytes = std::uint32_t(content.size()) - IQFile::headerBytes(GetParam());
    IQFile::WaveHeader wave;
    std::memcpy(&wave, content.constData(), sizeof wave);
    EXPECT_EQ(wave.length, bytes + IQFile::lengthOverhead(GetParam()));
    EXPECT_EQ(bytes % 6, 0u);
    EXPECT_GT(bytes, 250000u);
}

INSTANTIATE_TEST_SUITE_P(Layouts, IqStreamRecorderTest,
    testing::Values(IQFile::VelmoraSDR2, IQFile::StandartWave, IQFile::HDSDR),
    [](const auto &info) { return "layout" + std::to_string(info.param); });

/// Pulls for that many seconds of the clock.
std::vector<float> listen(AudioPlayer &player, double seconds)
{
    std::vector<float> heard, block(2 * 1024);
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (std::chrono::steady_clock::now() < end) {
        const std::size_t frames = player.pull(block.data(), 1024);
        heard.insert(heard.end(), block.begin(), block.begin() + std::ptrdiff_t(2 * frames));
        std::this_thread::sleep_for(2ms);
    }
    return heard;
}

TEST(AudioPlayerTest, PlaysSeeksPausesAndLoops)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("a.wav");
    const auto samples = ramp(24000); // half a second
    host::AudioFile file;
    ASSERT_TRUE(file.open(path) && file.write(samples.data(), 24000) && file.close());
    AudioPlayer player;
    ASSERT_TRUE(player.open(path)) << qPrintable(player.error());
    EXPECT_EQ(player.lengthSeconds(), 0.5);

    const auto heard = listen(player, 0.2);
    ASSERT_GE(heard.size(), 2 * 4800u);
    EXPECT_TRUE(std::equal(heard.begin(), heard.end(), samples.begin()));
    EXPECT_LE(player.positionSeconds(), 0.5);

    player.setPaused(true);
    EXPECT_TRUE(listen(player, 0.05).empty());
    player.seek(0.25);
    player.setPaused(false);
    const auto second = listen(player, 0.1);
    ASSERT_FALSE(second.empty());
    EXPECT_EQ(second[0], samples[2 * 12000]);

    player.seek(0.5 - 1.0 / 48000);
    player.setLoop(true);
    const auto third = listen(player, 0.1);
    ASSERT_GE(third.size(), 4u);
    EXPECT_EQ(third[0], samples[2 * 23999]);
    EXPECT_EQ(third[2], samples[0]);

    player.setLoop(false);
    player.seek(7.0);
    EXPECT_TRUE(player.hasEnded());
    EXPECT_TRUE(listen(player, 0.05).empty());
    EXPECT_FALSE(player.open(folder.filePath("none.wav")));
    EXPECT_TRUE(player.error().startsWith(folder.filePath("none.wav")));
}
} // namespace
