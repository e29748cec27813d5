// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAudioDeviceInfo>
#include <QList>

namespace host
{
/// The sound devices of this machine, in the order in which they are tried: those of the sound
/// server, else the cards of ALSA.
///
/// Qt's plugin for the sound server tries to reach it once, when it is loaded, and never again. So
/// nothing of Qt Multimedia is touched before a server or a card is there. Sound thread.
class SoundDevices
{
public:
    static QList<QAudioDeviceInfo> all();

    /// Of all() the one that the system prefers; null if there is none.
    static QAudioDeviceInfo preferred();
};
} // namespace host
