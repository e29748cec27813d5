// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/RigCommand.h"

#include "rig/RigDescription.h"
#include "rig/RigFunction.h"
#include "rig/RigLevel.h"
#include "rig/RigMode.h"
#include "rig/RigVfo.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace host
{
namespace
{
/// Of a text that is a finite number.
std::optional<double> numberOf(const QByteArray &text)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<int> wholeNumberOf(const QByteArray &text)
{
    const auto value = numberOf(text);
    if (!value || std::abs(*value) > std::numeric_limits<int>::max())
        return std::nullopt;
    return int(std::lround(*value));
}

std::optional<bool> switchOf(const QByteArray &text)
{
    if (text == "0" || text == "1")
        return text == "1";
    return std::nullopt;
}

QByteArray text(double value)
{
    return QByteArray::number(qint64(std::llround(value)));
}

QByteArray text(bool on)
{
    return on ? "1" : "0";
}

RigError getFrequency(RigCall &call, VfoId id)
{
    call.answer(text(call.target.vfo(id).frequencyHz));
    return RigError::None;
}

RigError setFrequency(RigCall &call, VfoId id, const QByteArray &argument)
{
    const auto hertz = numberOf(argument);
    const auto limits = call.target.frequencyLimits();
    if (!hertz || *hertz < limits.low || *hertz > limits.high)
        return RigError::Invalid;
    return call.target.setFrequency(id, *hertz);
}

RigError getMode(RigCall &call, VfoId id)
{
    const Mode mode = call.target.vfo(id).mode;
    call.answer(rigmode::nameOf(mode));
    call.answer(text(call.target.passbandHz(mode)));
    return RigError::None;
}

RigError setMode(RigCall &call, VfoId id, const QByteArray &name, const QByteArray &passband)
{
    constexpr double kAsItIs = -1.0;
    const auto mode = rigmode::find(name);
    const auto hertz = numberOf(passband);
    if (!mode || !hertz || (*hertz < 0.0 && *hertz != kAsItIs))
        return RigError::Invalid;
    const RigError error = call.target.setMode(id, *mode);
    if (error != RigError::None || *hertz == kAsItIs)
        return error;
    return call.target.setPassband(*mode, *hertz);
}

VfoId otherVfo(const RigCall &call)
{
    return other(call.target.active());
}

RigError setSplit(RigCall &call)
{
    const auto on = switchOf(call.argument(0));
    if (!on || !rigvfo::find(call.argument(1), call.target.active()))
        return RigError::Invalid;
    return call.target.setSplit(*on);
}

RigError getSplit(RigCall &call)
{
    const bool isSplit = call.target.isSplit();
    call.answer(text(isSplit));
    call.answer(rigvfo::nameOf(isSplit ? otherVfo(call) : call.target.active()));
    return RigError::None;
}

RigError setVfo(RigCall &call)
{
    const auto id = rigvfo::find(call.argument(0), call.target.active());
    return id ? call.target.setActive(*id) : RigError::Invalid;
}

RigError getVfoInfo(RigCall &call)
{
    const auto id = rigvfo::find(call.argument(0), call.target.active());
    if (!id)
        return RigError::Invalid;
    getFrequency(call, *id);
    getMode(call, *id);
    call.answer(text(call.target.isSplit()));
    call.answer(text(false)); // satellites need a transmitter
    return RigError::None;
}

RigError getRit(RigCall &call)
{
    const auto on = call.target.isOn(Switch::Rit);
    const auto hertz = call.target.value(Dial::Rit);
    if (!on || !hertz)
        return RigError::NotAvailable;
    call.answer(text(*on ? *hertz : 0.0));
    return RigError::None;
}

/// 0 is off.
RigError setRit(RigCall &call)
{
    const auto hertz = numberOf(call.argument(0));
    const auto limits = call.target.limits(Dial::Rit);
    if (!hertz || *hertz < limits.low || *hertz > limits.high)
        return RigError::Invalid;
    const RigError error = call.target.setValue(Dial::Rit, *hertz);
    return error == RigError::None ? call.target.setOn(Switch::Rit, *hertz != 0.0) : error;
}

RigError getStep(RigCall &call)
{
    const auto step = call.target.stepHz();
    if (!step)
        return RigError::NotAvailable;
    call.answer(QByteArray::number(*step));
    return RigError::None;
}

RigError setStep(RigCall &call)
{
    const auto hertz = wholeNumberOf(call.argument(0));
    return hertz ? call.target.setStep(*hertz) : RigError::Invalid;
}

RigError getLevel(RigCall &call)
{
    const RigLevel *level = RigLevel::find(call.argument(0));
    if (!level)
        return RigError::Invalid;
    const auto value = level->get(call.target, call.vfo);
    if (!value)
        return RigError::NotAvailable;
    call.answer(level->text(*value));
    return RigError::None;
}

RigError setLevel(RigCall &call)
{
    const RigLevel *level = RigLevel::find(call.argument(0));
    const auto value = numberOf(call.argument(1));
    if (!level || !value)
        return RigError::Invalid;
    return level->set ? level->set(call.target, *value) : RigError::NotAvailable;
}

RigError getFunction(RigCall &call)
{
    const RigFunction *function = RigFunction::find(call.argument(0));
    if (!function)
        return RigError::Invalid;
    const auto on = function->get(call.target);
    if (!on)
        return RigError::NotAvailable;
    call.answer(text(*on));
    return RigError::None;
}

RigError setFunction(RigCall &call)
{
    const RigFunction *function = RigFunction::find(call.argument(0));
    const auto on = switchOf(call.argument(1));
    return function && on ? function->set(call.target, *on) : RigError::Invalid;
}

struct VfoOperation
{
    const char *name;
    RigError (*run)(RigTarget &);
};

constexpr VfoOperation kVfoOperations[] = {
    {"CPY", [](RigTarget &target) { return target.copyToOther(); }},
    {"XCHG", [](RigTarget &target) { return target.swapVfos(); }},
    {"UP", [](RigTarget &target) { return target.tune(1); }},
    {"DOWN", [](RigTarget &target) { return target.tune(-1); }},
    {"TOGGLE", [](RigTarget &target) { return target.setActive(other(target.active())); }},
};

RigError operateVfo(RigCall &call)
{
    for (const VfoOperation &operation : kVfoOperations)
        if (call.argument(0) == operation.name)
            return operation.run(call.target);
    return RigError::Invalid;
}

/// There is no transmitter: it is off, and to leave it so is no fault.
RigError setPtt(RigCall &call)
{
    const auto number = wholeNumberOf(call.argument(0));
    if (!number)
        return RigError::Invalid;
    return *number == 0 ? RigError::None : RigError::NotAvailable;
}

RigError setPower(RigCall &call)
{
    const auto number = wholeNumberOf(call.argument(0));
    // Clients know an operation and a standby between off (0) and on (1).
    constexpr int kMost = 4;
    if (!number || *number < 0 || *number > kMost)
        return RigError::Invalid;
    return call.target.setPowered(*number == 1 || *number == kMost);
}

template <typename Table>
QByteArray namesOf(const Table &table)
{
    QByteArrayList names;
    for (const auto &row : table)
        names.append(row.name);
    return names.join(' ');
}

QByteArray help()
{
    QByteArrayList lines;
    for (const RigCommand &command : RigCommand::table()) {
        QByteArray line = command.letter ? QByteArray(1, command.letter) + "  \\" : "   \\";
        line += command.name;
        for (const char *argument : command.arguments)
            line += QByteArray(" <") + argument + '>';
        lines.append(line);
    }
    return lines.join('\n');
}

/// A command that always answers the same.
template <typename Answer>
RigError say(RigCall &call, Answer answer)
{
    call.answer(answer);
    return RigError::None;
}
} // namespace

const std::vector<RigCommand> &RigCommand::table()
{
    using Call = RigCall;
    static const std::vector<RigCommand> kTable{
        {'F', "set_freq", {"Frequency"}, {},
            [](Call &c) { return setFrequency(c, c.vfo, c.argument(0)); }, true},
        {'f', "get_freq", {}, {"Frequency"}, [](Call &c) { return getFrequency(c, c.vfo); }, true},
        {'M', "set_mode", {"Mode", "Passband"}, {},
            [](Call &c) { return setMode(c, c.vfo, c.argument(0), c.argument(1)); }, true,
            rigmode::names},
        {'m', "get_mode", {}, {"Mode", "Passband"}, [](Call &c) { return getMode(c, c.vfo); },
            true},
        {'I', "set_split_freq", {"TX Frequency"}, {},
            [](Call &c) { return setFrequency(c, otherVfo(c), c.argument(0)); }, true},
        {'i', "get_split_freq", {}, {"TX Frequency"},
            [](Call &c) { return getFrequency(c, otherVfo(c)); }, true},
        {'X', "set_split_mode", {"TX Mode", "TX Passband"}, {},
            [](Call &c) { return setMode(c, otherVfo(c), c.argument(0), c.argument(1)); }, true,
            rigmode::names},
        {'x', "get_split_mode", {}, {"TX Mode", "TX Passband"},
            [](Call &c) { return getMode(c, otherVfo(c)); }, true},
        {'S', "set_split_vfo", {"Split", "TX VFO"}, {}, setSplit, true},
        {'s', "get_split_vfo", {}, {"Split", "TX VFO"}, getSplit, true},
        {'V', "set_vfo", {"VFO"}, {}, setVfo, false, rigvfo::names},
        {'v', "get_vfo", {}, {"VFO"},
            [](Call &c) { return say(c, rigvfo::nameOf(c.target.active())); }},
        {0, "get_vfo_info", {"VFO"}, {"Freq", "Mode", "Width", "Split", "SatMode"}, getVfoInfo},
        {'J', "set_rit", {"RIT"}, {}, setRit, true},
        {'j', "get_rit", {}, {"RIT"}, getRit, true},
        {'z', "get_xit", {}, {"XIT"}, [](Call &c) { return say(c, "0"); }, true},
        {'N', "set_ts", {"Tuning Step"}, {}, setStep, true},
        {'n', "get_ts", {}, {"Tuning Step"}, getStep, true},
        {'L', "set_level", {"Level", "Level Value"}, {}, setLevel, true,
            [] { return namesOf(RigLevel::table()); }},
        {'l', "get_level", {"Level"}, {""}, getLevel, true,
            [] { return namesOf(RigLevel::table()); }},
        {'U', "set_func", {"Func", "Func Status"}, {}, setFunction, true,
            [] { return namesOf(RigFunction::table()); }},
        {'u', "get_func", {"Func"}, {"Func Status"}, getFunction, true,
            [] { return namesOf(RigFunction::table()); }},
        {'G', "vfo_op", {"Mem/VFO Op"}, {}, operateVfo, true,
            [] { return namesOf(kVfoOperations); }},
        {'T', "set_ptt", {"PTT"}, {}, setPtt, true},
        {'t', "get_ptt", {}, {"PTT"}, [](Call &c) { return say(c, "0"); }, true},
        {0, "set_powerstat", {"Power Status"}, {}, setPower},
        {0, "get_powerstat", {}, {"Power Status"},
            [](Call &c) { return say(c, text(c.target.isPowered())); }},
        {0, "get_lock_mode", {}, {"Locked"}, [](Call &c) { return say(c, "0"); }},
        {'_', "get_info", {}, {"Info"},
            [](Call &c) { return say(c, c.target.deviceName().toUtf8()); }},
        // Clients need not name the VFO.
        {0, "chk_vfo", {}, {"ChkVFO"}, [](Call &c) { return say(c, "0"); }},
        {0, "dump_state", {}, {""}, [](Call &c) { return say(c, rigState(c.target)); }},
        {'1', "dump_caps", {}, {""}, [](Call &c) { return say(c, rigCapabilities(c.target)); }},
        {'?', "help", {}, {""}, [](Call &c) { return say(c, help()); }},
        {'q', "quit", {}, {},
            [](Call &c) {
                c.isOver = true;
                return RigError::None;
            }},
    };
    return kTable;
}

const RigCommand *RigCommand::find(char letter)
{
    const auto isIt = [letter](const RigCommand &row) { return row.letter == letter; };
    const auto row = std::find_if(table().begin(), table().end(), isIt);
    return row == table().end() || letter == 0 ? nullptr : &*row;
}

const RigCommand *RigCommand::find(const QByteArray &name)
{
    const auto isIt = [&name](const RigCommand &row) { return name == row.name; };
    const auto row = std::find_if(table().begin(), table().end(), isIt);
    return row == table().end() ? nullptr : &*row;
}
} // namespace host
