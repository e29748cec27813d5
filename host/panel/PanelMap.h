// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/KeyControl.h"
#include "panel/KnobControl.h"

#include <QCoreApplication>
#include <QKeySequence>
#include <QStringList>

#include <map>
#include <memory>
#include <vector>

namespace host
{
/// What the keys and knobs of a panel do, read from a text that a person writes: a line for each,
/// as explanation() tells.
class PanelMap
{
    Q_DECLARE_TR_FUNCTIONS(PanelMap)

public:
    /// A shortcut of the window.
    struct Shortcut
    {
        QKeySequence keys;
        std::shared_ptr<KeyControl> key;
    };

    /// Two shortcuts that turn a knob.
    struct ShortcutKnob
    {
        QKeySequence up;
        QKeySequence down;
        std::shared_ptr<KnobControl> knob;
    };

    /// A line that cannot be read is left out and told in problems().
    explicit PanelMap(const QString &text = {});

    /// "line 3: ..." each.
    QStringList problems() const;

    /// Why a line cannot be read, counted from 1; empty if it can.
    QString problemOf(int line) const;

    /// File or name of the input device; empty: there is none.
    const QString &device() const { return m_device; }

    /// The device's events go nowhere else.
    bool isGrabbing() const { return m_isGrabbing; }

    // Null for a code that nothing is mapped to.
    const KeyControl *key(int code) const;
    KnobControl *knob(int code);

    const std::vector<Shortcut> &shortcuts() const { return m_shortcuts; }
    const std::vector<ShortcutKnob> &shortcutKnobs() const { return m_shortcutKnobs; }

    /// How such a text is written, as comments: a text to begin with.
    static QString explanation();

private:
    class Words;

    // Each throws a QString that says what is wrong.
    void read(const QString &line);
    void readKey(Words &words);
    void readKnob(Words &words);
    void readShortcut(Words &words);
    void readTurn(Words &words);

    QKeySequence newKeys(Words &words) const;

    static KeyControl keyControl(Words &words);
    static KnobControl knobControl(Words &words);

    std::map<int, QString> m_problems; // by line
    QString m_device;
    bool m_isGrabbing = false;
    std::map<int, KeyControl> m_keys;
    std::map<int, KnobControl> m_knobs;
    std::vector<Shortcut> m_shortcuts;
    std::vector<ShortcutKnob> m_shortcutKnobs;
};
} // namespace host
