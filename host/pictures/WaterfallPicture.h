// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "LevelRange.h"
#include "PictureAxis.h"
#include "PictureLayout.h"
#include "WaterfallRows.h"

#include <QImage>
#include <QString>

#include <optional>
#include <span>

class QPainter;

namespace host
{
class PlotFrame;

/// Spectra over time as a picture: frequency to the right, time downward, so that the newest line
/// is at the bottom; level as colour, with a bar that tells which.
///
/// Each column of pixels shows the largest of its bins, each row of pixels the largest of its
/// lines. However many lines come, at most kMostRows rows are held, 11 MB at the default size.
/// Needs a QGuiApplication for the picture; otherwise one thread at a time.
class WaterfallPicture
{
public:
    static constexpr int kMostRows = 2048;

    /// The size is brought inside 320 x 200 to 8192 x 8192.
    explicit WaterfallPicture(const PictureAxis &axis, QSize size = PictureLayout::kDefaultSize);

    /// Levels in dBFS on the axis, of any number of bins, and when they were received, on any clock
    /// that does not run backwards. A line of no bins is passed over.
    void addLine(double seconds, std::span<const float> levelsDb);

    std::size_t lines() const { return m_rows.lines(); }

    void setTitle(const QString &title) { m_title = title; }

    /// Without it the colours span the data in whole tens of decibels, from the noise up to what
    /// all but 2 in 1000 pixels stay below; stronger ones take the brightest colour.
    void setRange(const LevelRange &range) { m_range = range; }

    QImage image() const;

    /// The pixels of the data in image().
    QRect plotArea() const { return m_layout.plot; }

    LevelRange range() const;

    /// Writes a PNG. On failure false, and `error` (may be null) names the file and the reason.
    bool save(const QString &path, QString *error) const;

private:
    void drawLevels(QPainter &painter, const LevelRange &levels) const;
    void drawColourBar(QPainter &painter, const PlotFrame &frame, const LevelRange &levels) const;

    PictureAxis m_axis;
    PictureLayout m_layout;
    WaterfallRows m_rows;
    QString m_title;
    std::optional<LevelRange> m_range;
};
} // namespace host
