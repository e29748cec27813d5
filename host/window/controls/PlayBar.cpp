// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/PlayBar.h"

#include "window/controls/TimeText.h"

#include "recording/RecordingPlayer.h"
#include "settings/Language.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

namespace host
{
namespace
{
constexpr int kSliderSteps = 10; // a second
} // namespace

PlayBar::PlayBar(RecordingPlayer &player, QWidget *parent)
    : QWidget(parent), m_player(player), m_pause(new QToolButton(this)),
      m_slider(new QSlider(Qt::Horizontal, this)), m_time(new QLabel(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_pause->setCheckable(true);
    auto *loop = new QToolButton(this);
    loop->setCheckable(true);
    loop->setChecked(player.isLooping());
    auto *close = new QToolButton(this);
    say(this, [this, loop, close] {
        m_pause->setText(tr("Pause"));
        loop->setText(tr("Loop"));
        close->setText(tr("Close"));
        close->setToolTip(tr("Ends the recording"));
        for (QToolButton *button : {m_pause, loop, close})
            button->setAccessibleName(button->text());
        m_slider->setAccessibleName(tr("Position in the recording"));
    });
    layout->addWidget(m_pause);
    layout->addWidget(m_slider, 1);
    for (QWidget *widget : {(QWidget *)m_time, (QWidget *)loop, (QWidget *)close})
        layout->addWidget(widget);
    connect(m_pause, &QToolButton::toggled, &player, &RecordingPlayer::setPaused);
    connect(loop, &QToolButton::toggled, &player, &RecordingPlayer::setLoop);
    connect(close, &QToolButton::clicked, this, &PlayBar::closed);
    connect(m_slider, &QSlider::valueChanged, this,
        [this](int value) { m_player.seek(double(value) / kSliderSteps); });
    connect(&player, &RecordingPlayer::pausedChanged, m_pause, &QToolButton::setChecked);
    connect(&player, &RecordingPlayer::fileChanged, this, &PlayBar::onFile);
    connect(&player, &RecordingPlayer::positionChanged, this, &PlayBar::onPosition);
    onFile();
}

void PlayBar::onFile()
{
    setVisible(m_player.isOpen());
    m_slider->setToolTip(QFileInfo(m_player.file()).fileName());
}

void PlayBar::onPosition(double seconds)
{
    const double length = m_player.length();
    m_time->setText(tr("%1 of %2").arg(timeText(seconds), timeText(length)));
    const QSignalBlocker quiet(m_slider);
    m_slider->setRange(0, int(length * kSliderSteps));
    if (!m_slider->isSliderDown())
        m_slider->setValue(int(seconds * kSliderSteps));
}
} // namespace host
