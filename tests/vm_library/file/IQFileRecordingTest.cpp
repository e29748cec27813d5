// SPDX-License-Identifier: GPL-3.0-or-later
#include "IQFileTest.h"

#include <memory>

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

TEST_F(IQFileRecordingTest, BlockThatDoesNotFitIsRefusedWhole)
{
    std::vector<COMPLEX> fits(10922, {0.25, 0.25}); // 65532 of 65536 bytes
    std::vector<COMPLEX> tooLong(10923, {0.5, 0.5});
    EXPECT_FALSE(file.write(fits)); // closed
    ASSERT_TRUE(file.open(path()));
    EXPECT_FALSE(file.write(tooLong));
    EXPECT_TRUE(file.write(fits));
    file.close();
    EXPECT_TRUE(file.isFinished());
    EXPECT_FALSE(file.write(fits));
    EXPECT_EQ(content(path()).mid(kHeader), QByteArray::fromHex("ffff1f").repeated(2 * 10922));
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

TEST_F(IQFileRecordingTest, SecondOpenIsRefusedAndTheRecordingGoesOnToADeletedRecordersEnd)
{
    std::vector<COMPLEX> block(32);
    auto recorder = std::make_unique<IQFile>();
    recorder->setFormat(IQFile::VelmoraSDR2);
    ASSERT_TRUE(recorder->open(path()));
    const test::LogCapture log;
    EXPECT_FALSE(recorder->open(path("b.wav")));
    EXPECT_TRUE(log.warned("bool vm::file::IQFile::open(const QString &) already opened!"));
    EXPECT_FALSE(QFileInfo::exists(path("b.wav")));
    EXPECT_TRUE(recorder->write(block));
    recorder.reset();
    EXPECT_EQ(content(path()).size(), kHeader + 192);
}

TEST_F(IQFileRecordingTest, PathThatCannotBeWrittenIsReportedAndTheNextOpenWorks)
{
    const test::LogCapture log;
    EXPECT_FALSE(file.open(path("no such folder/a.wav")));
    EXPECT_TRUE(log.warned(
        "bool vm::file::IQFile::open(const QString &) Failed to open file for writing!\n"));
    EXPECT_FALSE(file.isOpen());
    EXPECT_TRUE(file.open(path()));
}

TEST_F(IQFileRecordingTest, FormatIsLimitedToTheThree)
{
    for (const auto &[asked, kept] : {std::pair(-1, 0), {3, 2}}) {
        file.setFormat(IQFile::Format(asked));
        EXPECT_EQ(int(file.format()), kept);
    }
}
} // namespace
