// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/file/IQFile.h"

#include "vm_library/source/file/PackedSample.h"
#include "vm_library/source/log/Log.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <pthread.h>

namespace vm::file
{
namespace
{
constexpr unsigned int kTail = 100; // bytes that are not worth a call into the file

constexpr double kFullScale = 2147483647.0; // 2^31 - 1, when a sample is packed

// Scaling takes the largest code with an empty low byte for full scale, 2^31 - 256.
constexpr double kScaledFullScale = 2147483392.0;
constexpr double kPerFullScale = 4.656613428188971e-10;
static_assert(kPerFullScale == 1.0 / kScaledFullScale);

constexpr double kAsItIs = 1.0;                   // even the bits below the 24
constexpr double kHdsdrGain = 31.622776601683793; // 30 dB
constexpr double kWaveGain = 100.0;               // 40 dB

constexpr std::uint32_t kChannels = 2;
constexpr std::uint32_t kBitsPerChannel = 24;
constexpr std::uint32_t kBitsPerSample = kChannels * kBitsPerChannel;

constexpr const char *kOpen = "bool vm::file::IQFile::open(const QString &)";

template <std::size_t size>
void setId(char (&field)[size], const char *id)
{
    std::memcpy(field, id, size);
}

template <typename Record>
void writeRecord(QFile &file, const Record &record)
{
    file.write(reinterpret_cast<const char *>(&record), sizeof(record));
}

/// Through 64 bits, so that the conversion is defined; 0 for what is no rate or frequency at all.
std::uint32_t truncated(double hertz)
{
    const bool fits = hertz > -9e18 && hertz < 9e18; // below 2^63
    return fits ? std::uint32_t(std::int64_t(hertz)) : 0;
}

/// Ahead of what only computes, where the system lets a user's program have that. A refusal costs
/// nothing but later wake-ups under load.
void askForRealTime()
{
    const sched_param priority{.sched_priority = 1};
    pthread_setschedparam(pthread_self(), SCHED_FIFO, &priority);
}

void sleepMillisecond()
{
    timespec left{.tv_sec = 0, .tv_nsec = 1000000};
    while (nanosleep(&left, &left) == -1 && errno == EINTR) { }
}
} // namespace

IQFile::IQFile(QObject *parent) : QThread(parent)
{
    m_ring.resize(kRingBytes);
    m_packed.reserve(kRingBytes);
}

IQFile::~IQFile()
{
    close();
}

bool IQFile::open(const QString &path)
{
    if (m_open) {
        vm::log::warning(kOpen, "already opened!");
        return false;
    }
    m_file.setFileName(path);
    // On a full disk a buffer could not be emptied and would keep the header at the end out.
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        vm::log::warning(kOpen, "Failed to open file for writing!\n");
        return false;
    }
    m_start = Time::currentDateTime();
    writeHeaders();
    m_ring.clear();
    m_queue.open();
    m_gain = m_format == HDSDR ? kHdsdrGain : m_format == StandartWave ? kWaveGain : kAsItIs;
    m_open = true;
    start(QThread::InheritPriority);
    return true;
}

void IQFile::close()
{
    if (!m_open)
        return;
    m_open = false;
    wait();
}

void IQFile::setFormat(Format format)
{
    m_format = std::clamp(format, VelmoraSDR2, HDSDR);
}

bool IQFile::write(std::vector<COMPLEX> &block)
{
    if (!m_open)
        return false;
    m_packed.resize(block.size() * kPackedSampleSize);
    unsigned char *bytes = m_packed.data();
    for (const COMPLEX &sample : block) {
        storePair(bytes, truncatedPair(sample.re * kFullScale, sample.im * kFullScale));
        bytes += kPackedSampleSize;
    }
    return queue(m_packed.data(), (unsigned int)(m_packed.size()));
}

bool IQFile::write(unsigned char *bytes, unsigned int count)
{
    return m_open && queue(bytes, count);
}

/// The file thread may be late for a long time; what the ring cannot hold that long goes on from
/// here.
bool IQFile::queue(const unsigned char *bytes, unsigned int count)
{
    if (m_ring.freeCount() < std::max(count, kRingBytes / 2)) {
        const SpinLocker locker(m_sweepLock);
        m_queue.add(m_ring);
    }
    return m_ring.write(bytes, count);
}

std::size_t IQFile::waiting() const
{
    const SpinLocker locker(m_sweepLock);
    return m_queue.stored() + m_ring.count();
}

void IQFile::run()
{
    askForRealTime();
    std::vector<unsigned char> bytes;
    bytes.reserve(m_ring.capacity());
    long long dataBytes = 0;
    // The flag is read before the ring: what came in before close() is still taken.
    for (bool open = true; open;) {
        open = m_open;
        dataBytes += drain(bytes);
        if (open) {
            m_queue.populateSome();
            sleepMillisecond();
        }
    }
    m_stop = Time::currentDateTime();
    finishHeaders(dataBytes);
    m_file.seek(0);
    writeHeaders();
    m_file.close();
    m_ring.clear();
    m_queue.close();
}

/// Moves all into the file until only a tail is left in the ring. Returns how many bytes.
long long IQFile::drain(std::vector<unsigned char> &bytes)
{
    long long moved = 0;
    while (const unsigned int count = takeSweep(bytes)) {
        if (m_gain != kAsItIs)
            scale(bytes, m_gain);
        m_file.write(reinterpret_cast<const char *>(bytes.data()), count);
        moved += count;
    }
    return moved;
}

/// Takes the oldest bytes: a sweep of the queue, or else what the ring holds. Returns how many; 0
/// for a tail that stays where it is.
unsigned int IQFile::takeSweep(std::vector<unsigned char> &bytes)
{
    unsigned int count = 0;
    {
        // Looking into the queue and emptying the ring are one step, or write() could put what is
        // older into the queue in between.
        const SpinLocker locker(m_sweepLock);
        count = m_queue.oldest();
        if (count == 0) {
            count = m_ring.count();
            if (count <= kTail)
                return 0;
            bytes.resize(count);
            m_ring.read(bytes.data(), count);
            return count;
        }
    }
    bytes.resize(count);
    m_queue.copy(bytes.data(), count);
    const SpinLocker locker(m_sweepLock);
    m_queue.drop();
    return count;
}

void IQFile::scale(std::vector<unsigned char> &bytes, double gain)
{
    constexpr std::uint64_t kLowBytes = 0x000000FF000000FF;
    // The byte below the 24 of a code is whatever the sample before left there.
    std::uint64_t low = 0;
    for (std::size_t at = 0; at + kPackedSampleSize <= bytes.size(); at += kPackedSampleSize) {
        unsigned char *sample = bytes.data() + at;
        const std::uint64_t pair = loadPair(sample) | low;
        const double i = std::int32_t(pair);
        const double q = std::int32_t(pair >> 32);
        const std::uint64_t scaled = truncatedPair(i * kPerFullScale * gain * kScaledFullScale,
            q * kPerFullScale * gain * kScaledFullScale);
        storePair(sample, scaled);
        low = scaled & kLowBytes;
    }
}

void IQFile::fillWaveHeader(WaveHeader &header, long long dataBytes, Format format)
{
    const auto data = std::uint32_t(dataBytes);

    setId(header.riff, "RIFF");
    header.length = data + lengthOverhead(format);
    setId(header.wavefmt, "WAVEfmt ");
    header.formatSize = 16;
    header.formatTag = 1;
    header.channels = kChannels;
    header.sampleRate = truncated(m_sampleRate);
    header.bytesPerSecond = header.sampleRate * kBitsPerSample / 8;
    header.blockAlign = kPackedSampleSize;
    header.bitsPerSample = kBitsPerChannel;
    switch (format) {
    case VelmoraSDR2:
        setId(header.nextId, "vsdr");
        header.nextSize = sizeof(VsdrHeader);
        break;
    case StandartWave:
        setId(header.nextId, "data");
        header.nextSize = data;
        break;
    case HDSDR:
        setId(header.nextId, "auxi");
        header.nextSize = sizeof(WinradHeader);
        break;
    }
}

void IQFile::fillVsdrHeader(VsdrHeader &header)
{
    header = {.version = 1,
        .start = m_start,
        .stop = m_stop,
        .frequency = m_frequency,
        .sampleRate = m_sampleRate,
        .preamp = m_preamp};
}

void IQFile::fillWinrHeader(WinradHeader &header)
{
    header = {.start = m_start, .stop = m_stop, .frequency = truncated(m_frequency)};
}

void IQFile::finishHeaders(long long dataBytes)
{
    fillWaveHeader(m_wave, dataBytes, m_format);
    fillVsdrHeader(m_vsdr);
    fillWinrHeader(m_winrad);
    setId(m_dataHead.id, "data");
    m_dataHead.size = std::uint32_t(dataBytes);
}

/// Writes the header areas of the layout as they stand.
void IQFile::writeHeaders()
{
    writeRecord(m_file, m_wave);
    switch (m_format) {
    case VelmoraSDR2:
        writeRecord(m_file, m_vsdr);
        writeRecord(m_file, m_dataHead.id); // this layout has no size field here
        break;
    case StandartWave:
        break;
    case HDSDR:
        writeRecord(m_file, m_winrad);
        writeRecord(m_file, m_dataHead);
        break;
    }
}
} // namespace vm::file
