// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include <atomic>
#include <cstdint>
#include <functional>
#include <thread>

namespace host
{
/// Keeps a stream in files, on a thread of its own: what the audio's and the IQ's recorder have in
/// common.
///
/// A file that would reach kMostBytes is completed and the next one begins with the sample after
/// its last. A recording ends by itself before the disk is full, when the disk refuses, and when
/// its file has been taken away; what is in the files by then stays, complete with their headers.
///
/// For a window: start() of the derived class and stop() for a button, recordingChanged() for its
/// look, progressed() for a line beside it, failed() for a message.
///
/// Threads: GUI, but for what says "writer". The stream's own thread only fills the ring of the
/// derived class.
class Recorder : public QObject
{
    Q_OBJECT

public:
    /// Below the 4 GiB that the sizes of a WAV can tell and old file systems can hold, by more than
    /// what lies beside the samples.
    static constexpr std::uint64_t kMostBytes = (4ull << 30) - (16ull << 20);

    /// What is left free on a disk: the system and other programs need it more.
    static constexpr std::int64_t kLeastFreeBytes = 64 << 20;

    struct Progress
    {
        QString file;                 ///< that is being written, with its path
        int files = 0;                ///< of this recording
        double seconds = 0.0;         ///< in all of them
        std::uint64_t bytes = 0;      ///< in all of them
        std::int64_t freeBytes = -1;  ///< on the disk; -1: not known
        double freeSeconds = -1.0;    ///< what that lasts for; -1: not known
        std::uint64_t lostFrames = 0; ///< that are missing, as the disk was too slow
    };

    ~Recorder() override;

    bool isRecording() const { return m_isRecording; }

    /// Completes the file. Returns when it is on the disk.
    void stop();

    /// Of the running recording, or of the last one.
    const Progress &progress() const { return m_progress; }

    /// Why the last recording could not begin or ended by itself: file and reason in one line.
    const QString &error() const { return m_error; }

    /// Another size at which the next file begins, for a disk that takes less.
    void setMostBytes(std::uint64_t bytes) { m_mostBytes = bytes; }

signals:
    void recordingChanged(bool isRecording);

    /// Four times a second, and at the end.
    void progressed(const host::Recorder::Progress &progress);

    /// The recording has ended by itself.
    void failed(const QString &text);

protected:
    struct Format
    {
        std::uint64_t bytesPerFrame = 1; ///< at most
        double framesPerSecond = 1.0;
    };

    Recorder() = default;

    /// Begins with the file at namer(), which is asked again for each further one. False: error()
    /// tells why.
    bool begin(const Format &format, std::function<QString()> namer);

    /// To be called by the destructor of the derived class.
    void finish() { stop(); }

    /// Writer, but the first one: creates the file. False with a reason.
    virtual bool openFile(const QString &path, QString &reason) = 0;

    /// Writer: moves up to so many frames out of the ring into the file, as they are there. False
    /// with a reason if the file does not take them.
    virtual bool writeFrames(std::uint64_t most, std::uint64_t &written, QString &reason) = 0;

    /// Writer: completes the file. False with a reason if it is not whole.
    virtual bool closeFile(QString &reason) = 0;

    /// Whether what comes belongs to the recording. Any thread.
    bool takes() const { return m_takes; }

    /// Frames that found no room in the ring. Any thread.
    virtual std::uint64_t lostFrames() const = 0;

private:
    void run();
    bool moveOn(QString &reason);
    bool look(QString &reason);
    void post();
    void end(int run, const QString &reason);

    std::uint64_t m_mostBytes = kMostBytes;
    bool m_isRecording = false;
    int m_run = 0; // counts the recordings: what an earlier writer says comes too late
    QString m_error;
    Progress m_progress;

    // Set before the writer begins.
    Format m_format;
    std::function<QString()> m_namer;

    // The writer's.
    Progress m_state;
    std::uint64_t m_frames = 0;       // in the present file
    std::uint64_t m_framesBefore = 0; // in those before
    std::uint64_t m_bytesBefore = 0;

    std::atomic<bool> m_takes = false;
    std::atomic<bool> m_isEnding = false;
    std::thread m_writer;
};
} // namespace host

Q_DECLARE_METATYPE(host::Recorder::Progress)
