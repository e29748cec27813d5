// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frame/TabOrder.h"

#include <QLayout>
#include <QScrollArea>
#include <QSplitter>
#include <QVector>
#include <QWidget>

namespace host
{
namespace
{
void collect(QWidget &widget, QVector<QWidget *> &stops);

void collect(QLayout &layout, QVector<QWidget *> &stops)
{
    for (int i = 0; i < layout.count(); ++i) {
        if (QWidget *widget = layout.itemAt(i)->widget())
            collect(*widget, stops);
        else if (QLayout *inner = layout.itemAt(i)->layout())
            collect(*inner, stops);
    }
}

void collect(QWidget &widget, QVector<QWidget *> &stops)
{
    if (widget.focusPolicy() & Qt::TabFocus)
        stops += &widget;
    if (const auto *area = qobject_cast<const QScrollArea *>(&widget)) {
        if (area->widget())
            collect(*area->widget(), stops);
    } else if (const auto *splitter = qobject_cast<const QSplitter *>(&widget)) {
        for (int i = 0; i < splitter->count(); ++i)
            collect(*splitter->widget(i), stops);
    } else if (widget.layout()) {
        collect(*widget.layout(), stops);
    }
}
} // namespace

void orderTabs(QWidget &window)
{
    QVector<QWidget *> stops;
    collect(window, stops);
    for (int i = 1; i < stops.size(); ++i)
        QWidget::setTabOrder(stops[i - 1], stops[i]);
}
} // namespace host
