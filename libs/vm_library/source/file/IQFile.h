// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "vm_library/source/containers/RingBuffer.h"
#include "vm_library/source/containers/SpinLock.h"
#include "vm_library/source/file/SweepQueue.h"
#include "vm_library/source/file/VsdrHeader.h"
#include "vm_library/source/file/WaveHeader.h"
#include "vm_library/source/file/WinradHeader.h"

#include <QFile>
#include <QMetaType>
#include <QThread>

#include <atomic>
#include <vector>

namespace vm::file
{
/// Records the IQ stream into a RIFF file of 24-bit stereo: I left, Q right, 6 bytes a sample.
///
///     COMPLEX block -> write(): pack -> byte ring (64 KiB) -> file thread: scale -> file
///                                            |                      ^
///                                            '-> queue (64 MiB) ----'
///
/// Three layouts exist; offsets in bytes:
///
///                       0       44        108   112
///     VelmoraSDR2       WAVE    vsdr      data  samples      "data" without its size field
///     StandartWave      WAVE    samples                      the head of "data" is WAVE's end
///     HDSDR             WAVE    auxi      208   216
///                                         data  samples
///
/// open() writes a placeholder of the header's length, and the file thread writes the true header
/// over it after the last sample. A recording that was cut off keeps the placeholder, and its
/// samples stand where they belong.
///
/// The ring holds 10922 samples, 3.5 ms at 3.072 MHz; the file thread looks into it every
/// millisecond. On a busy machine that millisecond takes up to fifty, and a disk takes its time, so
/// write() itself empties a ring that is more than half full into the queue. Whatever is in the
/// queue came before what is in the ring. What fits neither is refused whole.
///
/// Threads:
/// 1. The owner's: open(), close(), write() and the setters, one at a time (the engine holds the
///    object in a safe_ptr). They may come from different threads.
/// 2. File thread: run(), from open() to close().
/// isOpen() may be asked from anywhere.
class IQFile : public QThread
{
public:
    /// The layout. The numbers are stored in settings.
    enum Format : int {
        VelmoraSDR2 = 0,  // metadata chunk "vsdr"
        StandartWave = 1, // plain WAVE
        HDSDR = 2,        // metadata chunk "auxi"
    };

    /// Of a sample in the file: 24 bits each of I and Q.
    static constexpr unsigned int kSampleBytes = 6;

    /// Bytes between the owner and the file thread.
    static constexpr unsigned int kRingBytes = 65536;

    /// Bytes of a file before its samples.
    static constexpr unsigned int headerBytes(Format format)
    {
        if (format == VelmoraSDR2)
            return sizeof(WaveHeader) + sizeof(VsdrHeader) + sizeof(DataHead::id);
        if (format == HDSDR)
            return sizeof(WaveHeader) + sizeof(WinradHeader) + sizeof(DataHead);
        return sizeof(WaveHeader);
    }

    /// The records of the header, by their names in the class that writes them.
    using Time = vm::file::Time;
    using WaveHeader = vm::file::WaveHeader;
    using VsdrHeader = vm::file::VsdrHeader;
    using WinradHeader = vm::file::WinradHeader;

    /// What the length in the RIFF head counts beside the bytes of samples: the rest of WAVE after
    /// the length field, and the vsdr chunk's body. A fixed figure, whatever the layout's true
    /// length.
    static constexpr std::uint32_t lengthOverhead(Format format)
    {
        return format == StandartWave ? 36 : 100;
    }

    explicit IQFile(QObject *parent = nullptr);

    /// Closes an open recording.
    ~IQFile() override;

    /// Starts a recording in a new file, or over an old one. Returns false, with a warning and
    /// nothing changed, when a recording runs or the file cannot be written.
    bool open(const QString &path);

    /// Ends the recording and waits until the file is complete. Does nothing when closed.
    void close();

    /// True from open() until close() begins.
    bool isOpen() const { return m_open; }

    /// Sets what the header tells; it is taken at close().
    void setSampleRate(double sampleRate) { m_sampleRate = sampleRate; } // Hz
    double sampleRate() const { return m_sampleRate; }
    void setFrequency(double frequency) { m_frequency = frequency; } // Hz
    double frequency() const { return m_frequency; }
    void setPreamp(double preamp) { m_preamp = preamp; } // dB
    double preamp() const { return m_preamp; }

    /// The layout of the next recording, limited to the three. Not to be called while one runs.
    void setFormat(Format format);
    Format format() const { return m_format; }

    /// Packs a block and queues it. Returns false, and the block is lost whole, when no recording
    /// runs, when the block is empty or when there is no room for all of it. Allocates nothing
    /// up to 10922 samples.
    bool write(std::vector<COMPLEX> &block);

    /// The same for count bytes of samples that are packed already.
    bool write(unsigned char *bytes, unsigned int count);

    /// Bytes that write() has taken and the file thread has not. Owner.
    std::size_t waiting() const;

protected:
    void run() override;

    /// Multiplies packed samples by the gain, in place. Bytes beyond the last whole sample stay.
    /// What passes full scale becomes the most negative code.
    void scale(std::vector<unsigned char> &bytes, double gain);

    /// Fill a record completely. dataBytes: bytes of samples in the file; lengths keep 32 bits.
    void fillWaveHeader(WaveHeader &header, long long dataBytes, Format format);
    void fillVsdrHeader(VsdrHeader &header);
    void fillWinrHeader(WinradHeader &header);

private:
    /// Head of the chunk "data" after a metadata chunk.
    struct DataHead
    {
        char id[4] = {};
        std::uint32_t size = 0; // bytes
    };

    bool queue(const unsigned char *bytes, unsigned int count);
    unsigned int takeSweep(std::vector<unsigned char> &bytes);
    void writeHeaders();
    void finishHeaders(long long dataBytes);
    long long drain(std::vector<unsigned char> &bytes);

    // The header as it stands in the file. Between recordings it keeps what the last one ended
    // with.
    WaveHeader m_wave;
    VsdrHeader m_vsdr;
    WinradHeader m_winrad;
    DataHead m_dataHead;
    Time m_start;
    Time m_stop;

    double m_preamp = 0.0;         // dB
    double m_frequency = 0.0;      // Hz
    double m_sampleRate = 39062.5; // Hz
    Format m_format = HDSDR;
    double m_gain = 1.0; // of the whole recording, whatever layout its header will have
    QFile m_file;
    Velmora::RingBuffer<unsigned char> m_ring; // written by 1, read by 2; has a lock of its own
    std::vector<unsigned char> m_packed;
    mutable SpinLock m_sweepLock; // held by whoever takes bytes out of the ring
    SweepQueue m_queue;           // guarded by m_sweepLock, but for what 2 does by itself
    std::atomic<bool> m_open = false;
};
} // namespace vm::file

Q_DECLARE_METATYPE(vm::file::IQFile::Format)
