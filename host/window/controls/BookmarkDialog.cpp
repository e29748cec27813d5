// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/BookmarkDialog.h"

#include "memory/BookmarkField.h"
#include "memory/RadioMemory.h"
#include "settings/Language.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace host
{
BookmarkDialog::BookmarkDialog(RadioMemory &memory, QWidget *parent)
    : ListDialog(parent), m_memory(memory), m_search(memory.bookmarks()),
      m_field(new QLineEdit(this)), m_table(new QTableView(this))
{
    resize(680, 460);
    auto *layout = new QVBoxLayout(this);
    m_field->setClearButtonEnabled(true);
    connect(m_field, &QLineEdit::textChanged, this,
        [this](const QString &text) { m_search.setText(text); });
    layout->addWidget(m_field);
    m_table->setModel(&m_search);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(kFrequencyField, Qt::AscendingOrder);
    prepare(*m_table);
    m_table->resizeColumnsToContents();
    layout->addWidget(m_table, 1);
    auto *row = new QHBoxLayout;
    addButton(*row, this, QT_TR_NOOP("&Go"), &BookmarkDialog::go)->setDefault(true);
    addButton(*row, this, QT_TR_NOOP("&Add what is heard"), &BookmarkDialog::add);
    addButton(*row, this, QT_TR_NOOP("&Remove"), &BookmarkDialog::remove);
    row->addStretch(1);
    addButton(*row, this, QT_TR_NOOP("&Import…"), &BookmarkDialog::importFile);
    addButton(*row, this, QT_TR_NOOP("&Export…"), &BookmarkDialog::exportFile);
    addButton(*row, this, QT_TR_NOOP("&Close"), &QDialog::accept);
    layout->addLayout(row);
    say(this, [this] {
        setWindowTitle(tr("Bookmarks"));
        m_field->setPlaceholderText(tr("Search"));
        m_field->setAccessibleName(tr("Search in the bookmarks"));
        m_table->setAccessibleName(tr("Bookmarks"));
    });
}

void BookmarkDialog::go()
{
    const QModelIndex index = m_table->currentIndex();
    if (index.isValid())
        m_memory.goTo(m_memory.bookmarks().at(m_search.mapToSource(index).row()));
}

void BookmarkDialog::add()
{
    m_field->clear(); // or the search would not show it
    const int row = m_memory.bookmarks().add(m_memory.here(tr("new")));
    const QModelIndex index = m_search.mapFromSource(m_memory.bookmarks().index(row, 0));
    m_table->setCurrentIndex(index);
    m_table->edit(index);
}

void BookmarkDialog::remove()
{
    const QModelIndex index = m_table->currentIndex();
    if (index.isValid())
        m_search.removeRow(index.row());
}

void BookmarkDialog::importFile()
{
    const QString file =
        QFileDialog::getOpenFileName(this, tr("Import bookmarks"), {}, tr("Tables (*.csv)"));
    if (file.isEmpty())
        return;
    BookmarkModel::Import import;
    if (!m_memory.bookmarks().importFile(file, &import))
        tell(m_memory.bookmarks().error());
    else
        tell(
            (QStringList{tr("%1 added, %2 were there already.").arg(import.added).arg(import.known)}
                + import.problems)
                .join('\n'));
}

void BookmarkDialog::exportFile()
{
    const QString file = QFileDialog::getSaveFileName(
        this, tr("Export bookmarks"), "bookmarks.csv", tr("Tables (*.csv)"));
    if (!file.isEmpty() && !m_memory.bookmarks().exportFile(file))
        tell(m_memory.bookmarks().error());
}

void BookmarkDialog::tell(const QString &text)
{
    QMessageBox::information(this, windowTitle(), text);
}
} // namespace host
