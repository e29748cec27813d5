// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/SoundOutput.h"

#include "sound/SoundCard.h"

namespace host
{
SoundOutput::SoundOutput() : m_card(new SoundCard(m_stream))
{
    m_card->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_card, &QObject::deleteLater);
    connect(
        m_card, &SoundCard::playing, this, [this](const QString &name) { setState(true, name); });
    connect(m_card, &SoundCard::waiting, this,
        [this](const QString &reason) { setState(false, reason); });
    connect(m_card, &SoundCard::devicesFound, this, [this](const QStringList &names) {
        if (names == m_devices)
            return;
        m_devices = names;
        emit devicesChanged(m_devices);
    });
    m_thread.setObjectName("sound");
    m_thread.start(QThread::TimeCriticalPriority);
    refresh();
}

SoundOutput::~SoundOutput()
{
    m_thread.quit();
    m_thread.wait();
}

void SoundOutput::refresh()
{
    QMetaObject::invokeMethod(m_card, &SoundCard::look);
}

void SoundOutput::setDevice(const QString &name)
{
    m_device = name;
    m_isWanted = true;
    QMetaObject::invokeMethod(m_card, [card = m_card, name] { card->play(name); });
}

void SoundOutput::stop()
{
    m_isWanted = false;
    QMetaObject::invokeMethod(m_card, &SoundCard::stop);
    show(false, tr("off"));
}

/// What the card tells; that may be late.
void SoundOutput::setState(bool isPlaying, const QString &text)
{
    if (m_isWanted)
        show(isPlaying, text);
}

void SoundOutput::show(bool isPlaying, const QString &text)
{
    if (m_isPlaying == isPlaying && m_text == text)
        return;
    m_isPlaying = isPlaying;
    m_text = text;
    emit stateChanged(isPlaying, text);
}
} // namespace host
