// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/PanelDialog.h"

#include "window/controls/PanelRowDialog.h"

#include "panel/Panel.h"
#include "panel/PanelAction.h"
#include "settings/Language.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace host
{
namespace
{
enum Column { Control, Action, Argument, Help, Columns };
} // namespace

PanelDialog::PanelDialog(Panel &panel, const QStringList &bands, QWidget *parent)
    : ListDialog(parent), m_panel(panel), m_bands(bands), m_text(panel.text()),
      m_device(new QComboBox(this)), m_grab(new QCheckBox(this)), m_presence(new QLabel(this)),
      m_table(new QTableWidget(0, Columns, this))
{
    resize(660, 440);
    new QVBoxLayout(this);
    addDevice();
    addTable();
    addButtons();
    connect(&panel, &Panel::presentChanged, this, &PanelDialog::showDevice);
    say(this, [this] {
        setWindowTitle(tr("Keys and knobs"));
        m_table->setAccessibleName(tr("Keys and knobs"));
        m_table->setHorizontalHeaderLabels(
            {tr("Key or knob"), tr("Action"), tr("With"), tr("What it does")});
        m_grab->setText(tr("for the receiver &only"));
        m_grab->setToolTip(tr("Its keys and knobs go to no other program"));
        m_device->lineEdit()->setPlaceholderText(tr("none; a part of its name, or its file"));
        fill();
    });
}

PanelDialog::~PanelDialog()
{
    // A field that loses the focus as it goes says that it was edited.
    disconnect(m_device->lineEdit(), nullptr, this, nullptr);
}

void PanelDialog::addDevice()
{
    auto *row = new QHBoxLayout;
    auto *label = new QLabel(this);
    say(label, [label] { label->setText(tr("&Input device")); });
    label->setBuddy(m_device);
    row->addWidget(label);
    m_device->setEditable(true);
    m_device->setInsertPolicy(QComboBox::NoInsert);
    m_device->addItem({});
    m_device->addItems(PanelInput::devices());
    m_device->setEditText(m_text.device());
    row->addWidget(m_device, 1);
    m_grab->setChecked(m_text.isGrabbing());
    row->addWidget(m_grab);
    auto *all = static_cast<QVBoxLayout *>(layout());
    all->addLayout(row);
    all->addWidget(m_presence);
    connect(m_device->lineEdit(), &QLineEdit::editingFinished, this, &PanelDialog::setDevice);
    connect(m_device, qOverload<int>(&QComboBox::activated), this, &PanelDialog::setDevice);
    connect(m_grab, &QCheckBox::clicked, this, &PanelDialog::setDevice);
}

void PanelDialog::addTable()
{
    prepare(*m_table);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    layout()->addWidget(m_table);
    connect(m_table, &QTableWidget::cellActivated, this, &PanelDialog::change);
}

void PanelDialog::addButtons()
{
    auto *row = new QHBoxLayout;
    addButton(*row, this, QT_TR_NOOP("&Add…"), &PanelDialog::add);
    m_change = addButton(*row, this, QT_TR_NOOP("C&hange…"), &PanelDialog::change);
    m_remove = addButton(*row, this, QT_TR_NOOP("&Remove"), &PanelDialog::remove);
    row->addStretch(1);
    addButton(*row, this, QT_TR_NOOP("&Close"), &QDialog::accept);
    static_cast<QVBoxLayout *>(layout())->addLayout(row);
}

void PanelDialog::fill()
{
    const int chosen = m_table->currentRow();
    m_table->setRowCount(m_text.count());
    for (int i = 0; i < m_text.count(); ++i) {
        const PanelRow row = m_text.row(i);
        const PanelAction *action = PanelAction::find(row.action);
        const QString problem = m_text.problemOf(i);
        const QString help = !problem.isEmpty() ? tr("left out: %1").arg(problem)
            : action                            ? action->help()
                                                : QString();
        int column = 0;
        for (const QString &text : {row.control, row.action, row.argument, help})
            m_table->setItem(i, column++, new QTableWidgetItem(text));
    }
    m_table->resizeColumnsToContents();
    if (m_text.count() > 0)
        m_table->selectRow(std::clamp(chosen, 0, m_text.count() - 1));
    m_change->setEnabled(m_text.count() > 0);
    m_remove->setEnabled(m_text.count() > 0);
    showDevice();
}

void PanelDialog::showDevice()
{
    m_presence->setText(m_panel.isPresent() ? tr("The device is there.")
            : !m_text.device().isEmpty()    ? tr("The device is not there; it is waited for.")
            : PanelInput::devices().isEmpty()
            ? tr("No input device can be read; on Debian that needs the group \"input\".")
            : tr("No device is chosen."));
}

void PanelDialog::setDevice()
{
    PanelText text = m_text;
    text.setDevice(m_device->currentText());
    text.setGrabbing(m_grab->isChecked());
    if (text.text() != m_text.text())
        store(text);
}

void PanelDialog::add()
{
    PanelRow row;
    if (!m_panel.isPresent())
        row.kind = PanelRow::Kind::Shortcut;
    edit(m_text.count(), row);
}

void PanelDialog::change()
{
    if (m_table->currentRow() >= 0)
        edit(m_table->currentRow(), m_text.row(m_table->currentRow()));
}

void PanelDialog::edit(int place, const PanelRow &begin)
{
    PanelRowDialog dialog(
        m_panel, begin, m_bands,
        [this, place](const PanelRow &row) { return problemOf(row, place); }, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    PanelText text = m_text;
    if (place < text.count())
        text.setRow(place, dialog.row());
    else
        text.add(dialog.row());
    if (store(text))
        m_table->selectRow(place);
}

void PanelDialog::remove()
{
    if (m_table->currentRow() < 0)
        return;
    PanelText text = m_text;
    text.remove(m_table->currentRow());
    store(text);
}

bool PanelDialog::store(const PanelText &text)
{
    const bool isStored = m_panel.save(text.text());
    if (isStored)
        m_text = text;
    else
        QMessageBox::warning(this, windowTitle(), m_panel.error());
    fill();
    return isStored;
}

QString PanelDialog::problemOf(const PanelRow &row, int place) const
{
    PanelText text = m_text;
    if (place < text.count())
        text.setRow(place, row);
    else
        text.add(row);
    const QString problem = text.problemOf(place);
    return problem.isEmpty() ? takenBy(row) : problem;
}

/// Two owners of a shortcut would both lose it.
QString PanelDialog::takenBy(const PanelRow &row) const
{
    if (!parentWidget() || row.kind == PanelRow::Kind::Key || row.kind == PanelRow::Kind::Knob)
        return {};
    for (const QString &keys : row.control.split(' '))
        for (const QAction *action : parentWidget()->findChildren<QAction *>())
            if (action->shortcut() == QKeySequence(keys, QKeySequence::PortableText))
                return tr("%1 is that of \"%2\" in the menu").arg(keys, action->text().remove('&'));
    return {};
}
} // namespace host
