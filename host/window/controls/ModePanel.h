// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QSpinBox;
class QToolButton;

namespace host
{
class ChoiceGrid;
class Radio;

/// Modes and the filters of the mode, both from the device's tables; edges of the filter in hertz,
/// and adding and removing filters. GUI thread.
class ModePanel : public QWidget
{
    Q_OBJECT

public:
    explicit ModePanel(Radio &radio, QWidget *parent = nullptr);

private:
    void showMode();
    void showFilters();
    void showEdges();

    Radio &m_radio;
    ChoiceGrid *m_modes; // children
    ChoiceGrid *m_filters;
    QSpinBox *m_low;
    QSpinBox *m_high;
    QToolButton *m_more;
};
} // namespace host
