// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;

namespace host
{
class Radio;
struct Readings;

/// How the stream does: state and rate, level at the converter with its overflow, losses, level of
/// the audio, stereo. GUI thread.
class HealthBar : public QWidget
{
    Q_OBJECT

public:
    explicit HealthBar(Radio &radio, QWidget *parent = nullptr);

    /// "LOST: program 512, receiver 8.4k"; empty if nothing was lost. Short at any number.
    static QString lossesText(const Readings &readings);

private:
    void onReadings();
    void showState();

    Radio &m_radio;
    QLabel *m_state; // children
    QLabel *m_input;
    QLabel *m_losses;
    QLabel *m_audio;
    QLabel *m_stereo;
    int m_count = 0;
};
} // namespace host
