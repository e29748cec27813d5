// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/ChoiceGrid.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QToolButton>

namespace host
{
ChoiceGrid::ChoiceGrid(const QString &subject, int columns, QWidget *parent)
    : QWidget(parent), m_subject(subject), m_columns(columns), m_layout(new QGridLayout(this)),
      m_group(new QButtonGroup(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(3);
    for (int column = 0; column < columns; ++column)
        m_layout->setColumnStretch(column, 1);
    connect(m_group, &QButtonGroup::idClicked, this, [this](int i) { emit clicked(i); });
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
        button->setProperty("role", "choice");
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        m_layout->addWidget(button, i / m_columns, i % m_columns);
        m_group->addButton(button, i);
        m_buttons += button;
    }
    for (int i = 0; i < texts.size(); ++i) {
        m_buttons[i]->setText(texts[i]);
        m_buttons[i]->setAccessibleName(m_subject + ' ' + texts[i]);
    }
}

void ChoiceGrid::setChosen(int i)
{
    // An exclusive group lets nothing be up.
    m_group->setExclusive(false);
    for (int k = 0; k < m_buttons.size(); ++k)
        m_buttons[k]->setChecked(k == i);
    m_group->setExclusive(i >= 0);
}
} // namespace host
