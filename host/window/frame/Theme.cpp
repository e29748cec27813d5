// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frame/Theme.h"

#include "pictures/PictureStyle.h"

#include <QApplication>
#include <QProxyStyle>
#include <QStyleOptionButton>

namespace host
{
namespace
{
const Theme *s_current = nullptr;

QString hex(QRgb colour)
{
    return QColor(colour).name();
}
/// Frames of check boxes are drawn darker than the window, which on a dark one nobody sees.
class WindowStyle : public QProxyStyle
{
public:
    WindowStyle() : QProxyStyle("Fusion") { }

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
        const QWidget *widget) const override
    {
        if (element != PE_IndicatorCheckBox || !s_current || !s_current->isDark)
            return QProxyStyle::drawPrimitive(element, option, painter, widget);
        QStyleOptionButton box;
        box.QStyleOption::operator=(*option);
        box.palette.setColor(QPalette::Window, QColor(s_current->text));
        QProxyStyle::drawPrimitive(element, &box, painter, widget);
    }
};
} // namespace

const Theme &Theme::dark()
{
    static const Theme kDark{
        .isDark = true,
        .window = style::kMargin,
        .panel = 0xff242c37,
        .text = style::kText,
        .dimText = 0xff9aa5b3,
        .accent = style::kFirstTrace,
        .onAccent = 0xff06121c,
        .plot = style::kPlot,
        .grid = 0xff1d2430,
        .axis = style::kEdge,
        .trace = 0xff9bd5f7,
        .area = 0x7a2a78ad,
        .peak = style::kSecondTrace,
        .filter = 0x38f0e442,
        .carrier = style::kStation,
        .other = 0xff009e73,
        .notch = style::kNotch,
        .station = 0xffe8ecf1,
        .band = 0xff3c7a5e,
        .warning = 0xffe0662f,
        .digit = 0xfff4f7fa,
        .dimDigit = 0xff556070,
    };
    return kDark;
}

const Theme &Theme::light()
{
    static const Theme kLight{
        .isDark = false,
        .window = 0xfff1f3f6,
        .panel = 0xffffffff,
        .text = 0xff1b222b,
        .dimText = 0xff5c6773,
        .accent = 0xff0072b2,
        .onAccent = 0xffffffff,
        .plot = 0xfffbfcfe,
        .grid = 0xffe1e6ec,
        .axis = 0xff7d8794,
        .trace = 0xff00578a,
        .area = 0x5a56b4e9,
        .peak = 0xffb56f00,
        .filter = 0x409a7a00,
        .carrier = 0xff8a5a00,
        .other = 0xff007d5a,
        .notch = 0xff9c3f77,
        .station = 0xff1b222b,
        .band = 0xff58a384,
        .warning = 0xffc2410c,
        .digit = 0xff10161d,
        .dimDigit = 0xffb3bcc7,
    };
    return kLight;
}

const Theme &Theme::current()
{
    return s_current ? *s_current : dark();
}

void Theme::apply(QApplication &application, Choice choice)
{
    static const bool kDesktopIsDark =
        application.palette().color(QPalette::Window).lightness() < 128;
    const bool isDark = choice == Choice::Dark || (choice == Choice::Desktop && kDesktopIsDark);
    s_current = isDark ? &dark() : &light();
    application.setStyle(new WindowStyle);
    application.setPalette(s_current->palette());
    application.setStyleSheet(s_current->styleSheet());
}

QPalette Theme::palette() const
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(window));
    palette.setColor(QPalette::WindowText, QColor(text));
    palette.setColor(QPalette::Base, QColor(panel));
    palette.setColor(QPalette::AlternateBase, QColor(window));
    palette.setColor(QPalette::ToolTipBase, QColor(panel));
    palette.setColor(QPalette::ToolTipText, QColor(text));
    palette.setColor(QPalette::Text, QColor(text));
    palette.setColor(QPalette::Button, QColor(panel));
    palette.setColor(QPalette::ButtonText, QColor(text));
    palette.setColor(QPalette::BrightText, QColor(warning));
    palette.setColor(QPalette::Link, QColor(accent));
    palette.setColor(QPalette::Highlight, QColor(accent));
    palette.setColor(QPalette::HighlightedText, QColor(onAccent));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(isDark ? 0xff5a6573 : 0xffa5aeb8));
    return palette;
}

QString Theme::styleSheet() const
{
    // A button that is on is told by its filling and by a bold text.
    const QColor edge = isDark ? QColor(panel).lighter(135) : QColor(panel).darker(118);
    return QString("QToolTip { border: 1px solid %5; padding: 3px; }"
                   "QToolButton, QPushButton { border: 1px solid %5; border-radius: 4px;"
                   " padding: 2px 6px; background: %1; }"
                   "QToolButton[role=\"choice\"] { padding: 2px 0px; }"
                   "QToolButton:hover, QPushButton:hover { border-color: %3; }"
                   "QToolButton:focus, QPushButton:focus { border: 1px solid %3; }"
                   "QToolButton:pressed, QPushButton:pressed { background: %5; }"
                   "QToolButton:checked, QPushButton:checked { background: %3; color: %4;"
                   " border-color: %3; font-weight: bold; }"
                   "QToolButton:checked:disabled { background: %5; color: %6; }"
                   "QToolButton:disabled { color: %6; }"
                   "QToolButton::menu-indicator { image: none; }"
                   "QLabel[role=\"heading\"] { color: %2; }"
                   "QLabel[role=\"value\"] { color: %2; }"
                   "QSplitter::handle { background: %5; }"
                   "QStatusBar::item { border: none; }")
        .arg(hex(panel), hex(dimText), hex(accent), hex(onAccent), edge.name(),
            isDark ? "#5a6573" : "#a5aeb8");
}
} // namespace host
