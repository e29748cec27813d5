// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "window/controls/ListDialog.h"

#include "memory/BookmarkSearch.h"

class QLineEdit;
class QTableView;

namespace host
{
class RadioMemory;

/// The bookmarks in a table with a search; "Go" tunes to the chosen one, a double click on a cell
/// edits it. GUI thread.
class BookmarkDialog : public ListDialog
{
    Q_OBJECT

public:
    /// The memory must outlive the dialog.
    explicit BookmarkDialog(RadioMemory &memory, QWidget *parent = nullptr);

private:
    void go();
    void add();
    void remove();
    void importFile();
    void exportFile();
    void tell(const QString &text);

    RadioMemory &m_memory;
    BookmarkSearch m_search;
    QLineEdit *m_field;  // child
    QTableView *m_table; // child
};
} // namespace host
