// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/DialSlider.h"

#include "radio/Radio.h"
#include "settings/Language.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QSlider>

#include <cmath>

namespace host
{
namespace
{
/// "-12 dB"; the least volume is silence.
QString textOf(Dial id, double value, const Radio::Range &range)
{
    const bool isVolume = id == Dial::Volume || id == Dial::VolumeA || id == Dial::VolumeB;
    if (isVolume && value <= range.low)
        return DialSlider::tr("silent");
    const int decimals = range.step < 1.0 ? 1 : 0;
    return numberText(value, decimals) + ' ' + rowOf(id).unit;
}
} // namespace

DialSlider::DialSlider(Radio &radio, Dial id, QWidget *parent)
    : QWidget(parent), m_radio(radio), m_id(id), m_slider(new QSlider(Qt::Horizontal, this)),
      m_value(new QLabel(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    auto *name = new QLabel(this);
    name->setProperty("role", "heading");
    name->setMinimumWidth(52);
    layout->addWidget(name);
    layout->addWidget(m_slider, 1);
    layout->addWidget(m_value);
    m_value->setProperty("role", "value");
    m_value->setMinimumWidth(m_value->fontMetrics().horizontalAdvance("-160 dBm") + 2);
    m_value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_value->installEventFilter(this);
    m_slider->installEventFilter(this);
    const auto range = radio.rangeOf(id);
    m_slider->setRange(
        int(std::lround(range.low / range.step)), int(std::lround(range.high / range.step)));
    m_slider->setPageStep(6);
    connect(m_slider, &QSlider::valueChanged, this, [this, range](int place) {
        m_radio.setValue(m_id, place * range.step);
        show(m_radio.value(m_id));
    });
    connect(&radio, &Radio::dialChanged, this, [this](Dial changed, double value) {
        if (changed == m_id)
            show(value);
    });
    connect(&radio, &Radio::modeChanged, this, &DialSlider::enable);
    connect(&radio, &Radio::activeChanged, this, &DialSlider::enable);
    say(this, [this, name] {
        name->setText(nameOf(m_id));
        m_slider->setAccessibleName(nameOf(m_id));
        m_slider->setAccessibleDescription(helpOf(m_id));
        m_value->setToolTip(tr("Double click, or Backspace: back to the standard"));
        show(m_radio.value(m_id));
        enable();
    });
}

void DialSlider::show(double value)
{
    const auto range = m_radio.rangeOf(m_id);
    const QSignalBlocker quiet(m_slider);
    m_slider->setValue(int(std::lround(value / range.step)));
    m_value->setText(textOf(m_id, value, range));
}

void DialSlider::enable()
{
    const bool isUseful = m_radio.isUseful(m_id);
    setEnabled(isUseful);
    setToolTip(isUseful ? helpOf(m_id) : helpOf(m_id) + tr(" (no effect in this mode)"));
}

bool DialSlider::eventFilter(QObject *object, QEvent *event)
{
    const bool isBack = object == m_value ? event->type() == QEvent::MouseButtonDblClick
                                          : event->type() == QEvent::KeyPress
            && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Backspace;
    if (isBack)
        m_radio.setValue(m_id, rowOf(m_id).standard);
    return isBack || QWidget::eventFilter(object, event);
}
} // namespace host
