// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frame/Accessibility.h"

#include "window/controls/EqualizerCurve.h"
#include "window/frequency/FrequencyDisplay.h"
#include "window/meter/SMeter.h"
#include "window/panorama/BandWidget.h"

#include <QAccessibleWidget>

namespace host
{
namespace
{
class AccessibleFrequency : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit AccessibleFrequency(FrequencyDisplay &display)
        : QAccessibleWidget(&display, QAccessible::SpinBox), m_display(display)
    { }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QVariant currentValue() const override { return m_display.hertz(); }
    void setCurrentValue(const QVariant &value) override { m_display.setHertz(value.toDouble()); }
    QVariant minimumValue() const override { return m_display.lowestHz(); }
    QVariant maximumValue() const override { return m_display.highestHz(); }
    QVariant minimumStepSize() const override { return 1.0; }

private:
    FrequencyDisplay &m_display;
};

QAccessibleInterface *interfaceOf(const QString &, QObject *object)
{
    if (auto *display = qobject_cast<FrequencyDisplay *>(object))
        return new AccessibleFrequency(*display);
    if (auto *meter = qobject_cast<SMeter *>(object))
        return new QAccessibleWidget(meter, QAccessible::Indicator);
    if (qobject_cast<BandWidget *>(object) || qobject_cast<EqualizerCurve *>(object))
        return new QAccessibleWidget(static_cast<QWidget *>(object), QAccessible::Chart);
    return nullptr;
}
} // namespace

void installAccessibility()
{
    QAccessible::installFactory(interfaceOf); // a second time changes nothing
}
} // namespace host
