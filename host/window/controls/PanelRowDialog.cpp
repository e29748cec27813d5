// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/PanelRowDialog.h"

#include "window/controls/ShortcutField.h"

#include "panel/Panel.h"
#include "panel/PanelAction.h"
#include "settings/ReceptionMode.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace host
{
namespace
{
using Kind = PanelRow::Kind;

// What a person may want to choose from; others can be typed.
const QStringList kSpeeds = {
    "adaptive", "adaptive 5", "fixed 1", "fixed 5", "fixed 10", "fixed -1"};
const QStringList kSteps = {"1", "-1", "5", "-5", "10", "-10"};
const QStringList kFilters = {"1", "2", "3", "4", "5", "6", "7", "8", "9"};

constexpr int kLeastWidth = 460;
} // namespace

PanelRowDialog::PanelRowDialog(
    Panel &panel, const PanelRow &row, const QStringList &bands, Check check, QWidget *parent)
    : QDialog(parent), m_panel(panel), m_bands(bands), m_check(std::move(check)),
      m_kind(new QComboBox(this)), m_code(new QLineEdit(this)), m_up(new ShortcutField(this)),
      m_down(new ShortcutField(this)), m_action(new QComboBox(this)),
      m_argumentLabel(new QLabel(this)), m_argument(new QComboBox(this)),
      m_remark(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Key or knob"));
    build();
    fill(row);
    const auto examine = [this] { this->examine(); };
    connect(m_kind, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        fillActions();
        this->examine();
    });
    connect(m_action, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        fillArguments();
        this->examine();
    });
    for (QLineEdit *field : {m_code, (QLineEdit *)m_up, (QLineEdit *)m_down})
        connect(field, &QLineEdit::textChanged, this, examine);
    connect(m_argument, &QComboBox::currentTextChanged, this, examine);
    connect(&panel, &Panel::used, this, &PanelRowDialog::take);
    panel.setLearning(true);
    examine();
}

PanelRowDialog::~PanelRowDialog()
{
    m_panel.setLearning(false);
}

void PanelRowDialog::build()
{
    auto *layout = new QVBoxLayout(this);
    auto *hint = new QLabel(m_panel.isPresent()
            ? tr("Press the key or turn the knob on the panel, or choose by hand.")
            : tr("Shortcuts of the window work now; keys and knobs of a panel when it is there."),
        this);
    hint->setWordWrap(true);
    layout->addWidget(hint);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    m_kind->addItems({tr("Key of the panel"), tr("Knob of the panel"), tr("Shortcut of the window"),
        tr("Two shortcuts as a knob")});
    m_code->setPlaceholderText(tr("its name in Linux, as KEY_MUTE"));
    auto *controls = new QHBoxLayout;
    for (QLineEdit *field : {m_code, (QLineEdit *)m_up, (QLineEdit *)m_down})
        controls->addWidget(field);
    m_code->setAccessibleName(tr("Name of the key or knob"));
    m_up->setAccessibleName(tr("Shortcut, up"));
    m_down->setAccessibleName(tr("Shortcut, down"));
    m_argument->setEditable(true);
    const auto addRow = [&](QLabel *label, const QString &text, QWidget *field, auto *content) {
        label->setText(text);
        label->setBuddy(field);
        form->addRow(label, content);
    };
    addRow(new QLabel(this), tr("&What"), m_kind, m_kind);
    addRow(new QLabel(this), tr("&Key or knob"), m_code, controls);
    addRow(new QLabel(this), tr("&Does"), m_action, m_action);
    addRow(m_argumentLabel, {}, m_argument, m_argument);
    m_remark->setWordWrap(true);
    m_remark->setMinimumHeight(2 * fontMetrics().height());
    layout->addWidget(m_remark);
    layout->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    setMinimumWidth(kLeastWidth);
}

bool PanelRowDialog::isKnob() const
{
    const auto kind = Kind(m_kind->currentIndex());
    return kind == Kind::Knob || kind == Kind::Turn;
}

void PanelRowDialog::fill(const PanelRow &row)
{
    m_kind->setCurrentIndex(int(row.kind));
    if (row.kind == Kind::Key || row.kind == Kind::Knob) {
        m_code->setText(row.control);
    } else {
        m_up->setText(row.control.section(' ', 0, 0));
        m_down->setText(row.control.section(' ', 1, 1));
    }
    fillActions();
    m_action->setCurrentIndex(std::max(0, m_action->findData(row.action)));
    fillArguments();
    m_argument->setEditText(row.argument);
}

PanelRow PanelRowDialog::row() const
{
    const auto kind = Kind(m_kind->currentIndex());
    const QString control = kind == Kind::Turn ? m_up->text() + ' ' + m_down->text()
        : kind == Kind::Shortcut               ? m_up->text()
                                               : m_code->text();
    return {kind, control.simplified(), m_action->currentData().toString(),
        m_argument->currentText().simplified()};
}

void PanelRowDialog::take(bool isKnob, const QString &code)
{
    m_kind->setCurrentIndex(int(isKnob ? Kind::Knob : Kind::Key));
    m_code->setText(code);
}

/// Keeps the action where the new kind has it.
void PanelRowDialog::fillActions()
{
    const QVariant before = m_action->currentData();
    const QSignalBlocker quiet(m_action);
    m_action->clear();
    for (const PanelAction &action : PanelAction::table())
        if (!isKnob() || action.turn)
            m_action->addItem(QString("%1  (%2)").arg(action.help(), action.name), action.name);
    m_action->setCurrentIndex(std::max(0, m_action->findData(before)));
    fillArguments();
}

void PanelRowDialog::fillArguments()
{
    const QSignalBlocker quiet(m_argument);
    m_argument->clear();
    m_argumentLabel->setText(isKnob() ? tr("&Speed") : tr("W&ith"));
    if (isKnob()) {
        m_argument->addItems(kSpeeds);
        return;
    }
    const PanelAction *action = PanelAction::find(m_action->currentData().toString());
    m_argument->setEnabled(action && !action->argument.isEmpty());
    if (!m_argument->isEnabled())
        return;
    for (const QString &part : action->argument.split('|')) {
        const QStringList choices = part == "MODE" ? modeNames()
            : part == "NAME"                       ? m_bands
            : part == "NUMBER"                     ? kFilters
            : part == "STEPS"                      ? kSteps
            : part == "KEYS"                       ? QStringList()
                                                   : QStringList(part);
        m_argument->addItems(choices);
    }
}

void PanelRowDialog::examine()
{
    const auto kind = Kind(m_kind->currentIndex());
    m_code->setVisible(kind == Kind::Key || kind == Kind::Knob);
    m_up->setVisible(!m_code->isVisibleTo(this));
    m_down->setVisible(kind == Kind::Turn);
    const QString problem = m_check(row());
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(problem.isEmpty());
    m_remark->setText(!problem.isEmpty() ? problem
            : isKnob() ? tr("adaptive: one step a click turned slowly, many turned fast. fixed: so "
                            "many steps a click, below 0 the other way round.")
                       : QString());
}
} // namespace host
