// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/meter/HealthBar.h"

#include "window/frame/Theme.h"

#include "radio/Radio.h"
#include "settings/Language.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>

#include <cmath>

namespace host
{
namespace
{
constexpr int kEvery = 5; // readings; faster than five times a second no number can be read

/// Three digits of it, "950", "12.3k", "4.56M": the line of status keeps its width.
QString countText(double count)
{
    constexpr double kMost = 999.5; // what is above is rounded to 1000
    QString unit;
    for (const char *next = "kMGT"; count >= kMost && *next; ++next) {
        count /= 1000.0;
        unit = QChar(*next);
    }
    const int decimals = unit.isEmpty() || count >= 99.95 ? 0 : count >= 9.995 ? 1 : 2;
    return numberText(count, decimals) + unit;
}

QString levelText(double db)
{
    return db <= Readings::kNothingDb ? QString("–") : QString::number(std::lround(db));
}
} // namespace

QString HealthBar::lossesText(const Readings &readings)
{
    QStringList parts;
    if (readings.droppedSamples > 0)
        parts += tr("program %1").arg(countText(double(readings.droppedSamples)));
    if (readings.lostSamples > 0)
        parts += tr("receiver %1").arg(countText(double(readings.lostSamples)));
    return parts.isEmpty() ? QString() : tr("LOST: %1").arg(parts.join(tr(", ")));
}

HealthBar::HealthBar(Radio &radio, QWidget *parent)
    : QWidget(parent), m_radio(radio), m_state(new QLabel(this)), m_input(new QLabel(this)),
      m_losses(new QLabel(this)), m_audio(new QLabel(this)), m_stereo(new QLabel(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->setSpacing(14);
    for (QLabel *label : {m_state, m_input, m_losses, m_audio, m_stereo})
        layout->addWidget(label);
    m_losses->setObjectName("losses");
    say(this, [this] {
        m_input->setToolTip(tr("Level at the receiver's converter; OVERFLOW: attenuate"));
        m_audio->setToolTip(tr("Peak of the audio"));
        m_stereo->setToolTip(tr("Wide FM with a pilot tone"));
        showState();
    });
    connect(&radio, &Radio::readingsChanged, this, &HealthBar::onReadings);
    connect(&radio, &Radio::stateChanged, this, &HealthBar::showState);
    connect(&radio, &Radio::rateChanged, this, &HealthBar::showState);
}

void HealthBar::showState()
{
    switch (m_radio.state()) {
    case Radio::State::Off:
        m_state->setText(tr("Off"));
        break;
    case Radio::State::Searching:
        m_state->setText(tr("Looking for a receiver"));
        break;
    case Radio::State::Receiving:
        m_state->setText(
            tr("%1, %2 kHz")
                .arg(m_radio.deviceName(), QLocale().toString(m_radio.rateHz() / 1000.0)));
        break;
    }
}

void HealthBar::onReadings()
{
    const Readings &now = m_radio.readings();
    const bool isBad = now.isOverflow;
    if (++m_count < kEvery && !isBad)
        return;
    m_count = 0;
    const QString warning =
        QString("<b style=\"color:%1\">%2</b>").arg(QColor(Theme::current().warning).name());
    m_input->setText(
        isBad ? warning.arg(tr("ADC OVERFLOW")) : tr("ADC %1 dBFS").arg(levelText(now.inputDb)));
    const QString losses = lossesText(now);
    m_losses->setText(losses.isEmpty() ? tr("nothing lost") : warning.arg(losses));
    m_losses->setToolTip(
        tr("IQ since the start: %1 samples lost as the program had no time for them, "
           "%2 that the receiver sent in vain, with %3 reads that came back short. "
           "The sound has gaps where some were lost.")
            .arg(now.droppedSamples)
            .arg(now.lostSamples)
            .arg(now.shortReads));
    m_audio->setText(tr("audio %1 dBFS").arg(levelText(now.audioPeakDb)));
    m_stereo->setText(now.isStereo ? tr("● stereo") : QString());
}
} // namespace host
