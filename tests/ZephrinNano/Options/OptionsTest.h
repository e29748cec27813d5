// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QPointF>
#include <QWheelEvent>
#include <QWidget>

namespace test
{
/// What holds the value of a control.
inline const char *valueOf(const QWidget *control)
{
    if (qobject_cast<const QComboBox *>(control))
        return "currentIndex";
    return qobject_cast<const QCheckBox *>(control) ? "checked" : "value";
}

inline QWidget *control(const QWidget &page, const char *name)
{
    auto *found = page.findChild<QWidget *>(name);
    if (!found)
        qFatal("no control %s", name);
    return found;
}

inline double shown(const QWidget &page, const char *name)
{
    const QWidget *box = control(page, name);
    return box->property(valueOf(box)).toDouble();
}

inline void turn(const QWidget &page, const char *name, double value)
{
    QWidget *box = control(page, name);
    box->setProperty(valueOf(box), value);
}

/// One notch upwards. True if the control kept the event from what lies below it.
inline bool turnWheel(QWidget *over)
{
    QWheelEvent event(QPointF(2, 2), over->mapToGlobal(QPoint(2, 2)), QPoint(), QPoint(0, 120),
        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(over, &event);
    return event.isAccepted();
}
} // namespace test
