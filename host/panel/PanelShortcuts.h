// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QShortcut>

#include <vector>

class QWidget;

namespace host
{
class PanelMap;
class PanelTarget;

/// The shortcuts of a mapping on a window: keys, and pairs of keys that turn a knob. GUI thread.
class PanelShortcuts
{
public:
    PanelShortcuts();
    ~PanelShortcuts();

    /// In place of those before. target must outlive the shortcuts.
    void set(const PanelMap &map, QWidget &window, PanelTarget &target);
    void clear();

private:
    QElapsedTimer m_clock;
    std::vector<QPointer<QShortcut>> m_shortcuts; // children of the window, which may go first
};
} // namespace host
