// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace host
{
class Radio;

/// Loudness and mute; with split listening those of A and B and the balance beside them. GUI
/// thread.
class AudioPanel : public QWidget
{
    Q_OBJECT

public:
    explicit AudioPanel(Radio &radio, QWidget *parent = nullptr);
};
} // namespace host
