// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStringList>
#include <QWidget>

namespace test
{
/// What can be read in a widget and all that belongs to it, menus and help included.
inline QStringList textsIn(const QWidget &window)
{
    static const char *const kProperties[] = {"text", "title", "windowTitle", "toolTip",
        "placeholderText", "accessibleName", "accessibleDescription", "suffix"};
    QStringList texts;
    auto widgets = window.findChildren<QWidget *>();
    widgets.prepend(const_cast<QWidget *>(&window));
    for (const QWidget *widget : widgets) {
        for (const char *property : kProperties)
            texts += widget->property(property).toString();
        if (const auto *box = qobject_cast<const QComboBox *>(widget))
            for (int i = 0; i < box->count(); ++i)
                texts += box->itemText(i);
        for (const QAction *action : widget->actions())
            texts += action->text();
    }
    texts.removeAll(QString());
    return texts;
}

/// The size of letters on a desktop that was not changed: what fits there.
inline void useUsualFont()
{
    QFont font("DejaVu Sans");
    font.setPixelSize(12);
    QApplication::setFont(font);
}

/// The letter that Alt goes to; none: a null sign.
inline QChar mnemonicOf(const QString &text)
{
    const QString plain = QString(text).replace("&&", "  ");
    const int at = plain.indexOf('&');
    return at >= 0 && at + 1 < plain.size() ? plain[at + 1].toLower() : QChar();
}

/// Letters that more than one of the texts has.
inline QString twice(const QStringList &texts)
{
    QString seen, again;
    for (const QString &text : texts) {
        const QChar letter = mnemonicOf(text);
        if (letter.isNull())
            continue;
        (seen.contains(letter) ? again : seen) += letter;
    }
    return again;
}
} // namespace test
