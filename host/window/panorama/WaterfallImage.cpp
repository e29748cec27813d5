// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/WaterfallImage.h"

#include <QElapsedTimer>
#include <QPainter>

#include <algorithm>

namespace host
{
namespace
{
// Of the 40 between two lines of the spectrum, which the panorama and the controls share.
constexpr int kLongestRedrawMs = 5;
} // namespace

void WaterfallImage::setSize(QSize size)
{
    if (size == m_ring.size() || size.isEmpty())
        return;
    m_ring = QImage(size, QImage::Format_RGB32);
    m_ring.fill(m_colours[0]);
    m_newest = 0;
    m_columns.resize(std::size_t(size.width()));
    m_map = {};
    m_drawn = 0;
}

void WaterfallImage::setBand(double lowHz, double highHz)
{
    if (lowHz == m_lowHz && highHz == m_highHz)
        return;
    m_lowHz = lowHz;
    m_highHz = highHz;
    m_map = {};
    m_drawn = 0;
}

void WaterfallImage::setLook(const LevelRange &range, ColourMap::Palette palette)
{
    if (range == m_range && palette == m_palette && m_colours[0] != 0)
        return;
    m_range = range;
    m_palette = palette;
    for (std::size_t i = 0; i < m_colours.size(); ++i)
        m_colours[i] = ColourMap::colour(
            range.heightOf(WaterfallHistory::kLowestDb + double(i) * WaterfallHistory::kStepDb),
            palette);
    m_drawn = 0;
}

void WaterfallImage::drawRow(int age)
{
    auto *pixels = reinterpret_cast<QRgb *>(m_ring.scanLine(rowOf(age)));
    if (age >= m_history.count()) {
        std::fill_n(pixels, m_ring.width(), m_colours[0]);
        return;
    }
    const WaterfallHistory::Row &line = m_history.row(age);
    if (m_map.columns() == 0 || m_map.bins() != line.levels.size()
        || m_mapAxis.centerHz != line.axis.centerHz || m_mapAxis.spanHz != line.axis.spanHz) {
        m_mapAxis = line.axis;
        m_map = {line.axis, line.levels.size(), m_lowHz, m_highHz, m_ring.width()};
    }
    m_map.reduce(line.levels.data(), m_columns.data(), std::uint8_t(0));
    for (std::size_t x = 0; x < m_columns.size(); ++x)
        pixels[x] = m_colours[m_columns[x]];
}

void WaterfallImage::redraw()
{
    QElapsedTimer timer;
    timer.start();
    while (m_drawn < m_ring.height() && timer.elapsed() < kLongestRedrawMs)
        drawRow(m_drawn++);
}

void WaterfallImage::addNewest()
{
    if (m_ring.isNull())
        return;
    m_newest = rowOf(m_ring.height() - 1);
    drawRow(0);
    m_drawn = std::min(m_drawn + 1, m_ring.height());
}

bool WaterfallImage::paint(QPainter &painter, QPointF place, double pixelRatio)
{
    if (m_ring.isNull())
        return true;
    redraw();
    const int below = m_ring.height() - m_newest; // rows down to the end of the ring
    const auto part = [&](int from, int rows) {
        QImage image(m_ring.constScanLine(from), m_ring.width(), rows, m_ring.bytesPerLine(),
            m_ring.format());
        image.setDevicePixelRatio(pixelRatio);
        return image;
    };
    painter.drawImage(place, part(m_newest, below));
    if (m_newest > 0)
        painter.drawImage(place + QPointF(0.0, below / pixelRatio), part(0, m_newest));
    return m_drawn == m_ring.height();
}
} // namespace host
