// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "window/controls/ListDialog.h"

#include "panel/PanelText.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace host
{
class Panel;

/// Keys and knobs and what they do, in a table; each change holds at once and stands in the file of
/// the mapping. GUI thread.
class PanelDialog : public ListDialog
{
    Q_OBJECT

public:
    /// The panel must outlive the dialog. `bands`: names that a key can go to.
    PanelDialog(Panel &panel, const QStringList &bands, QWidget *parent = nullptr);
    ~PanelDialog() override;

private:
    void addDevice();
    void addTable();
    void addButtons();
    void fill();
    void showDevice();
    void setDevice();
    void add();
    void change();
    void remove();
    void edit(int row, const PanelRow &begin);
    bool store(const PanelText &text);
    QString problemOf(const PanelRow &row, int place) const;
    QString takenBy(const PanelRow &row) const;

    Panel &m_panel;
    QStringList m_bands;
    PanelText m_text;
    QComboBox *m_device; // children
    QCheckBox *m_grab;
    QLabel *m_presence;
    QTableWidget *m_table;
    QPushButton *m_change = nullptr;
    QPushButton *m_remove = nullptr;
};
} // namespace host
