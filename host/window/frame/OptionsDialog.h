// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

namespace host
{
class Radio;

/// The device's own options page in a window. The page stays the radio's. GUI thread.
class OptionsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit OptionsDialog(Radio &radio, QWidget *parent = nullptr);
    ~OptionsDialog() override;

private:
    Radio &m_radio;
};
} // namespace host
