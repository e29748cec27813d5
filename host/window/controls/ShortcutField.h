// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>

namespace host
{
/// Takes one shortcut by its being pressed: "Ctrl+M". Tab, Enter and Escape go their usual way,
/// Backspace empties it. GUI thread.
class ShortcutField : public QLineEdit
{
    Q_OBJECT

public:
    explicit ShortcutField(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
} // namespace host
