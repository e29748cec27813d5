// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <optional>

class QObject;
class QPushButton;
class QSettings;
class Ui_ZephrinMOptions;
class ZephrinMOptions;

/// The controls of the options page that have a value. One table, a row a control, says what each
/// is in the settings file, which signal of the page tells it, what it is without the file, and
/// which button puts back what; reading, writing, telling and all connections follow from it.
///
/// A value is limited to the range of its control. A missing key takes the default of its row, and
/// so does a text that is no number, or no truth value where one is wanted.
///
/// GUI thread, as the page.
class OptionControls
{
public:
    /// A signal that tells a time of one gain control mode.
    using AgcSignal = void (ZephrinMOptions::*)(DspCore::AgcMode mode, REAL ms);

    /// Connects each control to its signal and each button to its controls. Page and form are not
    /// owned and outlive this.
    OptionControls(ZephrinMOptions &page, const Ui_ZephrinMOptions &form);

    /// Within the group that the caller has opened. Every control with a key is told once, whether
    /// the value is another or not: what hears of it may have started with another one.
    void read(const QSettings &settings) const;
    void write(QSettings &settings) const;

    /// Sets the controls of a button to what it stands for.
    void putBack(const QPushButton *button) const;

    /// The time that `signal` tells of a mode, ms. A mode without times has 0 and takes none.
    double agcTime(DspCore::AgcMode mode, AgcSignal signal) const;
    void setAgcTime(DspCore::AgcMode mode, AgcSignal signal, double ms) const;

    /// The mode of which a control shows a time.
    std::optional<DspCore::AgcMode> agcMode(const QObject *control) const;

private:
    struct Row;
    static const Row kRows[];
    static const Row *agcRow(DspCore::AgcMode mode, AgcSignal signal);

    void connectControl(const Row &row);
    void tell(const Row &row, double value) const;

    /// Calls `act` with the control of a row as what it is.
    template <typename Act>
    auto with(const Row &row, Act act) const;

    ZephrinMOptions &m_page;
    const Ui_ZephrinMOptions &m_form;
};
