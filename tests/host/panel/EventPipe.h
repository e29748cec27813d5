// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <linux/input.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace test
{
/// A pipe with a name, into which a test writes what an input device would.
class EventPipe
{
public:
    EventPipe() { mkfifo(QFile::encodeName(path()).constData(), 0600); }
    ~EventPipe() { vanish(); }

    QString path() const { return m_folder.filePath("event0"); }

    /// False while nobody reads.
    bool appear()
    {
        m_file = ::open(QFile::encodeName(path()).constData(), O_WRONLY | O_NONBLOCK);
        return m_file >= 0;
    }

    void vanish()
    {
        if (m_file >= 0)
            ::close(m_file);
        m_file = -1;
    }

    static QByteArray event(int type, int code, int value, qint64 timeUs = 0)
    {
        input_event event{};
        event.input_event_sec = timeUs / 1000000;
        event.input_event_usec = timeUs % 1000000;
        event.type = decltype(event.type)(type);
        event.code = decltype(event.code)(code);
        event.value = value;
        return {reinterpret_cast<const char *>(&event), sizeof event};
    }

    bool write(const QByteArray &bytes)
    {
        return ::write(m_file, bytes.constData(), std::size_t(bytes.size())) == bytes.size();
    }

private:
    QTemporaryDir m_folder;
    int m_file = -1;
};
} // namespace test
