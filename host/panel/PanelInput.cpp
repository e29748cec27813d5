// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/PanelInput.h"

#include <QDir>

#include <libevdev/libevdev.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace host
{
namespace
{
const QString kDevices = QStringLiteral("/dev/input");
constexpr int kEventsPerRead = 64;
constexpr qint64 kMicroseconds = 1000000; // in a second

int openFile(const QString &path)
{
    return ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
}

/// Empty for what is no input device.
QString nameOf(int file)
{
    libevdev *device = nullptr;
    if (libevdev_new_from_fd(file, &device) < 0)
        return {};
    const QString name = QString::fromUtf8(libevdev_get_name(device));
    libevdev_free(device);
    return name;
}
} // namespace

PanelInput::PanelInput()
{
    m_look.setInterval(kLookMs);
    connect(&m_look, &QTimer::timeout, this, &PanelInput::look);
}

PanelInput::~PanelInput()
{
    m_notifier.reset();
    if (m_file >= 0)
        ::close(m_file);
}

void PanelInput::setDevice(const QString &device, bool isGrabbing)
{
    m_look.stop();
    drop();
    m_device = device;
    m_isGrabbing = isGrabbing;
    m_isTold = false;
    if (device.isEmpty())
        return;
    m_look.start();
    look();
}

void PanelInput::look()
{
    QString path = m_device;
    const int file = path.startsWith('/') ? openFile(path) : openNamed(&path);
    if (file < 0) {
        // A device that is not there is no fault: it may come.
        if (errno != ENOENT && errno != ENODEV && errno != ENXIO && !m_isTold) {
            m_isTold = true;
            emit problem(tr("The control panel %1 cannot be read: %2")
                             .arg(path, QString::fromLocal8Bit(std::strerror(errno))));
        }
        return;
    }
    if (m_isGrabbing)
        ::ioctl(file, EVIOCGRAB, 1); // another program may have it; then both hear it
    m_isTold = false;
    m_file = file;
    m_look.stop();
    m_notifier = std::make_unique<QSocketNotifier>(file, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &PanelInput::read);
    emit presentChanged(true);
}

/// -1 with ENOENT if none has that name, with EACCES if that may be as some cannot be looked at.
int PanelInput::openNamed(QString *path) const
{
    bool isForbidden = false;
    for (const QString &name : QDir(kDevices).entryList({"event*"}, QDir::System)) {
        const QString candidate = kDevices + '/' + name;
        const int file = openFile(candidate);
        if (file < 0) {
            isForbidden |= errno == EACCES;
            continue;
        }
        if (nameOf(file).contains(m_device, Qt::CaseInsensitive)) {
            *path = candidate;
            return file;
        }
        ::close(file);
    }
    errno = isForbidden ? EACCES : ENOENT;
    return -1;
}

QStringList PanelInput::devices()
{
    QStringList names;
    for (const QString &entry : QDir(kDevices).entryList({"event*"}, QDir::System)) {
        const int file = openFile(kDevices + '/' + entry);
        if (file < 0)
            continue;
        const QString name = nameOf(file);
        ::close(file);
        if (!name.isEmpty() && !names.contains(name))
            names += name;
    }
    return names;
}

void PanelInput::read()
{
    char bytes[kEventsPerRead * sizeof(input_event)];
    const ssize_t count = ::read(m_file, bytes, sizeof bytes);
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0) {
        drop();
        m_look.start();
        return;
    }
    m_rest.append(bytes, int(count));
    const int whole = m_rest.size() / int(sizeof(input_event));
    const QByteArray events = m_rest.left(whole * int(sizeof(input_event)));
    m_rest.remove(0, events.size());
    for (int i = 0; i < whole; ++i) {
        input_event event;
        std::memcpy(&event, events.constData() + std::size_t(i) * sizeof event, sizeof event);
        take(event);
    }
}

void PanelInput::take(const input_event &event)
{
    if (event.type == EV_SYN) {
        if (event.code == SYN_DROPPED)
            m_isLosing = true;
        else if (event.code == SYN_REPORT)
            m_isLosing = false;
    } else if (m_isLosing) {
        return;
    } else if (event.type == EV_KEY) {
        emit keyChanged(event.code, event.value);
    } else if (event.type == EV_REL) {
        emit knobTurned(event.code, event.value,
            event.input_event_sec * kMicroseconds + event.input_event_usec);
    }
}

void PanelInput::drop()
{
    m_rest.clear();
    m_isLosing = false;
    m_notifier.reset();
    if (m_file < 0)
        return;
    ::close(m_file);
    m_file = -1;
    emit presentChanged(false);
}
} // namespace host
