// SPDX-License-Identifier: GPL-3.0-or-later
#include "IQFileTest.h"

#include <QDateTime>
#include <QtEndian>

#include <bit>

namespace
{
using vm::file::IQFile;

constexpr int kSamples = 20;
constexpr int kDataBytes = kSamples * 6;
constexpr int kTimes = 32; // bytes of a start and a stop time
constexpr double kCode = 1.0 / 8388608.0;
constexpr COMPLEX kSample{8e-3, -8e-3};

/// Little-endian bytes of a number.
template <typename T>
QByteArray le(T value)
{
    QByteArray bytes(sizeof(T), 0);
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QByteArray le(double value)
{
    return le(std::bit_cast<quint64>(value));
}

QByteArray wave(quint32 length, const char *next, quint32 nextSize)
{
    return "RIFF" + le(length) + "WAVEfmt " + le<quint32>(16) + le<quint16>(1) + le<quint16>(2)
        + le<quint32>(3072000) + le<quint32>(18432000) + le<quint16>(6) + le<quint16>(24) + next
        + le(nextSize);
}

/// The moment that a header holds; invalid if the day of the week is another date's.
QDateTime moment(const QByteArray &bytes, int at)
{
    const auto field = [&](int index) {
        return int(qFromLittleEndian<quint16>(bytes.constData() + at + 2 * index));
    };
    const QDate date(field(0), field(1), field(3));
    return date.dayOfWeek() == field(2)
        ? QDateTime(date, QTime(field(4), field(5), field(6), field(7)))
        : QDateTime();
}

double part(const QByteArray &bytes, int at)
{
    return (quint8(bytes[at]) | quint8(bytes[at + 1]) << 8 | qint8(bytes[at + 2]) * 65536) * kCode;
}

class IQFileLayoutTest : public IQFileTest
{
protected:
    IQFileLayoutTest()
    {
        file.setSampleRate(3072000.9);
        file.setFrequency(145500000.7);
        file.setPreamp(-6.5);
    }
};

TEST_F(IQFileLayoutTest, EachLayoutHasItsHeaderByteForByteAndItsGain)
{
    const QByteArray times(kTimes, 0);
    const struct
    {
        IQFile::Format format;
        double gain;
        QByteArray header;
        int timesAt; // 0: none
    } rows[] = {
        {IQFile::VelmoraSDR2, 1.0,
            wave(kDataBytes + 100, "vsdr", 64) + le<quint32>(1) + times + le<quint32>(0)
                + le(145500000.7) + le(3072000.9) + le(-6.5) + "data",
            48},
        {IQFile::StandartWave, 100.0, wave(kDataBytes + 36, "data", kDataBytes), 0},
        {IQFile::HDSDR, 31.622776601683793,
            wave(kDataBytes + 100, "auxi", 164) + times + le<quint32>(145500000)
                + QByteArray(128, 0) + "data" + le<quint32>(kDataBytes),
            44},
    };
    for (const auto &row : rows) {
        const QDateTime before = QDateTime::currentDateTime();
        QByteArray bytes = recorded(row.format, std::vector<COMPLEX>(kSamples, kSample));
        const QDateTime after = QDateTime::currentDateTime();

        ASSERT_EQ(bytes.size(), row.header.size() + kDataBytes) << row.format;
        if (row.timesAt != 0) {
            const QDateTime start = moment(bytes, row.timesAt);
            const QDateTime stop = moment(bytes, row.timesAt + kTimes / 2);
            EXPECT_TRUE(before <= start && start <= stop && stop <= after) << row.format;
            bytes.replace(row.timesAt, kTimes, times);
        }
        EXPECT_EQ(bytes.left(row.header.size()).toHex(), row.header.toHex()) << row.format;
        const double tolerance = 2.0 * row.gain * kCode; // codes of the input, lifted
        EXPECT_NEAR(part(bytes, row.header.size()), kSample.re * row.gain, tolerance);
        EXPECT_NEAR(part(bytes, row.header.size() + 3), kSample.im * row.gain, tolerance);
    }
}

TEST_F(IQFileLayoutTest, LengthsWrapAtFourGigabytes)
{
    constexpr long long kFourGigabytes = 1LL << 32;
    const struct
    {
        IQFile::Format format;
        long long dataBytes;
        quint32 length;
        quint32 nextSize;
    } rows[] = {
        {IQFile::StandartWave, kFourGigabytes + 6, 42, 6},
        {IQFile::VelmoraSDR2, kFourGigabytes - 90, 10, 64},
        {IQFile::HDSDR, 3 * kFourGigabytes, 100, 164},
    };
    for (const auto &row : rows) {
        vm::file::WaveHeader header;
        file.fillWaveHeader(header, row.dataBytes, row.format);
        EXPECT_EQ(header.length, row.length) << row.dataBytes;
        EXPECT_EQ(header.nextSize, row.nextSize) << row.dataBytes;
    }
}
} // namespace
