// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QVector>

class QSlider;

namespace host
{
class EqualizerCurve;
class Radio;

/// The 18 gains of the equalizer as sliders, with the curve they make. GUI thread.
class EqualizerDialog : public QDialog
{
    Q_OBJECT

public:
    explicit EqualizerDialog(Radio &radio, QWidget *parent = nullptr);

private:
    void showGains();
    void takeGains();

    Radio &m_radio;
    QVector<QSlider *> m_sliders; // children
    EqualizerCurve *m_curve;
};
} // namespace host
