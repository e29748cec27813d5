// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frequency/FrequencyDisplay.h"

#include "window/frame/Theme.h"
#include "window/frequency/FrequencyText.h"

#include "radio/Radio.h"
#include "settings/Language.h"

#include <QAccessible>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr int kWheelStep = 120;       // eighths of a degree, a notch of common mice
constexpr double kLetterWidth = 22;   // of "A" or "B" in its box, in front of the digits
constexpr double kPointShare = 0.36;  // of a digit's width, between groups
constexpr double kWidestDigit = 0.56; // of the height
constexpr int kDigitHeight = 34;      // pixels

double powerOfTen(int digit)
{
    return std::pow(10.0, digit);
}
} // namespace

FrequencyDisplay::FrequencyDisplay(Radio &radio, VfoId id, QWidget *parent)
    : QWidget(parent), m_radio(radio), m_id(id), m_field(new QLineEdit(this))
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    m_field->hide();
    say(this, [this] {
        setAccessibleName(m_id == VfoId::A ? tr("Frequency of VFO A") : tr("Frequency of VFO B"));
        setToolTip(tr("Wheel or click on a digit, or type one. F types a whole frequency."));
        m_field->setAccessibleName(tr("Type a frequency, for example 14.074 or 14074k"));
        tell();
    });
    m_field->installEventFilter(this);
    const auto redraw = [this] {
        tell();
        update();
    };
    connect(&radio, &Radio::frequencyChanged, this, redraw);
    connect(&radio, &Radio::activeChanged, this, redraw);
    connect(&radio, &Radio::lockedChanged, this, redraw);
}

bool FrequencyDisplay::isActive() const
{
    return m_radio.active() == m_id;
}

void FrequencyDisplay::tell()
{
    setAccessibleDescription(frequencyText(hertz()) + tr(" Hz"));
    if (hasFocus()) {
        QAccessibleValueChangeEvent event(this, hertz());
        QAccessible::updateAccessibility(&event);
    }
}

double FrequencyDisplay::hertz() const
{
    return m_radio.vfo(m_id).frequencyHz;
}

double FrequencyDisplay::lowestHz() const
{
    return m_radio.lowestHz();
}

double FrequencyDisplay::highestHz() const
{
    return m_radio.highestHz();
}

void FrequencyDisplay::setHertz(double hertz)
{
    m_radio.setFrequency(m_id, hertz);
}

double FrequencyDisplay::digitWidth() const
{
    // Digits that stand too far apart are no number any more.
    return std::min(
        (width() - kLetterWidth - 8.0) / (kDigits + 2.0 * kPointShare), height() * kWidestDigit);
}

QSize FrequencyDisplay::sizeHint() const
{
    return {260, kDigitHeight + 12};
}

QSize FrequencyDisplay::minimumSizeHint() const
{
    return {190, 34};
}

QRectF FrequencyDisplay::rectOf(int digit) const
{
    const int place = kDigits - 1 - digit; // from the left
    const double width = digitWidth() * (kDigits + 2.0 * kPointShare);
    const double left = kLetterWidth + std::max(4.0, (this->width() - kLetterWidth - width) / 2.0);
    const double x = left + digitWidth() * (place + kPointShare * (place / 3));
    return {x, 0.0, digitWidth(), double(height())};
}

int FrequencyDisplay::digitAt(const QPointF &place) const
{
    for (int digit = 0; digit < kDigits; ++digit)
        if (rectOf(digit).contains(place))
            return digit;
    return -1;
}

void FrequencyDisplay::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? QColor(theme.accent) : QColor(theme.grid));
    painter.setBrush(QColor(theme.plot));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4.0, 4.0);

    const QRectF letter(4.0, height() / 2.0 - 9.0, kLetterWidth - 6.0, 18.0);
    const QColor mark(m_id == VfoId::A ? theme.carrier : theme.other);
    QFont small = font();
    small.setBold(true);
    painter.setFont(small);
    painter.setPen(isActive() ? QColor(Qt::transparent) : mark);
    painter.setBrush(isActive() ? mark : QColor(Qt::transparent));
    painter.drawRoundedRect(letter, 3.0, 3.0);
    painter.setPen(isActive() ? QColor(theme.plot) : mark);
    painter.drawText(letter, Qt::AlignCenter, m_id == VfoId::A ? "A" : "B");

    QFont digits("DejaVu Sans");
    digits.setStyleHint(QFont::SansSerif);
    digits.setBold(isActive());
    digits.setPixelSize(std::max(12, int(std::min(height() * 0.72, digitWidth() * 1.5))));
    painter.setFont(digits);
    const auto hertz = std::llround(m_radio.vfo(m_id).frequencyHz);
    for (int digit = kDigits - 1; digit >= 0; --digit) {
        const QRectF box = rectOf(digit);
        const bool isChosen = hasFocus() && digit == m_digit;
        if (isChosen || digit == m_hovered) {
            QColor ground(theme.accent);
            ground.setAlpha(isChosen ? 90 : 45);
            painter.fillRect(box.adjusted(0.0, 3.0, 0.0, -3.0), ground);
        }
        const bool isLeading = double(hertz) < powerOfTen(digit) && digit > 0;
        painter.setPen(QColor(isLeading             ? theme.dimDigit
                : isActive() && !m_radio.isLocked() ? theme.digit
                                                    : theme.dimText));
        const int number = int(hertz / std::llround(powerOfTen(digit)) % 10);
        painter.drawText(box, Qt::AlignCenter, QString::number(number));
        if (digit == 6 || digit == 3)
            painter.drawText(
                QRectF(box.right() - 2.0, 0.0, digitWidth() * kPointShare + 4.0, height()),
                Qt::AlignCenter, ".");
    }
}

void FrequencyDisplay::count(int digit, int by)
{
    if (!isActive())
        m_radio.setFrequency(m_id, m_radio.vfo(m_id).frequencyHz + by * powerOfTen(digit));
    else
        m_radio.setFrequency(m_radio.frequencyHz() + by * powerOfTen(digit));
}

void FrequencyDisplay::write(int number)
{
    const auto hertz = std::llround(m_radio.vfo(m_id).frequencyHz);
    const auto unit = std::llround(powerOfTen(m_digit));
    const int before = int(hertz / unit % 10);
    m_radio.setFrequency(m_id, double(hertz + (number - before) * unit));
    choose(m_digit - 1);
}

void FrequencyDisplay::choose(int digit)
{
    m_digit = std::clamp(digit, 0, kDigits - 1);
    update();
}

void FrequencyDisplay::mousePressEvent(QMouseEvent *event)
{
    const int digit = digitAt(event->localPos());
    if (event->button() != Qt::LeftButton)
        return;
    if (digit < 0) {
        m_radio.setActive(m_id);
        return;
    }
    choose(digit);
    count(digit, event->localPos().y() < height() / 2.0 ? 1 : -1);
}

void FrequencyDisplay::mouseMoveEvent(QMouseEvent *event)
{
    const int hovered = digitAt(event->localPos());
    if (hovered == m_hovered)
        return;
    m_hovered = hovered;
    update();
}

void FrequencyDisplay::leaveEvent(QEvent *)
{
    m_hovered = -1;
    update();
}

void FrequencyDisplay::wheelEvent(QWheelEvent *event)
{
    event->accept();
    m_wheel += event->angleDelta().y();
    const int steps = m_wheel / kWheelStep;
    m_wheel -= steps * kWheelStep;
    const int digit = digitAt(event->position());
    if (steps != 0 && digit >= 0)
        count(digit, steps);
}

void FrequencyDisplay::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        choose(m_digit + 1);
        break;
    case Qt::Key_Right:
        choose(m_digit - 1);
        break;
    case Qt::Key_Up:
        count(m_digit, 1);
        break;
    case Qt::Key_Down:
        count(m_digit, -1);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        edit();
        break;
    default:
        if (event->key() >= Qt::Key_0 && event->key() <= Qt::Key_9)
            write(event->key() - Qt::Key_0);
        else
            QWidget::keyPressEvent(event);
    }
}

void FrequencyDisplay::focusInEvent(QFocusEvent *)
{
    update();
}

void FrequencyDisplay::focusOutEvent(QFocusEvent *)
{
    update();
}

void FrequencyDisplay::edit()
{
    m_field->setGeometry(rect().adjusted(2, 2, -2, -2));
    QFont large = font();
    large.setPixelSize(std::max(12, height() / 2));
    m_field->setFont(large);
    m_field->setText(frequencyText(m_radio.vfo(m_id).frequencyHz));
    m_field->selectAll();
    m_field->show();
    m_field->setFocus();
}

/// Escape and a click elsewhere leave the frequency as it was.
bool FrequencyDisplay::eventFilter(QObject *object, QEvent *event)
{
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent *>(event)->key()
                                                      : Qt::Key_unknown;
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    const bool isEnd = isEnter || key == Qt::Key_Escape;
    if (object != m_field || (!isEnd && event->type() != QEvent::FocusOut))
        return QWidget::eventFilter(object, event);
    finishEdit(isEnter);
    return isEnd; // handed on, Enter would open the field again
}

void FrequencyDisplay::finishEdit(bool take)
{
    if (!m_field->isVisible())
        return;
    const auto hertz = frequencyFrom(m_field->text());
    if (take && !hertz) {
        emit m_radio.message(
            tr("\"%1\" is no frequency; for example 14.074 or 14074k").arg(m_field->text()));
        m_field->selectAll();
        return;
    }
    m_field->hide();
    setFocus();
    if (take)
        m_radio.setFrequency(m_id, *hertz);
}
} // namespace host
