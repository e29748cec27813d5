// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSet>
#include <QSettings>
#include <QString>
#include <QTemporaryDir>
#include <QVariantMap>

namespace host
{
/// The settings file of the host and its device, and what this run makes of it.
///
/// The run works on a copy in a temporary folder: settings() is what a device reads and writes. A
/// value that holds for this run only is laid over the copy and never gets into the file. save()
/// hands what else has changed to a QSettings on the file, which merges it key by key under a lock:
/// of two programs at once the second one saves its own changes and not its idea of all the rest.
///
/// A file that cannot be read or written never stops the run: error() has one line on it. A file
/// with damaged lines is used as far as it can be read, and kept beside the new one when that is
/// written. GUI thread; other programs may use the file at the same time.
class SettingsStore
{
public:
    static QString defaultPath();

    explicit SettingsStore(const QString &path = defaultPath());

    /// The values of this run; no group is open.
    QSettings &settings() { return m_working; }

    /// Sets a value of settings(), with its group ("ZephrinMOptions/..."), for this run only.
    void overlay(const QString &key, const QVariant &value);

    /// Sets a value that the file does not have yet.
    void setDefault(const QString &key, const QVariant &value)
    {
        if (!m_working.contains(key))
            m_working.setValue(key, value);
    }

    /// Merges the changes since construction or the last save() into the file; touches nothing if
    /// there are none. False if that failed, with the file as it was.
    bool save();

    /// What was wrong with the last operation, construction included; empty if nothing was.
    const QString &error() const { return m_error; }

private:
    bool fail(const QString &text);
    bool keepDamaged();
    bool hasRoom();
    bool write(const QVariantMap &changed, const QSet<QString> &removed);

    QString m_path;
    QString m_error;
    bool m_isDamaged = false;
    QTemporaryDir m_folder;
    QSettings m_working;
    QVariantMap m_base; // what the file held when it was last read or saved
    QSet<QString> m_overlaid;
};
} // namespace host
