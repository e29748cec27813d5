// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QCheckBox;
class QTableWidget;

namespace host
{
class Radio;

/// The notch filters of the band in a table: on or off, frequency, width. GUI thread.
class NotchDialog : public QDialog
{
    Q_OBJECT

public:
    explicit NotchDialog(Radio &radio, QWidget *parent = nullptr);

private:
    void fill();
    void take(int row);

    Radio &m_radio;
    QTableWidget *m_table; // children
    QCheckBox *m_on;
    bool m_isFilling = false;
};
} // namespace host
