// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/AudioRecorder.h"
#include "recording/IqStreamRecorder.h"

#include <QWidget>

class QLabel;
class QMenu;
class QToolButton;

namespace host
{
class AudioPump;
class Radio;

/// The two buttons that record what is heard and what the receiver takes from the air, with time,
/// size, room on the disk and losses of what runs. Folder, audio format and IQ layout are chosen in
/// a menu and kept in the settings, group "Recording". GUI thread.
class RecordBar : public QWidget
{
    Q_OBJECT

public:
    /// pump is that of the loudspeaker. Radio and pump must outlive the bar.
    RecordBar(Radio &radio, AudioPump &pump, QWidget *parent);
    ~RecordBar() override;

    void setRecordingAudio(bool on);
    void setRecordingIq(bool on);

    /// Adds the recorder's actions to a menu.
    void serve(QMenu &menu);

    QString folder() const;
    void setFolder(const QString &folder);

signals:
    /// Something a person should read, in one line.
    void message(const QString &text);

private:
    void join(Recorder &recorder, QToolButton &button, void (RecordBar::*set)(bool));
    void begin(bool isBegun, Recorder &recorder, QToolButton &button);
    void show(const Recorder::Progress &progress);
    void showIdle();
    void chooseFolder();
    QVariant setting(const QString &key, const QVariant &otherwise) const;
    void keep(const QString &key, const QVariant &value);

    Radio &m_radio;
    AudioPump &m_pump;
    AudioRecorder m_audio;
    IqStreamRecorder m_iq;
    QToolButton *m_audioButton;
    QToolButton *m_iqButton;
    QLabel *m_text;
};
} // namespace host
