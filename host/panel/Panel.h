// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/PanelInput.h"
#include "panel/PanelMap.h"
#include "panel/PanelShortcuts.h"

#include <QObject>

namespace host
{
/// A control panel: keys and knobs of an input device and shortcuts of the window, joined by a
/// mapping to what they do.
///
/// A window hands itself to load(), shows problems() and message() to a person, and has a command
/// that opens the file of the mapping in an editor and loads it again. GUI thread.
class Panel : public QObject
{
    Q_OBJECT

public:
    /// target must outlive the panel.
    explicit Panel(PanelTarget &target);

    static QString defaultPath();

    /// Takes the mapping from the file. One that is not there is made, with its explanation and no
    /// controls. window may be null: then there are no shortcuts.
    void load(const QString &file, QWidget *window);

    /// Of the last load(): the file if it cannot be read, "line 3: ..." for each line that cannot.
    const QStringList &problems() const { return m_problems; }

    bool isPresent() const { return m_input.isPresent(); }

signals:
    /// The input device has come or gone.
    void presentChanged(bool isPresent);

    /// Something a person should read, in one line.
    void message(const QString &text);

private:
    QString textOf(const QString &file);

    PanelTarget &m_target;
    PanelMap m_map;
    PanelInput m_input;
    PanelShortcuts m_shortcuts;
    QStringList m_problems;
};
} // namespace host
