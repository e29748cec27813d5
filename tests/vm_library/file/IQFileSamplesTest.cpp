// SPDX-License-Identifier: GPL-3.0-or-later
#include "IQFileTest.h"

#include <limits>

namespace
{
using vm::file::IQFile;

class IQFileSamplesTest : public IQFileTest
{ };

TEST_F(IQFileSamplesTest, PacksTheUpperThreeBytesOfEachPart)
{
    const struct
    {
        double value;
        const char *code; // as in the file
    } rows[] = {
        {1.0, "ffff7f"},
        {-1.0, "000080"},
        {-5e-8, "ffffff"},      // the sign stays in the upper bytes
        {1.0 + 1e-9, "000080"}, // beyond 32 bits: the most negative code
        {std::numeric_limits<double>::quiet_NaN(), "000080"},
    };
    std::vector<COMPLEX> block;
    QByteArray expected;
    for (const auto &row : rows) {
        block.push_back({row.value, 0.25});
        block.push_back({0.25, row.value});
        expected += row.code + QByteArray("ffff1fffff1f") + row.code;
    }
    block.resize(40); // more than the tail that a close drops
    EXPECT_EQ(recorded(IQFile::VelmoraSDR2, block).mid(112, expected.size() / 2).toHex(), expected);
}

// Worked by hand: the low byte of a scaled 32-bit code stays below the next sample and is scaled
// with it. What does not fit becomes the most negative code; a part of a sample at the end stays as
// it is.
TEST_F(IQFileSamplesTest, LowByteOfASampleReachesIntoTheNext)
{
    const struct
    {
        double gain;
        QByteArray codes;
        QByteArray scaled;
    } rows[] = {
        {31.622776601683793, QByteArray("010000ffffff").repeated(4),
            "1f0000e0ffff330000ecffff270000ebffff3c0000f7ffff"},
        {31.622776601683793, "ffff00010000ffff7f000080030000fdffff0102",
            "4e9f1f1f00000000800000805e0000a1ffff0102"},
        {100.0, "ffff00010000ffff7f000080030000fdffff0102",
            "9cff636400000000800000802c0100d4feff0102"},
    };
    for (const auto &row : rows) {
        const QByteArray codes = QByteArray::fromHex(row.codes);
        Packed bytes(codes.begin(), codes.end());
        file.scale(bytes, row.gain);
        EXPECT_EQ(text(bytes).toHex(), row.scaled);
    }
}
} // namespace
