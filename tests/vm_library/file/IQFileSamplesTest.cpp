// SPDX-License-Identifier: GPL-3.0-or-later
#include "IQFileTest.h"

#include <limits>
#include <random>

namespace
{
using vm::file::IQFile;

constexpr double kWaveGain = 100.0;
constexpr double kHdsdrGain = 31.622776601683793;

class IQFileSamplesTest : public IQFileTest
{ };

TEST_F(IQFileSamplesTest, PacksTheUpperThreeBytesOfEachPart)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const struct
    {
        double value;
        const char *code; // as in the file
    } rows[] = {
        {0.0, "000000"},
        {1.0, "ffff7f"},
        {-1.0, "000080"},
        {-0.5, "0000c0"},
        {5e-8, "000000"},  // 107.4 of a 32-bit code
        {-5e-8, "ffffff"}, // the sign stays in the upper bytes
        {1.2e-7, "010000"},
        {1.0 + 1e-9, "000080"}, // beyond 32 bits: the most negative code
        {-1.0 - 1e-9, "000080"},
        {kInfinity, "000080"},
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

TEST_F(IQFileSamplesTest, EachLayoutHasItsGain)
{
    const struct
    {
        IQFile::Format format;
        int header;
        double gain;
    } rows[] = {
        {IQFile::VelmoraSDR2, 112, 1.0},
        {IQFile::StandartWave, 44, kWaveGain},
        {IQFile::HDSDR, 216, kHdsdrGain},
    };
    for (const auto &row : rows) {
        const QByteArray bytes = recorded(row.format, std::vector<COMPLEX>(40, {8e-3, -8e-3}));
        const auto part = [&](int at) {
            return (quint8(bytes[at]) | quint8(bytes[at + 1]) << 8 | qint8(bytes[at + 2]) * 65536)
                / 8388608.0;
        };
        const double tolerance = 2.0 * row.gain / 8388608.0; // codes of the input, lifted
        ASSERT_GT(bytes.size(), row.header + 6);
        EXPECT_NEAR(part(row.header), 8e-3 * row.gain, tolerance) << row.format;
        EXPECT_NEAR(part(row.header + 3), -8e-3 * row.gain, tolerance) << row.format;
    }
}

// Worked by hand: the 32-bit code 256 times the gain is 8095 (1f9f hex) after truncation; the 9f
// stays below the next sample, 415 times the gain is 13123 (3343), and so on.
TEST_F(IQFileSamplesTest, LowByteOfASampleReachesIntoTheNext)
{
    const QByteArray codes = QByteArray::fromHex("010000ffffff").repeated(4);
    Packed bytes(codes.begin(), codes.end());
    file.scale(bytes, kHdsdrGain);
    EXPECT_EQ(text(bytes).toHex(), QByteArray("1f0000e0ffff330000ecffff270000ebffff3c0000f7ffff"));
}

/// The scaling byte by byte, with one register a channel whose low byte nobody clears.
std::vector<unsigned char> scaledSlowly(std::vector<unsigned char> bytes, double gain)
{
    unsigned char registers[2][4] = {};
    for (std::size_t n = 0; n + 3 <= bytes.size() / 6 * 6; n += 3) {
        unsigned char *code = registers[n / 3 % 2];
        std::copy_n(&bytes[n], 3, code + 1);
        long long value = code[0] + 256LL * code[1] + 65536LL * code[2] + 16777216LL * code[3];
        if (value >= 2147483648LL)
            value -= 4294967296LL;
        double product = double(value) * 4.656613428188971e-10;
        product *= gain;
        product *= 2147483392.0;
        const bool fits = product > -2147483649.0 && product < 2147483648.0;
        const long long result = fits ? (long long)(product) : -2147483648LL;
        for (int byte = 0; byte < 4; ++byte)
            code[byte] = (unsigned char)(result >> (8 * byte));
        std::copy_n(code + 1, 3, &bytes[n]);
    }
    return bytes;
}

TEST_F(IQFileSamplesTest, ScalesAsTheSlowWayDoes)
{
    std::mt19937 random(3);
    for (const double gain : {kWaveGain, kHdsdrGain}) {
        for (const std::size_t size : {std::size_t(0), std::size_t(5), std::size_t(65536)}) {
            Packed bytes(size);
            for (std::size_t n = 0; n < size; ++n) {
                bytes[n] = (unsigned char)(random());
                if (n % 3 == 2 && random() % 4 != 0) // three of four parts stay below full scale
                    bytes[n] = random() % 2 != 0 ? 0x00 : 0xff;
            }
            const Packed expected = scaledSlowly(bytes, gain);
            file.scale(bytes, gain);
            EXPECT_TRUE(bytes == expected) << gain << " " << size;
        }
    }
}
} // namespace
