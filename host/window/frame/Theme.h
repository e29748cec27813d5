// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPalette>

class QApplication;

namespace host
{
/// Colours of the window, dark or light. Those of traces and marks can be told apart with any
/// colour blindness (M. Okabe and K. Ito, "Color Universal Design", 2008), and each has a shape or
/// a text of its own beside its colour.
struct Theme
{
    enum class Choice { Desktop, Dark, Light };

    bool isDark;
    QRgb window; ///< around everything
    QRgb panel;  ///< buttons, fields
    QRgb text;
    QRgb dimText;
    QRgb accent; ///< what is on, chosen, in tune
    QRgb onAccent;
    QRgb plot; ///< background of panorama and meters
    QRgb grid;
    QRgb axis;
    QRgb trace;
    QRgb area; ///< below the trace, with alpha
    QRgb peak;
    QRgb filter;  ///< pass band over the panorama, with alpha
    QRgb carrier; ///< the active VFO
    QRgb other;   ///< the other one
    QRgb notch;
    QRgb station;
    QRgb band; ///< amateur bands on the axis
    QRgb warning;
    QRgb digit; ///< of the frequency
    QRgb dimDigit;

    static const Theme &dark();
    static const Theme &light();

    /// The one in use: of the last apply().
    static const Theme &current();

    /// Gives the program the palette of a choice; Desktop goes by the lightness of the palette that
    /// the program was started with.
    static void apply(QApplication &application, Choice choice);

    QPalette palette() const;
    QString styleSheet() const;
};
} // namespace host
