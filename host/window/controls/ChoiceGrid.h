// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QVector>
#include <QWidget>

class QButtonGroup;
class QGridLayout;
class QToolButton;

namespace host
{
/// Buttons in rows of equal width, of which at most one is down: modes, filters, bands. Tab goes to
/// the one that is down, or to the first; arrow keys go on from there, space chooses. GUI thread.
class ChoiceGrid : public QWidget
{
    Q_OBJECT

public:
    /// `subject` is what is chosen, for who cannot see it: "Mode"; to be translated in the context
    /// "ChoiceGrid".
    ChoiceGrid(const char *subject, int columns, QWidget *parent = nullptr);

    void setTexts(const QStringList &texts);
    int count() const { return m_buttons.size(); }
    QToolButton &button(int i) { return *m_buttons.at(i); }

    /// -1: none is down.
    void setChosen(int i);

signals:
    void clicked(int i);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void nameButtons();

    const char *const m_subject;
    const int m_columns;
    QGridLayout *m_layout; // children
    QButtonGroup *m_group;
    QVector<QToolButton *> m_buttons;
};
} // namespace host
