// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/NotchDialog.h"

#include "window/frequency/FrequencyText.h"

#include "radio/Radio.h"
#include "settings/Language.h"
#include "settings/NotchLimits.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace host
{
namespace
{
enum Column { On, Frequency, Width, Columns };
constexpr double kWidthHz = 200.0;
} // namespace

NotchDialog::NotchDialog(Radio &radio, QWidget *parent)
    : QDialog(parent), m_radio(radio),
      m_table(new QTableWidget(int(NotchLimits::kFilters), Columns, this)),
      m_on(new QCheckBox(this))
{
    resize(380, 380);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_on);
    layout->addWidget(m_table, 1);
    m_table->setTabKeyNavigation(false); // else Tab would never leave it
    m_table->horizontalHeader()->setSectionResizeMode(Frequency, QHeaderView::Stretch);
    auto *row = new QHBoxLayout;
    auto *add = new QPushButton(this);
    connect(add, &QPushButton::clicked, this,
        [this] { m_radio.addNotch(m_radio.receivedHz(), kWidthHz); });
    row->addWidget(add);
    auto *remove = new QPushButton(this);
    connect(remove, &QPushButton::clicked, this, [this] {
        if (m_table->currentRow() >= 0)
            m_radio.removeNotch(std::size_t(m_table->currentRow()));
    });
    row->addWidget(remove);
    row->addStretch(1);
    auto *close = new QPushButton(this);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    row->addWidget(close);
    layout->addLayout(row);
    say(this, [this, add, remove, close] {
        setWindowTitle(tr("Notch filters"));
        m_on->setText(tr("&Notch filters of this band are on"));
        m_table->setHorizontalHeaderLabels({tr("On"), tr("Frequency"), tr("Width, Hz")});
        m_table->setAccessibleName(tr("Notch filters of this band"));
        add->setText(tr("&Add at the VFO"));
        remove->setText(tr("&Remove"));
        close->setText(tr("&Close"));
    });
    connect(m_on, &QCheckBox::toggled, this,
        [this](bool on) { m_radio.notches().setBandEnabled(m_radio.notchBand(), on); });
    connect(m_table, &QTableWidget::itemChanged, this, [this](const QTableWidgetItem *item) {
        if (!m_isFilling)
            take(item->row());
    });
    connect(&radio, &Radio::notchesChanged, this, &NotchDialog::fill, Qt::QueuedConnection);
    connect(&radio, &Radio::centerChanged, this, &NotchDialog::fill, Qt::QueuedConnection);
    fill();
}

void NotchDialog::fill()
{
    m_isFilling = true;
    const std::size_t band = m_radio.notchBand();
    m_on->setChecked(m_radio.notches().bandEnabled(band));
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const auto notch = m_radio.notches().filter(band, std::size_t(row));
        const bool isUsed = notch.enable || notch.freq > 0.0;
        auto *on = new QTableWidgetItem;
        on->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        on->setCheckState(notch.enable ? Qt::Checked : Qt::Unchecked);
        m_table->setItem(row, On, on);
        m_table->setItem(
            row, Frequency, new QTableWidgetItem(isUsed ? frequencyText(notch.freq) : QString()));
        m_table->setItem(
            row, Width, new QTableWidgetItem(isUsed ? QLocale().toString(notch.width) : QString()));
    }
    m_isFilling = false;
}

/// What cannot be a notch is shown as it was before.
void NotchDialog::take(int row)
{
    const auto hertz = frequencyFrom(m_table->item(row, Frequency)->text());
    bool isNumber = false;
    const double width = QLocale().toDouble(m_table->item(row, Width)->text(), &isNumber);
    const bool on = m_table->item(row, On)->checkState() == Qt::Checked;
    if (hertz || on)
        m_radio.notches().setFilter(m_radio.notchBand(), std::size_t(row),
            {isNumber ? width : kWidthHz, hertz.value_or(m_radio.receivedHz()), on});
    QMetaObject::invokeMethod(this, &NotchDialog::fill, Qt::QueuedConnection);
}
} // namespace host
