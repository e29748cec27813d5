// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "window/panorama/ColumnMap.h"
#include "window/panorama/WaterfallHistory.h"

#include "pictures/ColourMap.h"
#include "pictures/LevelRange.h"

#include <QImage>

#include <array>

class QPainter;

namespace host
{
/// The picture of a waterfall, newest line on top, as a ring of rows: a new line is written over
/// the oldest one, and painting begins at the newest. Nothing is moved for a line; another zoom,
/// range, palette or size draws all of it anew from the history, the newest rows first and no
/// longer at once than the window can wait: on a tall screen the oldest follow with the next
/// painting.
class WaterfallImage
{
public:
    /// The history must outlive the image.
    explicit WaterfallImage(const WaterfallHistory &history) : m_history(history) { }

    /// Pixels of the screen.
    void setSize(QSize size);
    void setBand(double lowHz, double highHz);
    void setLook(const LevelRange &range, ColourMap::Palette palette);

    /// The history has a new line.
    void addNewest();

    /// One pixel of the screen a row, from the top left corner at `place` in the units of a painter
    /// with that many pixels a unit. False if rows are left that show another zoom or look still.
    bool paint(QPainter &painter, QPointF place, double pixelRatio);

private:
    int rowOf(int age) const { return (m_newest + age) % m_ring.height(); }
    void drawRow(int age);
    void redraw();

    const WaterfallHistory &m_history;
    QImage m_ring;
    int m_newest = 0;
    int m_drawn = 0; // rows that show band and look as they are, from the newest on
    double m_lowHz = 0.0;
    double m_highHz = 1.0;
    LevelRange m_range;
    ColourMap::Palette m_palette = ColourMap::Palette::Inferno;
    std::array<QRgb, 256> m_colours{};
    ColumnMap m_map;
    PictureAxis m_mapAxis;
    std::vector<std::uint8_t> m_columns;
};
} // namespace host
