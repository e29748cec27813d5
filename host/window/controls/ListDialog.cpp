// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/ListDialog.h"

#include <QHeaderView>
#include <QTableView>

namespace host
{
void ListDialog::prepare(QTableView &table)
{
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setTabKeyNavigation(false); // else Tab would never leave it
    table.verticalHeader()->hide();
    table.horizontalHeader()->setStretchLastSection(true);
}
} // namespace host
