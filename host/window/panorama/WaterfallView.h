// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "window/panorama/BandWidget.h"
#include "window/panorama/WaterfallHistory.h"
#include "window/panorama/WaterfallImage.h"

#include <QElapsedTimer>

namespace host
{
class SpectrumLines;

/// Spectra over time, live: frequency to the right, time downward, the newest line on top; level as
/// colour. A line is a row of the screen's pixels. GUI thread.
class WaterfallView : public BandWidget
{
    Q_OBJECT

public:
    /// The lines must outlive the view.
    WaterfallView(Radio &radio, VisibleBand &band, SpectrumLines &lines, QWidget *parent = nullptr);

    QSize minimumSizeHint() const override { return {320, 80}; }
    QSize sizeHint() const override { return {760, 300}; }

    /// The levels of the darkest and the brightest colour.
    void setRange(const LevelRange &range);

    ColourMap::Palette palette() const { return m_palette; }
    void setPalette(ColourMap::Palette palette);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintTimes(QPainter &painter);

    WaterfallHistory m_history;
    WaterfallImage m_image;
    LevelRange m_range;
    ColourMap::Palette m_palette = ColourMap::Palette::Inferno;
    QElapsedTimer m_clock;
};
} // namespace host
