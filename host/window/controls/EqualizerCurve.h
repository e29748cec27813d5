// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QWidget>

#include <vector>

namespace host
{
/// The frequency response of the equalizer, worked out by sending an impulse through one: whatever
/// the sections do to each other is in it. GUI thread.
class EqualizerCurve : public QWidget
{
    Q_OBJECT

public:
    explicit EqualizerCurve(QWidget *parent = nullptr) : QWidget(parent) { }

    /// 18 gains in dB.
    void setGains(const QList<int> &gains);

    /// dB at a frequency of 0 to 24 kHz.
    double gainDb(double hertz) const;

    QSize sizeHint() const override { return {560, 150}; }
    QSize minimumSizeHint() const override { return {320, 110}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::vector<double> m_gainsDb; // of the bins of a transform
};
} // namespace host
