// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/PanelAction.h"

#include <QCoreApplication>

#include <algorithm>

namespace host
{
namespace
{
using Target = PanelTarget;

constexpr int kMostSteps = 1000; // of a key; more is a slip of the finger

const QString kNext = QStringLiteral("next");
const QString kPrevious = QStringLiteral("previous");

bool isNothing(const QString &argument)
{
    return argument.isEmpty();
}

bool isSteps(const QString &argument)
{
    bool isNumber = false;
    const int steps = argument.toInt(&isNumber);
    return argument.isEmpty() || (isNumber && steps != 0 && std::abs(steps) <= kMostSteps);
}

bool isDirection(const QString &argument)
{
    return argument == kNext || argument == kPrevious;
}

std::function<QString()> translated(const char *text)
{
    return [text] { return QCoreApplication::translate("PanelAction", text); };
}

/// Goes by steps, of a key one up if nothing else is said.
PanelAction stepped(
    const QString &name, std::function<QString()> help, std::function<void(Target &, int)> turn)
{
    const auto press = [turn](Target &target, const QString &argument) {
        turn(target, argument.isEmpty() ? 1 : argument.toInt());
    };
    return {name, "STEPS", help, true, isSteps, press, std::move(turn)};
}

/// Goes through a list, of which a key may also choose one.
PanelAction listed(const QString &name, const QString &choice, const char *help,
    std::function<void(Target &, int)> turn, std::function<bool(const QString &)> isChoice,
    std::function<void(Target &, const QString &)> choose)
{
    const auto accepts = [isChoice](const QString &argument) {
        return isDirection(argument) || isChoice(argument);
    };
    const auto press = [turn, choose](Target &target, const QString &argument) {
        if (isDirection(argument))
            turn(target, argument == kNext ? 1 : -1);
        else
            choose(target, argument);
    };
    return {name, kNext + '|' + kPrevious + choice, translated(help), false, accepts, press,
        std::move(turn)};
}

PanelAction plain(const QString &name, const char *help, void (Target::*call)())
{
    const auto press = [call](Target &target, const QString &) { (target.*call)(); };
    return {name, {}, translated(help), false, isNothing, press, {}};
}

bool isFilter(const QString &argument)
{
    return argument.toInt() >= 1;
}

std::vector<PanelAction> actions()
{
    std::vector<PanelAction> all{
        stepped("tune", translated(QT_TRANSLATE_NOOP("PanelAction", "Frequency, by the step")),
            &Target::tune),
        listed(
            "mode", "|MODE", QT_TRANSLATE_NOOP("PanelAction", "Mode"), &Target::stepMode,
            [](const QString &name) { return findMode(name) != nullptr; },
            [](Target &target, const QString &name) { target.setMode(findMode(name)->mode); }),
        listed("filter", "|NUMBER", QT_TRANSLATE_NOOP("PanelAction", "Filter of the mode"),
            &Target::stepFilter, isFilter,
            [](Target &target, const QString &number) { target.chooseFilter(number.toInt() - 1); }),
        listed(
            "band", "|NAME", QT_TRANSLATE_NOOP("PanelAction", "Amateur band, as it was left"),
            &Target::stepBand, [](const QString &name) { return !name.isEmpty(); },
            [](Target &target, const QString &name) { target.goToBand(name); }),
        listed(
            "step", {}, QT_TRANSLATE_NOOP("PanelAction", "Step of the frequency"),
            &Target::stepStep, [](const QString &) { return false; },
            [](Target &, const QString &) {}),
        plain("vfo", QT_TRANSLATE_NOOP("PanelAction", "The other VFO"), &Target::toggleVfo),
        plain("swap", QT_TRANSLATE_NOOP("PanelAction", "A and B change places"), &Target::swapVfos),
        plain("split", QT_TRANSLATE_NOOP("PanelAction", "Hear both VFOs"), &Target::toggleSplit),
        plain("lock", QT_TRANSLATE_NOOP("PanelAction", "Hold the frequency"), &Target::toggleLock),
        plain(
            "power", QT_TRANSLATE_NOOP("PanelAction", "Receiver on and off"), &Target::togglePower),
        {"send", "KEYS",
            translated(QT_TRANSLATE_NOOP(
                "PanelAction", "Keystroke for the program that has the focus, as Control_L+F5")),
            false, [](const QString &keys) { return !keys.isEmpty(); },
            [](Target &target, const QString &keys) { target.send(keys); }, {}},
    };
    for (const DialRow &row : dialTable())
        all.push_back(stepped(
            row.key, [id = row.id] { return helpOf(id); },
            [id = row.id](Target &target, int steps) { target.turn(id, steps); }));
    for (const SwitchRow &row : switchTable())
        all.push_back({row.key, {}, [id = row.id] { return helpOf(id); }, false, isNothing,
            [id = row.id](Target &target, const QString &) { target.toggle(id); }, {}});
    return all;
}
} // namespace

const std::vector<PanelAction> &PanelAction::table()
{
    static const std::vector<PanelAction> kTable = actions();
    return kTable;
}

const PanelAction *PanelAction::find(const QString &name)
{
    const auto isIt = [&name](const PanelAction &row) { return row.name == name; };
    const auto row = std::find_if(table().begin(), table().end(), isIt);
    return row == table().end() ? nullptr : &*row;
}
} // namespace host
