// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/Recorder.h"

#include <QDir>
#include <QFileInfo>

#include <chrono>
#include <filesystem>

namespace host
{
namespace
{
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kIdle = 2ms;
constexpr auto kLook = 250ms;

// Room that is left to a file that grows at full speed between two looks.
constexpr double kLeastFreeSeconds = 2.0;

/// Beside a file of that name the next one gets a number.
QString freeName(const QString &path)
{
    const QFileInfo wanted(path);
    QString name = path;
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = wanted.dir().filePath(
            QString("%1-%2.%3").arg(wanted.completeBaseName()).arg(number).arg(wanted.suffix()));
    return name;
}
/// The reason with the file in front, if it is not there yet.
QString named(const QString &file, const QString &reason)
{
    return reason.startsWith(file) ? reason : file + ": " + reason;
}
} // namespace

Recorder::~Recorder() = default;

bool Recorder::begin(const Format &format, std::function<QString()> namer)
{
    stop();
    m_error.clear();
    m_format = format;
    m_namer = std::move(namer);
    m_state = {};
    m_frames = m_framesBefore = m_bytesBefore = 0;
    QString reason;
    m_state.file = freeName(m_namer());
    if (!openFile(m_state.file, reason) || !look(reason)) {
        m_error = named(m_state.file, reason);
        return false;
    }
    m_state.files = 1;
    m_progress = m_state;
    m_isEnding = false;
    m_isRecording = true;
    m_takes = true;
    ++m_run;
    m_writer = std::thread([this] { run(); });
    emit recordingChanged(true);
    emit progressed(m_progress);
    return true;
}

void Recorder::stop()
{
    m_takes = false;
    m_isEnding = true;
    if (!m_writer.joinable())
        return;
    m_writer.join();
    // What the writer said last has been queued; it is true now.
    m_progress = m_state;
    if (!m_isRecording)
        return;
    m_isRecording = false;
    emit progressed(m_progress);
    emit recordingChanged(false);
}

void Recorder::run()
{
    QString reason;
    bool isGood = true;
    auto nextLook = Clock::now() + kLook;
    for (bool isEnding = false; isGood && !isEnding;) {
        isEnding = m_isEnding; // what came before is still taken
        std::uint64_t written = 0;
        do {
            const std::uint64_t room = m_mostBytes / m_format.bytesPerFrame - m_frames;
            isGood = writeFrames(room, written, reason);
            m_frames += written;
            if (isGood && written == room)
                isGood = moveOn(reason);
            if (isGood && Clock::now() >= nextLook) {
                isGood = look(reason);
                post();
                nextLook = Clock::now() + kLook;
            }
        } while (isGood && written > 0);
        if (isGood && !isEnding)
            std::this_thread::sleep_for(kIdle);
    }
    m_takes = false;
    const QString file = m_state.file;
    QString closing;
    if (!closeFile(closing) && reason.isEmpty())
        reason = closing;
    QString ignored;
    look(ignored);
    if (!reason.isEmpty())
        QMetaObject::invokeMethod(
            this, [this, run = m_run, text = named(file, reason)] { end(run, text); });
}

/// To the next file; what comes meanwhile waits in the ring.
bool Recorder::moveOn(QString &reason)
{
    if (!closeFile(reason))
        return false;
    m_bytesBefore += std::uint64_t(QFileInfo(m_state.file).size());
    m_framesBefore += m_frames;
    m_frames = 0;
    m_state.file = freeName(m_namer());
    ++m_state.files;
    return openFile(m_state.file, reason);
}

/// Brings the state up to date. False if it is better to end.
bool Recorder::look(QString &reason)
{
    const QFileInfo file(m_state.file);
    m_state.seconds = double(m_framesBefore + m_frames) / m_format.framesPerSecond;
    m_state.bytes = m_bytesBefore + std::uint64_t(file.size());
    m_state.lostFrames = lostFrames();
    std::error_code error; // the system itself is asked; a list of mounts may not have the folder
    const auto disk = std::filesystem::space(QFile::encodeName(file.path()).toStdString(), error);
    m_state.freeBytes = error ? -1 : std::int64_t(disk.available);
    if (!file.exists()) {
        reason = tr("the file has been taken away");
        return false;
    }
    const double bytesPerSecond = double(m_format.bytesPerFrame) * m_format.framesPerSecond;
    const double spare = double(m_state.freeBytes - kLeastFreeBytes);
    if (m_state.freeBytes >= 0) {
        m_state.freeSeconds = std::max(0.0, spare / bytesPerSecond);
        if (m_state.freeSeconds < kLeastFreeSeconds) {
            reason = tr("the disk is full");
            return false;
        }
    }
    return true;
}

void Recorder::post()
{
    QMetaObject::invokeMethod(this, [this, run = m_run, state = m_state] {
        if (!m_isRecording || run != m_run)
            return;
        m_progress = state;
        emit progressed(m_progress);
    });
}

void Recorder::end(int run, const QString &reason)
{
    if (!m_isRecording || run != m_run)
        return;
    m_error = reason;
    stop();
    emit failed(reason);
}
} // namespace host
