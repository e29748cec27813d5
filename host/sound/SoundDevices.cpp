// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/SoundDevices.h"

#include <QFile>

#include <algorithm>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace host
{
namespace
{
constexpr const char *kCardRealm = "alsa"; // that of the sound server is called "default"

/// Whether somebody listens there. A socket whose owner has gone stays in the file system.
bool answers(const QByteArray &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.isEmpty() || std::size_t(path.size()) >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, path.constData(), std::size_t(path.size()));
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isThere = handle >= 0
        && connect(handle, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    close(handle);
    return isThere;
}

/// PulseAudio's own service, or PipeWire's in its place. One that is named by the user and is not a
/// socket of this machine is taken to be there.
bool isServerThere()
{
    const QByteArray named = qgetenv("PULSE_SERVER");
    if (!named.isEmpty())
        return named.startsWith("unix:") ? answers(named.mid(5))
            : named.startsWith('/')      ? answers(named)
                                         : true;
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    const QByteArray ofUser =
        runtime.isEmpty() ? "/run/user/" + QByteArray::number(getuid()) : runtime;
    return answers(ofUser + "/pulse/native") || answers("/run/pulse/native");
}

/// The kernel's list: " 0 [PCH  ]: HDA-Intel - ...", or "--- no soundcards ---".
bool isCardThere()
{
    QFile list("/proc/asound/cards");
    return list.open(QIODevice::ReadOnly) && list.readAll().contains('[');
}
} // namespace

QList<QAudioDeviceInfo> SoundDevices::all()
{
    if (!isServerThere() && !isCardThere())
        return {};
    const auto found = QAudioDeviceInfo::availableDevices(QAudio::AudioOutput);
    const bool hasServer = std::ranges::any_of(
        found, [](const QAudioDeviceInfo &device) { return device.realm() != kCardRealm; });
    QList<QAudioDeviceInfo> devices;
    for (const QAudioDeviceInfo &device : found) {
        // Beside the cards ALSA lists converters and bridges of all kinds.
        const QString name = device.deviceName();
        const bool isCard = isCardThere() && (name == "default" || name.contains("CARD="));
        if (hasServer ? device.realm() != kCardRealm : isCard)
            devices += device;
    }
    return devices;
}

QAudioDeviceInfo SoundDevices::preferred()
{
    const auto devices = all();
    if (devices.isEmpty())
        return {};
    const QAudioDeviceInfo preferred = QAudioDeviceInfo::defaultOutputDevice();
    return devices.contains(preferred) ? preferred : devices.first();
}
} // namespace host
