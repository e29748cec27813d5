// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/FlacFile.h"

#include "stream/FrameSource.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <sndfile.h>

namespace host
{
void FlacFile::Close::operator()(sf_private_tag *file) const
{
    sf_close(file);
}

bool FlacFile::open(const QString &path)
{
    SF_INFO info{};
    info.samplerate = FrameSource::kRateHz;
    info.channels = FrameSource::kChannels;
    info.format = SF_FORMAT_FLAC | SF_FORMAT_PCM_24;
    m_path = path;
    m_error.clear();
    m_frames = 0;
    m_isGood = true;
    m_file.reset(sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info));
    if (!m_file)
        return fail(QString::fromLocal8Bit(sf_strerror(nullptr)).simplified());
    sf_command(m_file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    return true;
}

bool FlacFile::write(const float *interleaved, std::size_t frames)
{
    if (!m_isGood)
        return false;
    errno = 0;
    if (sf_writef_float(m_file.get(), interleaved, sf_count_t(frames)) != sf_count_t(frames)
        || errno == ENOSPC || errno == EFBIG || errno == EIO || errno == EDQUOT)
        return fail(
            QString::fromLocal8Bit(errno ? std::strerror(errno) : sf_strerror(m_file.get())));
    m_frames += frames;
    return true;
}

bool FlacFile::close()
{
    if (!m_file)
        return m_isGood;
    m_file.reset();
    if (!m_isGood)
        return false;
    // What the encoder writes at the end may be refused, too, and only the file tells.
    SF_INFO info{};
    m_file.reset(sf_open(QFile::encodeName(m_path).constData(), SFM_READ, &info));
    m_file.reset();
    return std::uint64_t(info.frames) == m_frames || fail(tr("not all of it could be written"));
}

bool FlacFile::fail(const QString &reason)
{
    m_error = reason;
    m_isGood = false;
    return false;
}
} // namespace host
