// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/PanelMap.h"

#include "panel/KnobAdaptiveValue.h"
#include "panel/KnobFixedValue.h"

#include <libevdev/libevdev.h>

namespace host
{
namespace
{
constexpr int kMostPerClick = 1000; // more is a slip of the finger

const char kExplanation[] =
    R"(# What the keys and knobs of a control panel do. A line for each; # begins a comment.
#
# device FILE or NAME        the input device: /dev/input/by-id/..., or a part of its name
# grab                       its keys and knobs go nowhere else
# key CODE ACTION            a key of the device, by its name in Linux, as KEY_MUTE or BTN_0
# knob CODE ACTION [SPEED]   a knob of the device, as REL_DIAL or REL_WHEEL
# shortcut KEYS ACTION       keys of the window, as Ctrl+M
# turn UP DOWN ACTION [SPEED]   two of them as a knob, as Alt+Up Alt+Down
#
# SPEED is "fixed N", N steps a click (below 0 the other way), or "adaptive [MOST]", one step a
# click turned slowly and up to MOST turned fast; without it, "adaptive". Programs that show the
# names of a device's codes: evtest, libinput.
#
# For example:
# device PowerMate
# knob REL_DIAL tune
# key BTN_0 step next
# key KEY_F5 send Ctrl+L
# shortcut Ctrl+M mute
#
# Actions (those with * also for knobs):
)";

int codeOf(unsigned type, const QString &name)
{
    return libevdev_event_code_from_name(type, name.toLatin1().constData());
}
} // namespace

/// The words of a line, one after the other.
class PanelMap::Words
{
public:
    explicit Words(const QString &line) : m_words(line.simplified().split(' ')) { }

    bool isAtEnd() const { return m_words.isEmpty(); }

    /// Empty at the end.
    QString next() { return isAtEnd() ? QString() : m_words.takeFirst(); }

    QString needed(const QString &what)
    {
        if (isAtEnd())
            throw tr("%1 is missing").arg(what);
        return next();
    }

    QString rest()
    {
        const QString all = m_words.join(' ');
        m_words.clear();
        return all;
    }

    int code(unsigned type, const QString &what)
    {
        const QString name = needed(what);
        const int code = codeOf(type, name);
        if (code < 0)
            throw tr("unknown code '%1'").arg(name);
        return code;
    }

    QKeySequence keys()
    {
        const QString text = needed(tr("a shortcut"));
        const QKeySequence keys(text, QKeySequence::PortableText);
        if (keys.isEmpty() || keys[0] == Qt::Key_unknown)
            throw tr("unknown shortcut '%1'").arg(text);
        return keys;
    }

    const PanelAction &action()
    {
        const QString name = needed(tr("an action"));
        const PanelAction *action = PanelAction::find(name);
        if (!action)
            throw tr("unknown action '%1'").arg(name);
        return *action;
    }

private:
    QStringList m_words;
};

PanelMap::PanelMap(const QString &text)
{
    const QStringList lines = text.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        try {
            read(lines[i].section('#', 0, 0));
        } catch (const QString &problem) {
            m_problems[i + 1] = problem;
        }
    }
}

QStringList PanelMap::problems() const
{
    QStringList all;
    for (const auto &[line, problem] : m_problems)
        all += tr("line %1: %2").arg(line).arg(problem);
    return all;
}

QString PanelMap::problemOf(int line) const
{
    const auto problem = m_problems.find(line);
    return problem == m_problems.end() ? QString() : problem->second;
}

void PanelMap::read(const QString &line)
{
    if (line.trimmed().isEmpty())
        return;
    Words words(line);
    const QString what = words.next();
    if (what == "device") {
        const QString first = words.needed(tr("the device"));
        m_device = (first + ' ' + words.rest()).trimmed();
    } else if (what == "grab")
        m_isGrabbing = true;
    else if (what == "key")
        readKey(words);
    else if (what == "knob")
        readKnob(words);
    else if (what == "shortcut")
        readShortcut(words);
    else if (what == "turn")
        readTurn(words);
    else
        throw tr("unknown word '%1'").arg(what);
    if (!words.isAtEnd())
        throw tr("'%1' is too much").arg(words.rest());
}

void PanelMap::readKey(Words &words)
{
    const int code = words.code(EV_KEY, tr("a key"));
    if (!m_keys.try_emplace(code, keyControl(words)).second)
        throw tr("the key has an action already");
}

void PanelMap::readKnob(Words &words)
{
    const int code = words.code(EV_REL, tr("a knob"));
    if (!m_knobs.try_emplace(code, knobControl(words)).second)
        throw tr("the knob has an action already");
}

void PanelMap::readShortcut(Words &words)
{
    const QKeySequence keys = newKeys(words);
    m_shortcuts.push_back({keys, std::make_shared<KeyControl>(keyControl(words))});
}

void PanelMap::readTurn(Words &words)
{
    const QKeySequence up = newKeys(words);
    const QKeySequence down = newKeys(words);
    if (up == down)
        throw tr("up and down are the same shortcut");
    m_shortcutKnobs.push_back({up, down, std::make_shared<KnobControl>(knobControl(words))});
}

/// Of two owners of a shortcut none would get it.
QKeySequence PanelMap::newKeys(Words &words) const
{
    const QKeySequence keys = words.keys();
    const auto isKey = [&keys](const Shortcut &other) { return other.keys == keys; };
    const auto isKnob = [&keys](const ShortcutKnob &other) {
        return other.up == keys || other.down == keys;
    };
    if (std::any_of(m_shortcuts.begin(), m_shortcuts.end(), isKey)
        || std::any_of(m_shortcutKnobs.begin(), m_shortcutKnobs.end(), isKnob))
        throw tr("the shortcut has an action already");
    return keys;
}

KeyControl PanelMap::keyControl(Words &words)
{
    const PanelAction &action = words.action();
    const QString argument = words.rest();
    if (!action.accepts(argument))
        throw action.argument.isEmpty()
            ? tr("%1 takes nothing after it").arg(action.name)
            : tr("%1 takes %2, not '%3'").arg(action.name, action.argument, argument);
    return {action, argument};
}

KnobControl PanelMap::knobControl(Words &words)
{
    const PanelAction &action = words.action();
    if (!action.turn)
        throw tr("%1 is nothing for a knob").arg(action.name);
    const QString kind = words.next();
    const QString text = words.next();
    const int number = text.toInt();
    if (number < -kMostPerClick || number > kMostPerClick)
        throw tr("%1 steps are too many").arg(text);
    if (kind == "fixed" && number != 0)
        return {action, std::make_unique<KnobFixedValue>(number)};
    if (kind.isEmpty() || (kind == "adaptive" && text.isEmpty()))
        return {action, std::make_unique<KnobAdaptiveValue>()};
    if (kind == "adaptive" && number > 0)
        return {action, std::make_unique<KnobAdaptiveValue>(number)};
    throw tr("'%1' is neither fixed N nor adaptive [MOST]").arg((kind + ' ' + text).trimmed());
}

const KeyControl *PanelMap::key(int code) const
{
    const auto key = m_keys.find(code);
    return key == m_keys.end() ? nullptr : &key->second;
}

KnobControl *PanelMap::knob(int code)
{
    const auto knob = m_knobs.find(code);
    return knob == m_knobs.end() ? nullptr : &knob->second;
}

QString PanelMap::explanation()
{
    QString text = kExplanation;
    for (const PanelAction &action : PanelAction::table()) {
        const QString use = (action.name + ' ' + action.argument).trimmed();
        text +=
            QString("# %1 %2 %3\n").arg(action.turn ? '*' : ' ').arg(use, -30).arg(action.help());
    }
    return text;
}
} // namespace host
