// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/ShortcutField.h"

#include <QKeyEvent>
#include <QKeySequence>

namespace host
{
namespace
{
bool isModifier(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt
        || key == Qt::Key_Meta || key == Qt::Key_AltGr || key == Qt::Key_unknown || key == 0;
}
} // namespace

ShortcutField::ShortcutField(QWidget *parent) : QLineEdit(parent)
{
    setPlaceholderText(tr("press it"));
    setContextMenuPolicy(Qt::NoContextMenu);
}

/// Else the buttons' mnemonics would take theirs first.
bool ShortcutField::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride)
        event->accept();
    return QLineEdit::event(event);
}

void ShortcutField::keyPressEvent(QKeyEvent *event)
{
    const bool isPlain = event->modifiers() == Qt::NoModifier;
    if (isPlain && event->key() == Qt::Key_Backspace)
        return clear();
    if (isPlain
        && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter
            || event->key() == Qt::Key_Escape))
        return QLineEdit::keyPressEvent(event);
    if (isModifier(event->key()))
        return;
    const int modifiers = int(event->modifiers()) & ~int(Qt::KeypadModifier);
    setText(QKeySequence(modifiers | event->key()).toString(QKeySequence::PortableText));
}
} // namespace host
