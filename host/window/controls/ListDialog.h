// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Language.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>

class QTableView;

namespace host
{
/// A dialog around a table, with a row of buttons below. GUI thread.
class ListDialog : public QDialog
{
public:
    using QDialog::QDialog;

protected:
    /// Whole rows are chosen; Tab goes on to the next control instead of the next cell.
    static void prepare(QTableView &table);

    /// A button at the end of the row whose text is translated in the dialog's context. Enter
    /// belongs to the table: it presses none but one that is made the default.
    template <typename Dialog, typename Slot>
    static QPushButton *addButton(QHBoxLayout &row, Dialog *dialog, const char *text, Slot slot)
    {
        auto *button = new QPushButton(dialog);
        say(button, [button, text] { button->setText(Dialog::tr(text)); });
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, dialog, slot);
        row.addWidget(button);
        return button;
    }
};
} // namespace host
