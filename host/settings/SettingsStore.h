// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QSet>
#include <QSettings>
#include <QString>
#include <QTemporaryDir>
#include <QVariantMap>

#include <future>

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
/// written. GUI thread, but for the work of saveLater(); other programs may use the file at the
/// same time.
class SettingsStore
{
    Q_DECLARE_TR_FUNCTIONS(SettingsStore)

public:
    static QString defaultPath();

    explicit SettingsStore(const QString &path = defaultPath());

    /// Waits for what is under way; saves nothing.
    ~SettingsStore();

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

    /// The same on a thread of its own, as a busy disk takes its time. What came of it is told by
    /// the next call; a call while it is under way does nothing.
    bool saveLater();

    /// What was wrong with the last operation, construction included; empty if nothing was.
    const QString &error() const { return m_error; }

private:
    /// What is to be saved, with all that the saving needs.
    struct Work
    {
        QString path;
        bool isDamaged = false;
        QVariantMap base;
        QVariantMap changed;
        QSet<QString> removed;

        /// What went wrong, without the file's name; empty if nothing did.
        QString save() const;

    private:
        QString keepDamaged() const;
        QString findRoom() const;
        QString write() const;
    };

    /// Keeps the working copy from being written whenever something changes: nobody reads it.
    class Stillness : public QObject
    {
        bool eventFilter(QObject *settings, QEvent *event) override;
    };

    bool fail(const QString &text);
    Work work() const;
    bool finish(const QString &error);
    bool finishLater();

    QString m_path;
    QString m_error;
    bool m_isDamaged = false;
    QTemporaryDir m_folder;
    QSettings m_working;
    QVariantMap m_base; // what the file held when it was last read or saved
    QSet<QString> m_overlaid;
    Work m_work; // under way, or the last one
    std::future<QString> m_later;
    Stillness m_stillness;
};
} // namespace host
