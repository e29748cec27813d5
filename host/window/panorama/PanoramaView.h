// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "window/panorama/BandWidget.h"
#include "window/panorama/ColumnMap.h"
#include "window/panorama/TraceRaster.h"

#include "pictures/LevelRange.h"
#include "pictures/PictureMark.h"

#include <QImage>

namespace host
{
class SpectrumLines;
struct Theme;

/// Level over frequency, live, with the axes of both views of the band: decibels to the left,
/// frequencies below. The range follows the noise and the strongest signal until a hand sets it:
/// drag on the decibels moves it, the wheel there widens it, a double click lets it follow again. A
/// double click on the frequencies shows the whole band. GUI thread.
class PanoramaView : public BandWidget
{
    Q_OBJECT

public:
    static constexpr int kAxisHeight = 34; ///< numbers, and the names of the amateur bands

    /// The lines must outlive the view.
    PanoramaView(Radio &radio, VisibleBand &band, SpectrumLines &lines, QWidget *parent = nullptr);

    QRect plot() const override { return rect().adjusted(kAxisWidth, 0, 0, -kAxisHeight); }
    QSize minimumSizeHint() const override { return {320, 110}; }
    QSize sizeHint() const override { return {760, 240}; }

    const LevelRange &range() const { return m_range; }
    bool isAutomatic() const { return m_isAutomatic; }

    /// Whole decibels, at least 20 dB apart. Ends the following.
    void setRange(const LevelRange &range);
    void setAutomatic(bool automatic);

    /// Stations and the like, with their names above the trace.
    void setMarks(const std::vector<PictureMark> &marks);

    /// Level of the line at a frequency, dBFS; minus infinity outside.
    double levelAt(double hertz) const;

    /// Where the pointer is in either view; negative: nowhere.
    void setPointer(double hertz);

signals:
    void rangeChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void follow();
    void drawTraces();
    void paintAxes(QPainter &painter);
    void paintBands(QPainter &painter);
    void paintStations(QPainter &painter);
    void paintPointer(QPainter &painter);
    double yOf(double levelDb) const;
    bool isOnLevels(const QPoint &place) const;

    SpectrumLines &m_lines;
    LevelRange m_range{-120.0, -20.0};
    LevelRange m_wanted; // at the last look
    bool m_isAutomatic = true;
    int m_linesToFollow = 0;
    std::vector<PictureMark> m_marks;
    double m_pointerHz = -1.0;
    QPoint m_levelsPressed;
    LevelRange m_levelsBefore;
    bool m_isOnLevels = false;

    /// What the picture of the traces depends on, besides the line.
    struct Look
    {
        QSize size; // pixels of the screen
        double ratio = 0.0;
        double lowHz = 0.0;
        double highHz = 0.0;
        LevelRange range;
        bool isPeakHold = false;
        const Theme *theme = nullptr;

        bool operator==(const Look &) const = default;
    };

    QImage m_picture; // of the plot, in pixels of the screen
    Look m_look;
    bool m_isLineNew = true;
    ColumnMap m_map;
    PictureAxis m_mapAxis;
    std::vector<float> m_columns;
    std::vector<float> m_rows;
    TraceRaster m_raster;
};
} // namespace host
