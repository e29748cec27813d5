// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/EqualizerCurve.h"

#include "window/frame/Theme.h"

#include "DspCore/audio/Equalizer18.h"
#include "DspCore/fft/FFT64.h"

#include <QLocale>
#include <QPainter>
#include <QVector>

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr double kRateHz = 48000.0;
constexpr int kPoints = 8192; // 5.9 Hz apart, a fifth of the lowest band
constexpr double kLowestHz = 20.0;
constexpr double kHighestHz = 20000.0;
constexpr double kLeastScaleDb = 12.0;
} // namespace

void EqualizerCurve::setGains(const QList<int> &gains)
{
    DspCore::Equalizer18 equalizer;
    equalizer.setSampleRate(kRateHz);
    equalizer.init(gains.toVector());
    equalizer.setEnable(true);
    std::vector<COMPLEX> response(kPoints);
    response[0] = {1.0, 0.0};
    for (int i = 0; i < kPoints; i += SIGNAL_MAX_SIZE)
        equalizer.process(response.data() + i, unsigned(std::min(SIGNAL_MAX_SIZE, kPoints - i)));
    DspCore::FFT64 fft;
    fft.init(kPoints);
    fft.process(response.data(), kPoints, DspCore::FftType::Forward);
    m_gainsDb.resize(kPoints / 2);
    for (std::size_t i = 0; i < m_gainsDb.size(); ++i)
        m_gainsDb[i] =
            20.0 * std::log10(std::max(1e-6, std::hypot(response[i].re, response[i].im)));
    update();
}

double EqualizerCurve::gainDb(double hertz) const
{
    if (m_gainsDb.empty())
        return 0.0;
    const double place = std::clamp(hertz / kRateHz * kPoints, 0.0, double(m_gainsDb.size() - 2));
    const auto below = std::size_t(place);
    const double share = place - double(below);
    return m_gainsDb[below] * (1.0 - share) + m_gainsDb[below + 1] * share;
}

void EqualizerCurve::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    const QRectF area = QRectF(rect()).adjusted(34.0, 6.0, -8.0, -20.0);
    painter.fillRect(area, QColor(theme.plot));
    double scale = kLeastScaleDb;
    for (double hertz = kLowestHz; hertz < kHighestHz; hertz *= 1.05)
        scale = std::max(scale, std::abs(gainDb(hertz)));
    scale = std::ceil(scale / 6.0) * 6.0;
    const auto xOf = [&](double hertz) {
        return area.left()
            + std::log(hertz / kLowestHz) / std::log(kHighestHz / kLowestHz) * area.width();
    };
    const auto yOf = [&](double db) {
        return area.center().y() - db / scale * area.height() / 2.0;
    };
    for (const double hertz : {50.0, 100.0, 200.0, 500.0, 1000.0, 2000.0, 5000.0, 10000.0}) {
        painter.setPen(QColor(theme.grid));
        painter.drawLine(QPointF(xOf(hertz), area.top()), QPointF(xOf(hertz), area.bottom()));
        painter.setPen(QColor(theme.dimText));
        painter.drawText(QRectF(xOf(hertz) - 25.0, area.bottom() + 2.0, 50.0, 16.0),
            Qt::AlignCenter,
            hertz < 1000.0 ? QLocale().toString(hertz)
                           : tr("%1k").arg(QLocale().toString(hertz / 1000.0)));
    }
    for (const double db : {-scale, -scale / 2.0, 0.0, scale / 2.0, scale}) {
        painter.setPen(QColor(db == 0.0 ? theme.axis : theme.grid));
        painter.drawLine(QPointF(area.left(), yOf(db)), QPointF(area.right(), yOf(db)));
        painter.setPen(QColor(theme.dimText));
        painter.drawText(QRectF(0.0, yOf(db) - 8.0, 30.0, 16.0), Qt::AlignRight | Qt::AlignVCenter,
            QLocale().toString(db));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    QPolygonF curve;
    for (double x = area.left(); x <= area.right(); x += 1.0) {
        const double hertz =
            kLowestHz * std::pow(kHighestHz / kLowestHz, (x - area.left()) / area.width());
        curve << QPointF(x, yOf(gainDb(hertz)));
    }
    painter.setPen(QPen(QColor(theme.accent), 2.0));
    painter.drawPolyline(curve);
}
} // namespace host
