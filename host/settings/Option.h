// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ReceptionMode.h"
#include "settings/ValueCheck.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

class DeviceAbstract;
class DeviceManagerAbstract;

namespace host
{
struct HostSettings;

/// What an option is set up on. Main thread.
struct OptionTarget
{
    DeviceAbstract &device;
    DeviceManagerAbstract &manager;
    const HostSettings &settings;
};

/// One option of the command line: a row of optionTable(), from which follow its line of the help,
/// its reading and checking, what is said when it has no effect, what it does, and its place in
/// the report. A row fills in what differs from the defaults.
struct Option
{
    const char *name;
    const char *argument = nullptr; ///< what the help calls its value, in capitals; null: a switch

    /// For the help, to which range, default, modes and full stops are added.
    QString help = {};

    ValueCheck value = {};          ///< a switch needs none, its value is true
    const char *standard = nullptr; ///< taken where the option is not given
    QString otherwise = {};         ///< for the help, what holds then, if it is no fixed value
    bool isRepeatable = false;      ///< else the last one counts

    const char *needs = nullptr;      ///< an option without which this one is refused
    ModeSet modes = ModeSet::every(); ///< where it has an effect
    QStringList serves = {};          ///< options of which one must be given for it to have any

    // What it does: one or more of the following.

    /// Puts the value, or the default, among the host's own settings.
    std::function<void(HostSettings &, const QVariant &)> keep = {};

    /// Key of a setting that the device stores, which has the value for this run. Where it depends
    /// on another option, "%1" stands for that one's value and storedBy is its name.
    const char *stored = nullptr;
    const char *storedBy = nullptr;

    /// Hands the value to the device before its start, when it has read its stored settings.
    std::function<void(const OptionTarget &, const QVariant &)> setUp = {};

    /// The same after the start, for what a start would undo. Of a default, too.
    std::function<void(const OptionTarget &, const QVariant &)> begin = {};

    /// Its text in the help.
    QString helpText() const;

    /// Its name in the report, with the unit that argument begins with: "agc_gain_db".
    QString reportKey() const;
};

/// Keeps the value in a member of the settings.
template <typename Owner, typename Value>
auto in(Value Owner::*member)
{
    return [member](
               Owner &settings, const QVariant &value) { settings.*member = value.value<Value>(); };
}
} // namespace host
