// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;
class QSlider;
class QToolButton;

namespace host
{
class RecordingPlayer;

/// Position, pause and loop of the recording that plays; not to be seen while none does. GUI
/// thread.
class PlayBar : public QWidget
{
    Q_OBJECT

public:
    /// The player must outlive the bar.
    PlayBar(RecordingPlayer &player, QWidget *parent);

signals:
    /// The person wants the receiver back.
    void closed();

private:
    void onFile();
    void onPosition(double seconds);

    RecordingPlayer &m_player;
    QToolButton *m_pause;
    QSlider *m_slider;
    QLabel *m_time;
};
} // namespace host
