// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/PanelTarget.h"
#include "panel/SenderKeyToSystem.h"

#include <QObject>

namespace host
{
class Radio;
class RadioMemory;

/// What the keys and knobs of a panel do to the radio. GUI thread.
class RadioPanel : public QObject, public PanelTarget
{
    Q_OBJECT

public:
    /// All must outlive this.
    RadioPanel(Radio &radio, RadioMemory &memory, SenderKeyToSystem &sender)
        : m_radio(radio), m_memory(memory), m_sender(sender)
    { }

    void tune(int steps) override;
    void turn(Dial dial, int steps) override;
    void toggle(Switch id) override;
    void setMode(Mode mode) override;
    void stepMode(int steps) override;
    void chooseFilter(int filter) override;
    void stepFilter(int steps) override;
    void goToBand(const QString &name) override;
    void stepBand(int steps) override;
    void stepStep(int steps) override;
    void toggleVfo() override;
    void swapVfos() override;
    void toggleSplit() override;
    void toggleLock() override;
    void togglePower() override;
    void send(const QString &keys) override;

signals:
    /// Why something could not be done, in one line.
    void message(const QString &text);

private:
    Radio &m_radio;
    RadioMemory &m_memory;
    SenderKeyToSystem &m_sender;
};
} // namespace host
