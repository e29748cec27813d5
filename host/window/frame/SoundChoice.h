// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sound/AudioPump.h"
#include "sound/SoundOutput.h"
#include "stream/FrameSource.h"

#include <QObject>

class QMenu;

namespace host
{
class Radio;

/// What the radio makes, played on a sound card that is chosen in a menu and kept in the settings.
/// GUI thread.
class SoundChoice : public QObject
{
    Q_OBJECT

public:
    /// The radio must outlive it.
    explicit SoundChoice(Radio &radio);
    ~SoundChoice() override;

    /// Fills the menu whenever it is about to be shown; it goes before this.
    void serve(QMenu &menu);

    SoundOutput &output() { return m_output; }
    AudioPump &pump() { return m_pump; }

private:
    class Source : public FrameSource
    {
    public:
        explicit Source(Radio &radio) : m_radio(radio) { }
        std::size_t pull(float *interleaved, std::size_t frames) override;

    private:
        Radio &m_radio;
    };

    void choose(const QString &device);
    void fill(QMenu &menu);

    Radio &m_radio;
    Source m_source;
    SoundOutput m_output;
    AudioPump m_pump; // last: it works with all of them
};
} // namespace host
