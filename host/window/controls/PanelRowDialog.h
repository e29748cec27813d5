// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/PanelRow.h"

#include <QDialog>

#include <functional>

class QComboBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;

namespace host
{
class Panel;
class ShortcutField;

/// What a key or knob does. While the dialog is there, a key that is pressed or a knob that is
/// turned on the panel is the one meant, and does nothing else. GUI thread.
class PanelRowDialog : public QDialog
{
    Q_OBJECT

public:
    /// Tells why a row cannot be, empty if it can.
    using Check = std::function<QString(const PanelRow &)>;

    /// The panel must outlive the dialog. `bands`: names that can be gone to.
    PanelRowDialog(Panel &panel, const PanelRow &row, const QStringList &bands, Check check,
        QWidget *parent = nullptr);
    ~PanelRowDialog() override;

    PanelRow row() const;

private:
    void build();
    void fill(const PanelRow &row);
    void take(bool isKnob, const QString &code);
    void fillActions();
    void fillArguments();
    void examine();
    bool isKnob() const;

    Panel &m_panel;
    QStringList m_bands;
    Check m_check;
    QComboBox *m_kind; // children
    QLineEdit *m_code;
    ShortcutField *m_up;
    ShortcutField *m_down;
    QComboBox *m_action;
    QLabel *m_argumentLabel;
    QComboBox *m_argument;
    QLabel *m_remark;
    QDialogButtonBox *m_buttons;
};
} // namespace host
