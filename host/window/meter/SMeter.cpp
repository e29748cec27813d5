// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/meter/SMeter.h"

#include "window/frame/Theme.h"

#include "radio/Radio.h"
#include "settings/Language.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr double kShortWaveS9Dbm = -73.0;
constexpr double kVhfS9Dbm = -93.0;
constexpr double kVhfHz = 30e6;
constexpr double kUnitDb = 6.0;
constexpr double kBelowS9Db = 9.0 * kUnitDb;
constexpr double kAboveS9Db = 60.0;

// S-units take more of the scale than the decibels above S9: that is where one looks.
constexpr double kS9Share = 0.58;

constexpr double kNarrow = 180.0; // pixels, too little for all numbers

constexpr int kPeakMs = 1500;
constexpr double kPeakFallDb = 0.8; // at each reading after that
constexpr double kSmoothing = 0.35; // of the way to the new reading, 25 times a second
} // namespace

SMeter::SMeter(Radio &radio, QWidget *parent) : QWidget(parent), m_radio(radio)
{
    say(this, [this] { setAccessibleName(tr("Signal strength")); });
    m_sincePeak.start();
    connect(&radio, &Radio::readingsChanged, this, &SMeter::onReadings);
}

double SMeter::s9Dbm(double hertz)
{
    return hertz > kVhfHz ? kVhfS9Dbm : kShortWaveS9Dbm;
}

QString SMeter::text(double dbm, double hertz)
{
    const double above = dbm - s9Dbm(hertz);
    if (above >= 5.0) // shown in tens
        return QString("S9+%1").arg(std::lround(above / 10.0) * 10);
    return QString("S%1").arg(std::clamp(int(std::floor(9.0 + above / kUnitDb + 0.5)), 0, 9));
}

void SMeter::onReadings()
{
    const double now = m_radio.readings().signalDbm;
    m_shownDbm += kSmoothing * (now - m_shownDbm);
    if (now >= m_peakDbm) {
        m_peakDbm = now;
        m_sincePeak.restart();
    } else if (m_sincePeak.hasExpired(kPeakMs)) {
        m_peakDbm = std::max(now, m_peakDbm - kPeakFallDb);
    }
    setAccessibleDescription(
        tr("%1, %2 dBm").arg(text(m_shownDbm, m_radio.frequencyHz())).arg(std::lround(m_shownDbm)));
    update();
}

double SMeter::shareOf(double dbm) const
{
    const double above = dbm - s9Dbm(m_radio.frequencyHz());
    const double share = above < 0.0 ? kS9Share * (1.0 + above / kBelowS9Db)
                                     : kS9Share + (1.0 - kS9Share) * above / kAboveS9Db;
    return std::clamp(share, 0.0, 1.0);
}

void SMeter::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QColor(theme.grid));
    painter.setBrush(QColor(theme.plot));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4.0, 4.0);
    const bool isOn = m_radio.state() == Radio::State::Receiving;
    constexpr double kTextWidth = 84.0;
    const QRectF bar(10.0, height() * 0.52, width() - kTextWidth - 24.0, height() * 0.28);
    QFont small = font();
    small.setPixelSize(10);
    painter.setFont(small);
    const double s9 = s9Dbm(m_radio.frequencyHz());
    const auto tick = [&](double dbm, const QString &label) {
        const double x = bar.left() + shareOf(dbm) * bar.width();
        painter.setPen(QColor(theme.axis));
        painter.drawLine(QPointF(x, bar.top() - 4.0), QPointF(x, bar.top() - 1.0));
        painter.setPen(QColor(dbm > s9 ? theme.warning : theme.dimText));
        painter.drawText(QRectF(x - 16.0, bar.top() - 19.0, 32.0, 14.0), Qt::AlignCenter, label);
    };
    for (int unit = 1; unit <= 9; unit += 2)
        tick(s9 + (unit - 9) * kUnitDb, QString::number(unit));
    const int step = bar.width() < kNarrow ? 40 : 20;
    for (int above = 20; above <= 60; above += step)
        tick(s9 + above, QString("+%1").arg(above));

    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(bar, QColor(theme.grid));
    if (isOn) {
        const double share = shareOf(m_shownDbm);
        const double low = std::min(share, kS9Share);
        painter.fillRect(
            QRectF(bar.left(), bar.top(), low * bar.width(), bar.height()), QColor(theme.accent));
        if (share > kS9Share)
            painter.fillRect(QRectF(bar.left() + kS9Share * bar.width(), bar.top(),
                                 (share - kS9Share) * bar.width(), bar.height()),
                QColor(theme.warning));
        const double peak = bar.left() + shareOf(m_peakDbm) * bar.width();
        painter.fillRect(
            QRectF(peak - 1.0, bar.top() - 1.0, 2.0, bar.height() + 2.0), QColor(theme.text));
    }
    if (m_radio.isOn(Switch::Squelch) && m_radio.isUseful(Switch::Squelch)) {
        // A wedge from below: the signal must reach it.
        const double x = bar.left() + shareOf(m_radio.value(Dial::Squelch)) * bar.width();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(theme.notch));
        painter.drawPolygon(QPolygonF()
            << QPointF(x, bar.bottom() - 3.0) << QPointF(x - 5.0, bar.bottom() + 6.0)
            << QPointF(x + 5.0, bar.bottom() + 6.0));
    }
    const QRectF texts(width() - kTextWidth - 6.0, 0.0, kTextWidth, height());
    QFont large = font();
    large.setPixelSize(19);
    large.setBold(true);
    painter.setFont(large);
    painter.setPen(QColor(theme.text));
    painter.drawText(texts.adjusted(0.0, 4.0, 0.0, -height() / 2.0 + 2.0),
        Qt::AlignRight | Qt::AlignVCenter,
        isOn ? text(m_shownDbm, m_radio.frequencyHz()) : QString("–"));
    painter.setFont(font());
    painter.setPen(QColor(theme.dimText));
    painter.drawText(texts.adjusted(0.0, height() / 2.0, 0.0, -5.0),
        Qt::AlignRight | Qt::AlignVCenter,
        isOn ? tr("%1 dBm").arg(std::lround(m_shownDbm)) : tr("off"));
}
} // namespace host
