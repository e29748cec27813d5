// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/FlacFile.h"
#include "recording/Recorder.h"

#include "stream/AudioFile.h"
#include "stream/FrameSink.h"

#include "DspCore/types.h"
#include "vm_library/source/containers/CircularBuffer.h"

#include <vector>

namespace host
{
/// Keeps audio as WAV (32-bit float) or FLAC (24 bits), as it comes from the receiver: before the
/// sound card's clock, volume and mute of the loudspeaker's stream have touched it.
///
/// For a window: one recorder for each way out, added to its AudioPump once; start(), stop() and
/// the rest as Recorder tells.
///
/// Threads: push() on the pump's thread; else as Recorder tells.
class AudioRecorder : public Recorder, public FrameSink
{
    Q_OBJECT

public:
    enum class FileType { Wav, Flac };

    AudioRecorder();
    ~AudioRecorder() override { finish(); }

    /// Begins a file in that folder, named by the time. False: error() tells why.
    bool start(const QString &folder, FileType type);

    void push(const float *interleaved, std::size_t frames) override;

protected:
    bool openFile(const QString &path, QString &reason) override;
    bool writeFrames(std::uint64_t most, std::uint64_t &written, QString &reason) override;
    bool closeFile(QString &reason) override;
    std::uint64_t lostFrames() const override { return m_lostFrames; }

private:
    FileType m_type = FileType::Wav;
    AudioFile m_wav;
    FlacFile m_flac;
    CircularBuffer<COMPLEX32> m_ring; // pump to writer
    std::atomic<std::uint64_t> m_lostFrames = 0;
    std::vector<COMPLEX32> m_block; // the writer's
};
} // namespace host
