// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "LevelRange.h"
#include "PictureAxis.h"
#include "PictureLayout.h"
#include "PictureMark.h"

#include <QImage>
#include <QString>

#include <optional>
#include <vector>

class QPainter;

namespace host
{
class PlotFrame;

/// A spectrum as a picture: level over frequency, with its numbers and units.
///
/// Where several bins fall into a column of pixels, the bright trace is the largest of them, so
/// that no narrow carrier is lost, and a darker one shows their mean power, where noise lies.
/// Levels outside the range are drawn at its edge. Needs a QGuiApplication; otherwise one thread at
/// a time.
class SpectrumPicture
{
public:
    explicit SpectrumPicture(const PictureAxis &axis) : m_axis(axis) { }

    /// Levels in dBFS, one per bin, on the axis; `name` is for the legend.
    void setLine(std::vector<float> levelsDb, const QString &name = "level");

    /// A second trace over the same axis, such as the largest level of each bin over a while.
    void setSecondLine(std::vector<float> levelsDb, const QString &name = "max hold");

    void setTitle(const QString &title) { m_title = title; }

    /// What the levels are, for the axis: "dBFS" and what that refers to.
    void setLevelCaption(const QString &caption) { m_levelCaption = caption; }

    /// Without it the range follows the data in whole tens of decibels. Low must be below high.
    void setRange(const LevelRange &range) { m_range = range; }

    /// A line at a frequency with a label above the plot. Outside the span it is left out.
    void addMark(const PictureMark &mark) { m_marks.push_back(mark); }
    void addBand(const PictureBand &band) { m_bands.push_back(band); }

    /// Brought inside 320 x 200 to 8192 x 8192.
    void setSize(QSize size) { m_size = size; }

    QImage image() const;

    /// The pixels of the data in image(); row 0 of them is the top of the range.
    QRect plotArea() const;

    /// The range given or found.
    LevelRange range() const;

    /// Writes a PNG. On failure false, and `error` (may be null) names the file and the reason.
    bool save(const QString &path, QString *error) const;

private:
    struct Trace
    {
        std::vector<float> levelsDb;
        QString name;
    };

    void drawTraces(QPainter &painter, const PlotFrame &frame, const LevelRange &levels) const;
    void drawLegend(const PlotFrame &frame) const;
    QString frequencyCaption(const QString &unit) const;

    PictureAxis m_axis;
    QString m_title;
    QString m_levelCaption = "Level (dBFS)";
    Trace m_first;
    Trace m_second;
    std::optional<LevelRange> m_range;
    std::vector<PictureMark> m_marks;
    std::vector<PictureBand> m_bands;
    QSize m_size = PictureLayout::kDefaultSize;
};
} // namespace host
