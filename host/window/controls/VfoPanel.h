// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QComboBox;
class QSpinBox;
class QToolButton;

namespace host
{
class FrequencyDisplay;
class Radio;

/// Both frequencies and what is done with them: swap, copy, split listening, lock, step, RIT. GUI
/// thread.
class VfoPanel : public QWidget
{
    Q_OBJECT

public:
    explicit VfoPanel(Radio &radio, QWidget *parent = nullptr);

    /// Lets a whole frequency be typed for the active VFO.
    void editFrequency();

    FrequencyDisplay &displayA() { return *m_a; }
    FrequencyDisplay &displayB() { return *m_b; }

private:
    void showAll();

    Radio &m_radio;
    FrequencyDisplay *m_a; // children
    FrequencyDisplay *m_b;
    QToolButton *m_split;
    QToolButton *m_lock;
    QComboBox *m_step;
    QSpinBox *m_rit;
};
} // namespace host
