// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QComboBox;
class QLabel;
class QVBoxLayout;

namespace host
{
class ChoiceGrid;
class Radio;

/// Gain control, attenuator and preamplifier, the tools on the audio, squelch: what the device's
/// tables offer, in groups with a heading. GUI thread.
class ToolPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ToolPanel(Radio &radio, QWidget *parent = nullptr);

signals:
    void equalizerWanted();
    void notchesWanted();

private:
    void addAgc(QVBoxLayout &layout);
    void addTools(QVBoxLayout &layout);
    void addSquelch(QVBoxLayout &layout);
    void showAgc();
    void showTone();

    Radio &m_radio;
    ChoiceGrid *m_agc = nullptr; // children
    QComboBox *m_tone = nullptr;
};

/// A heading in front of a group of controls: a text of ToolPanel, to be translated.
QLabel *newHeading(const char *text, QWidget *parent);
} // namespace host
