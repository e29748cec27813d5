// SPDX-License-Identifier: GPL-3.0-or-later
#include "IQFileTest.h"

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
} // namespace
