// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/AudioFile.h"

#include "settings/HostSettings.h"
#include "stream/WavHeader.h"

#include "vm_library/source/file/WholeFile.h"

#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host
{
namespace
{
constexpr auto kUnbuffered = QIODevice::WriteOnly | QIODevice::Unbuffered;
} // namespace

static_assert(AudioFile::kChannels == WavHeader::kChannels);

AudioFile::Format AudioFile::Format::of(const HostSettings &settings, int rateHz)
{
    constexpr double kWideFmUs = 50.0; // the receiver's decoder, whatever the region
    Format format{rateHz, settings.isInverted, {}};
    if (settings.deemphasisUs)
        format.deemphasis.emplace(settings.mode->mode == Mode::WFM ? kWideFmUs : 0.0,
            *settings.deemphasisUs, double(rateHz));
    return format;
}

bool AudioFile::open(const QString &path, const Format &format)
{
    m_path = path;
    m_format = format;
    m_frames = 0;
    m_isGood = true;
    // QFile would empty the file.
    constexpr mode_t kMode = 0666; // less what the user's mask takes
    const int file = ::open(
        QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY, kMode);
    if (file < 0)
        return fail(QString::fromLocal8Bit(std::strerror(errno)));
    m_file.open(file, kUnbuffered, QFileDevice::AutoCloseHandle);
    m_beside.clear();
    if (lock() && (m_file.isSequential() || m_file.size() == 0 || openBeside()) && writeHeader())
        return true;
    m_file.close();
    m_old.close();
    if (!m_beside.isEmpty())
        QFile::remove(m_beside);
    return false;
}

bool AudioFile::lock()
{
    return m_file.isSequential() || flock(m_file.handle(), LOCK_EX | LOCK_NB) == 0
        || errno != EWOULDBLOCK || fail(tr("another program is writing it"));
}

/// The file that is there stays open for its lock. A part of before may be all that is left of a
/// program that was killed.
bool AudioFile::openBeside()
{
    struct stat old
    { };
    fstat(m_file.handle(), &old);
    m_old.open(
        fcntl(m_file.handle(), F_DUPFD_CLOEXEC, 0), kUnbuffered, QFileDevice::AutoCloseHandle);
    m_file.close();
    m_target = QFileInfo(m_path).canonicalFilePath(); // a link stays a link
    int file = -1;
    QString name = m_target + ".part";
    for (int number = 2; file < 0; ++number) {
        file = ::open(QFile::encodeName(name).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
            old.st_mode & 0777);
        if (file < 0 && errno != EEXIST)
            return fail(name + ": " + QString::fromLocal8Bit(std::strerror(errno)));
        if (file < 0)
            name = m_target + QString(".part-%1").arg(number);
    }
    m_beside = name;
    fchmod(file, old.st_mode & 0777);
    return m_file.open(file, kUnbuffered, QFileDevice::AutoCloseHandle);
}

/// With what is there whole, or else with nothing.
bool AudioFile::takePlace()
{
    return std::rename(
               QFile::encodeName(m_beside).constData(), QFile::encodeName(m_target).constData())
        == 0
        || fail(QString::fromLocal8Bit(std::strerror(errno)));
}

bool AudioFile::write(const float *interleaved, std::size_t frames)
{
    if (!m_isGood)
        return false;
    if (m_format.inverted || m_format.deemphasis)
        interleaved = shaped(interleaved, frames);
    const auto bytes = qint64(frames * WavHeader::kBytesPerFrame);
    if (m_file.write(reinterpret_cast<const char *>(interleaved), bytes) != bytes) {
        const QString reason = vm::file::reasonOf(m_file);
        dropPartOfFrame();
        return fail(reason);
    }
    m_frames += frames;
    return m_frames - m_framesInHeader < std::uint64_t(m_format.rateHz) || updateHeader();
}

const float *AudioFile::shaped(const float *interleaved, std::size_t frames)
{
    m_shaped.assign(interleaved, interleaved + frames * kChannels);
    if (m_format.inverted)
        std::transform(m_shaped.begin(), m_shaped.end(), m_shaped.begin(), std::negate<float>());
    if (m_format.deemphasis)
        m_format.deemphasis->process(m_shaped.data(), frames);
    return m_shaped.data();
}

/// In front of what has been written so far. Of a pipe once, before all else.
bool AudioFile::writeHeader()
{
    m_framesInHeader = m_frames;
    const bool isPipe = m_file.isSequential();
    const WavHeader header(std::uint32_t(m_format.rateHz), isPipe ? WavHeader::kUnknown : m_frames);
    const bool isWritten = (isPipe || m_file.seek(0))
        && m_file.write(reinterpret_cast<const char *>(&header), sizeof header) == sizeof header
        && (isPipe || m_file.seek(m_file.size()));
    return isWritten || fail(vm::file::reasonOf(m_file));
}

/// Of a block that was refused some bytes may be in the file.
void AudioFile::dropPartOfFrame()
{
    if (m_file.isSequential())
        return;
    const std::uint64_t bytes = std::max<std::uint64_t>(m_file.size(), sizeof(WavHeader));
    m_frames = (bytes - sizeof(WavHeader)) / WavHeader::kBytesPerFrame;
    m_file.resize(qint64(sizeof(WavHeader) + m_frames * WavHeader::kBytesPerFrame));
    updateHeader();
}

bool AudioFile::updateHeader()
{
    return m_file.isSequential() || writeHeader();
}

bool AudioFile::close()
{
    if (!m_file.isOpen())
        return m_isGood;
    updateHeader();
    // A disk elsewhere may refuse as late as this. What cannot be synchronised says EINVAL.
    if (m_isGood && fsync(m_file.handle()) != 0 && errno != EINVAL)
        fail(QString::fromLocal8Bit(std::strerror(errno)));
    struct stat status
    { };
    if (m_isGood && !m_file.isSequential() && fstat(m_file.handle(), &status) == 0
        && status.st_nlink == 0)
        fail(tr("the file was taken away"));
    m_file.close();
    if (!m_beside.isEmpty() && m_isGood)
        takePlace();
    else if (!m_beside.isEmpty() && m_frames == 0)
        QFile::remove(m_beside);
    m_old.close();
    return m_isGood;
}

/// Keeps the first reason.
bool AudioFile::fail(const QString &reason)
{
    const QString both = tr("; what was there before stays, what is new is in %1");
    if (m_isGood)
        m_error = m_path + ": " + reason.simplified()
            + (m_frames > 0 && !m_beside.isEmpty() ? both.arg(m_beside) : QString());
    m_isGood = false;
    return false;
}
} // namespace host
