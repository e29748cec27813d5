// SPDX-License-Identifier: GPL-3.0-or-later
#include "IQFileTest.h"

#include <future>

namespace
{
using vm::file::IQFile;

constexpr int kHeader = 112; // of the layout that leaves samples as they are

class IQFileRecordingTest : public IQFileTest
{
protected:
    IQFileRecordingTest() { file.setFormat(IQFile::VelmoraSDR2); }
};

// As fast as it goes, so that the ring fills up and empties again.
TEST_F(IQFileRecordingTest, FileHoldsTheAcceptedBlocksWholeAndInOrder)
{
    constexpr unsigned int kBlock = 3072; // bytes of 512 samples
    constexpr int kBlocks = 20000;
    ASSERT_TRUE(file.open(path()));
    QByteArray expected;
    for (int n = 0; n < kBlocks; ++n) {
        Packed block(kBlock);
        for (unsigned int at = 0; at < kBlock; ++at)
            block[at] = (unsigned char)(n * 7 + at * at + (n >> 8));
        if (file.write(block.data(), kBlock))
            expected += text(block);
    }
    file.close();
    EXPECT_GT(expected.size(), 0);
    EXPECT_TRUE(content(path()).mid(kHeader) == expected);
}

TEST_F(IQFileRecordingTest, CloseWritesAllButAShortTailWhichIsNotInTheNext)
{
    const struct
    {
        unsigned int queued;
        int inFile;
    } rows[] = {{0, 0}, {96, 0}, {102, 102}, {3072, 3072}};
    for (const auto &row : rows) {
        Packed bytes(row.queued, (unsigned char)(row.queued));
        ASSERT_TRUE(file.open(path()));
        EXPECT_EQ(file.write(bytes.data(), row.queued), row.queued > 0);
        file.close();
        EXPECT_EQ(content(path()).mid(kHeader), text(bytes).left(row.inFile)) << row.queued;
    }
}

/// A recorder whose file thread does not get on until it is let go.
class HeldFileTest : public IQFileTest
{
protected:
    static constexpr unsigned int kBlock = 3072; // bytes of 512 samples

    class HeldIQFile : public OpenIQFile
    {
    public:
        void letGo() { m_gate.set_value(); }

    private:
        void run() override
        {
            m_gate.get_future().wait();
            OpenIQFile::run();
        }

        std::promise<void> m_gate;
    };

    /// Blocks one after the other, as far as they are taken. Returns their bytes.
    Packed write(HeldIQFile &file, unsigned int blocks)
    {
        Packed taken;
        for (unsigned int n = 0; n < blocks; ++n) {
            Packed block(kBlock);
            for (unsigned int at = 0; at < kBlock; ++at)
                block[at] = (unsigned char)(n * 7 + at * at + (n >> 8));
            if (file.write(block.data(), kBlock))
                taken.insert(taken.end(), block.begin(), block.end());
        }
        return taken;
    }
};

TEST_F(HeldFileTest, WhatTheRingCannotHoldIsInTheFileInEachLayout)
{
    constexpr unsigned int kBlocks = 1000; // 47 rings full
    // A block that finds more than half of the ring full sends what is there ahead as one sweep.
    constexpr std::size_t kSweep = (IQFile::kRingBytes / 2 / kBlock + 1) * kBlock;
    const struct
    {
        IQFile::Format format;
        double gain; // 0: none
    } rows[] = {{IQFile::VelmoraSDR2, 0.0}, {IQFile::StandartWave, 100.0},
        {IQFile::HDSDR, 31.622776601683793}};
    for (const auto &row : rows) {
        HeldIQFile held;
        held.setFormat(row.format);
        ASSERT_TRUE(held.open(path()));
        const Packed taken = write(held, kBlocks);
        EXPECT_EQ(taken.size(), std::size_t(kBlocks) * kBlock);
        EXPECT_EQ(held.waiting(), taken.size());
        held.letGo();
        held.close();
        QByteArray expected;
        for (std::size_t at = 0; at < taken.size(); at += kSweep) {
            Packed sweep(taken.begin() + long(at),
                taken.begin() + long(std::min(at + kSweep, taken.size())));
            if (row.gain != 0.0)
                held.scale(sweep, row.gain);
            expected += text(sweep);
        }
        EXPECT_TRUE(content(path()).mid(int(IQFile::headerBytes(row.format))) == expected)
            << row.format;
    }
}

TEST_F(HeldFileTest, BeyondTheMemoryBlocksAreRefusedWhole)
{
    constexpr std::size_t kMemory = 64 * 1024 * 1024;
    HeldIQFile held;
    held.setFormat(IQFile::VelmoraSDR2);
    ASSERT_TRUE(held.open(path()));
    const Packed taken = write(held, kMemory / kBlock + 100);
    // The last sweep did not fit, so up to one of them is free.
    EXPECT_GT(taken.size(), kMemory);
    EXPECT_LE(taken.size(), kMemory + IQFile::kRingBytes);
    held.letGo();
    held.close();
    EXPECT_TRUE(content(path()).mid(kHeader) == text(taken));
}
} // namespace
