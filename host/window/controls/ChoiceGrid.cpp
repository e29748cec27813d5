// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/ChoiceGrid.h"

#include "settings/Language.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QToolButton>

#include <algorithm>

namespace host
{
ChoiceGrid::ChoiceGrid(const char *subject, int columns, QWidget *parent)
    : QWidget(parent), m_subject(subject), m_columns(columns), m_layout(new QGridLayout(this)),
      m_group(new QButtonGroup(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(3);
    for (int column = 0; column < columns; ++column)
        m_layout->setColumnStretch(column, 1);
    connect(m_group, &QButtonGroup::idClicked, this, [this](int i) { emit clicked(i); });
    say(this, [this] { nameButtons(); });
}

void ChoiceGrid::setTexts(const QStringList &texts)
{
    while (m_buttons.size() > texts.size())
        delete m_buttons.takeLast();
    while (m_buttons.size() < texts.size()) {
        const int i = m_buttons.size();
        auto *button = new QToolButton(this);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        button->setProperty("role", "choice");
        button->installEventFilter(this);
        m_layout->addWidget(button, i / m_columns, i % m_columns);
        m_group->addButton(button, i);
        if (i > 0)
            setTabOrder(m_buttons.last(), button);
        m_buttons += button;
    }
    for (int i = 0; i < texts.size(); ++i)
        m_buttons[i]->setText(texts[i]);
    nameButtons();
}

void ChoiceGrid::nameButtons()
{
    const QString subject = QCoreApplication::translate("ChoiceGrid", m_subject);
    for (QToolButton *button : qAsConst(m_buttons))
        button->setAccessibleName(subject + ' ' + button->text());
}

void ChoiceGrid::setChosen(int i)
{
    // An exclusive group lets nothing be up.
    m_group->setExclusive(false);
    for (int k = 0; k < m_buttons.size(); ++k) {
        m_buttons[k]->setChecked(k == i);
        m_buttons[k]->setFocusPolicy(k == std::max(i, 0) ? Qt::StrongFocus : Qt::ClickFocus);
    }
    m_group->setExclusive(i >= 0);
}

/// Qt's own arrows choose on their way, and go nowhere from where none is down.
bool ChoiceGrid::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(object, event);
    const auto &press = static_cast<const QKeyEvent &>(*event);
    const int by = press.key() == Qt::Key_Right ? 1
        : press.key() == Qt::Key_Left           ? -1
        : press.key() == Qt::Key_Down           ? m_columns
        : press.key() == Qt::Key_Up             ? -m_columns
                                                : 0;
    if (by == 0 || (press.modifiers() & ~Qt::KeypadModifier))
        return QWidget::eventFilter(object, event);
    const int to = m_buttons.indexOf(static_cast<QToolButton *>(object)) + by;
    if (to >= 0 && to < m_buttons.size())
        m_buttons[to]->setFocus(Qt::TabFocusReason);
    return true;
}
} // namespace host
