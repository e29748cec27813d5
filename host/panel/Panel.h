// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/PanelInput.h"
#include "panel/PanelMap.h"
#include "panel/PanelShortcuts.h"

#include <QObject>
#include <QPointer>

namespace host
{
/// A control panel: keys and knobs of an input device and shortcuts of the window, joined by a
/// mapping to what they do.
///
/// A window hands itself to load(), shows problems() and message() to a person, and lets the
/// mapping be edited: text() through PanelText to save(). GUI thread.
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

    /// The mapping as it stands in the file; empty if there is none.
    QString text() const;

    /// Writes the mapping in place of the file and takes it. False: error() tells why in one line,
    /// the file and the mapping are as before.
    bool save(const QString &text);
    const QString &error() const { return m_error; }

    /// While learning, keys and knobs of the device are told by used() and do nothing else.
    void setLearning(bool on) { m_isLearning = on; }

    /// Of the last load(): the file if it cannot be read, "line 3: ..." for each line that cannot.
    const QStringList &problems() const { return m_problems; }

    bool isPresent() const { return m_input.isPresent(); }

signals:
    /// The input device has come or gone.
    void presentChanged(bool isPresent);

    /// A key was pressed or a knob turned, by its name in Linux; while learning.
    void used(bool isKnob, const QString &code);

    /// Something a person should read, in one line.
    void message(const QString &text);

private:
    void begin();
    void tellUse(unsigned type, int code);

    PanelTarget &m_target;
    PanelMap m_map;
    PanelInput m_input;
    PanelShortcuts m_shortcuts;
    QStringList m_problems;
    QString m_file;
    QPointer<QWidget> m_window;
    QString m_error;
    bool m_isLearning = false;
};
} // namespace host
