// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/AudioFile.h"

#include <QFile>
#include <sndfile.h>

namespace host
{
AudioFile::~AudioFile() = default;

void AudioFile::Closer::operator()(sf_private_tag *file) const
{
    sf_close(file);
}

bool AudioFile::open(const QString &path, int rateHz)
{
    SF_INFO info{};
    info.samplerate = rateHz;
    info.channels = kChannels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    m_path = path;
    m_file.reset(sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info));
    if (!m_file) {
        m_error = path + ": " + QString(sf_strerror(nullptr)).simplified();
        return false;
    }
    // The peak chunk carries the time of writing, and equal runs are to give equal files.
    sf_command(m_file.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    return true;
}

bool AudioFile::write(const float *interleaved, std::size_t frames)
{
    if (sf_writef_float(m_file.get(), interleaved, sf_count_t(frames)) == sf_count_t(frames))
        return true;
    m_error = m_path + ": " + QString(sf_strerror(m_file.get())).simplified();
    return false;
}

bool AudioFile::close()
{
    if (m_file && sf_close(m_file.release()) != 0) {
        m_error = m_path + ": could not be completed";
        return false;
    }
    return true;
}
} // namespace host
