// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/PanelTarget.h"

#include <functional>
#include <vector>

namespace host
{
/// What a key or knob can do: a row of table(), from which follow its name in the mapping, its
/// check and its line of the help. Dials and switches of the radio have a row each.
struct PanelAction
{
    QString name;
    QString argument;              ///< what a key may give with it, for the help; empty: nothing
    std::function<QString()> help; ///< what it does, in the language of the moment

    bool isRepeated; ///< a key does it again and again while it is held

    /// Whether a key's argument makes sense.
    std::function<bool(const QString &argument)> accepts;

    /// With what stands after its name, or the steps of a knob.
    std::function<void(PanelTarget &, const QString &argument)> press;
    std::function<void(PanelTarget &, int steps)> turn; ///< empty where a knob makes no sense

    static const std::vector<PanelAction> &table();

    /// Null for an unknown name.
    static const PanelAction *find(const QString &name);
};
} // namespace host
