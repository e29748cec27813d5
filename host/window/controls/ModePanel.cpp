// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/ModePanel.h"

#include "window/controls/ChoiceGrid.h"

#include "radio/Radio.h"
#include "settings/Language.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>

namespace host
{
namespace
{
constexpr int kColumns = 4;
constexpr int kFilterColumns = 5;
constexpr int kEdgeStepHz = 50;
} // namespace

ModePanel::ModePanel(Radio &radio, QWidget *parent)
    : QWidget(parent), m_radio(radio),
      m_modes(new ChoiceGrid(QT_TRANSLATE_NOOP("ChoiceGrid", "Mode"), kColumns, this)),
      m_filters(new ChoiceGrid(QT_TRANSLATE_NOOP("ChoiceGrid", "Filter"), kFilterColumns, this)),
      m_low(new QSpinBox(this)), m_high(new QSpinBox(this)), m_more(new QToolButton(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_modes);
    layout->addSpacing(4);
    layout->addWidget(m_filters);
    auto *edges = new QHBoxLayout;
    edges->setSpacing(4);
    for (QSpinBox *box : {m_low, m_high}) {
        box->setSingleStep(kEdgeStepHz);
        box->setKeyboardTracking(false);
        edges->addWidget(box, 1);
    }
    m_more->setText(QStringLiteral("…"));
    m_more->setFocusPolicy(Qt::StrongFocus);
    m_more->setPopupMode(QToolButton::InstantPopup);
    auto *menu = new QMenu(m_more);
    QAction *add = menu->addAction(QString(), &radio, &Radio::addFilter);
    QAction *remove = menu->addAction(QString(), this,
        [this] { m_radio.removeFilter(m_radio.filters().chosen(m_radio.mode())); });
    QAction *restore = menu->addAction(QString(), &radio, &Radio::restoreFilters);
    connect(menu, &QMenu::aboutToShow, this, [this, add, remove] {
        const bool isOne = m_radio.filters().chosen(m_radio.mode()) >= 0;
        add->setEnabled(!isOne);
        remove->setEnabled(isOne && m_radio.filters().filters(m_radio.mode()).size() > 1);
    });
    m_more->setMenu(menu);
    edges->addWidget(m_more);
    layout->addLayout(edges);
    say(this, [this, add, remove, restore] {
        const auto name = [](QWidget *control, const QString &name) {
            control->setAccessibleName(name);
            control->setToolTip(name);
        };
        name(m_low, tr("Lower edge of the filter"));
        name(m_high, tr("Upper edge of the filter"));
        name(m_more, tr("Add and remove filters"));
        for (QSpinBox *box : {m_low, m_high})
            box->setSuffix(tr(" Hz"));
        add->setText(tr("&Add these edges"));
        remove->setText(tr("&Remove this filter"));
        restore->setText(tr("&Standard filters of the mode"));
        showFilters();
    });

    QStringList names;
    for (const auto &item : radio.functions().listModes())
        names += item.name;
    m_modes->setTexts(names);
    connect(m_modes, &ChoiceGrid::clicked, this,
        [this](int i) { m_radio.setMode(m_radio.functions().listModes()[i].mode); });
    connect(m_filters, &ChoiceGrid::clicked, this, [this](int i) {
        m_radio.chooseFilter(i);
        showEdges();
    });
    connect(m_low, qOverload<int>(&QSpinBox::valueChanged), this,
        [this](int hertz) { m_radio.moveFilterLow(hertz); });
    connect(m_high, qOverload<int>(&QSpinBox::valueChanged), this,
        [this](int hertz) { m_radio.moveFilterHigh(hertz); });
    connect(&radio, &Radio::modeChanged, this, &ModePanel::showMode);
    connect(&radio, &Radio::activeChanged, this, &ModePanel::showMode);
    connect(&radio, &Radio::filtersChanged, this, &ModePanel::showFilters);
    connect(&radio, &Radio::filterChanged, this, &ModePanel::showEdges);
    showMode();
}

void ModePanel::showMode()
{
    const auto modes = m_radio.functions().listModes();
    for (int i = 0; i < modes.size(); ++i)
        if (modes[i].mode == m_radio.mode())
            m_modes->setChosen(i);
    showFilters();
}

void ModePanel::showFilters()
{
    QStringList names;
    for (const auto &filter : m_radio.filters().filters(m_radio.mode()))
        names += filter.name;
    m_filters->setTexts(names);
    const auto &filters = m_radio.filters().filters(m_radio.mode());
    for (int i = 0; i < filters.size(); ++i)
        m_filters->button(i).setToolTip(
            tr("%1 to %2 Hz").arg(filters[i].edges.lowHz).arg(filters[i].edges.highHz));
    showEdges();
}

void ModePanel::showEdges()
{
    const Mode mode = m_radio.mode();
    const auto [low, high] = m_radio.filterEdges();
    const auto [lowest, highest] = m_radio.functions().filterLimits(mode);
    const bool isFree = !m_radio.functions().isLockFilter(mode);
    for (QSpinBox *box : {m_low, m_high}) {
        const QSignalBlocker quiet(box);
        box->setRange(int(lowest), int(highest));
        box->setValue(int(std::lround(box == m_low ? low : high)));
        box->setEnabled(isFree);
    }
    m_filters->setChosen(m_radio.filters().chosen(mode));
}
} // namespace host
