// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsStore.h"

#include "host_interfaces/Common.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>

namespace host
{
namespace
{
constexpr int kLockMs = 5000; // another program holds the lock for some milliseconds

bool writeText(const QString &path, const QByteArray &text, QString &problem)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
        return true;
    problem = file.errorString();
    return false;
}

void setValues(QSettings &settings, const QVariantMap &values)
{
    for (auto value = values.begin(); value != values.end(); ++value)
        settings.setValue(value.key(), value.value());
}
} // namespace

QString SettingsStore::defaultPath()
{
    return Common::settingsPath() + "/velmora-host.ini";
}

SettingsStore::SettingsStore(const QString &path) : m_path(path)
{
    const Content content = readFile(m_path);
    if (!content.isReadable)
        fail("cannot be read (" + content.problem + "), this run starts from defaults");
    else if (content.isDamaged)
        fail("is damaged, what could be read of it is used");
    m_base = content.values;
    m_working = std::make_unique<QSettings>(scratchFile(), QSettings::IniFormat);
    setValues(*m_working, m_base);
}

void SettingsStore::overlay(const QString &key, const QVariant &value)
{
    m_overlaid.insert(key);
    m_working->setValue(key, value);
}

bool SettingsStore::save()
{
    m_error.clear();
    m_working->sync();
    // Read back, so that both sides of the comparison have the types that a file knows.
    const Content now = readFile(m_working->fileName());
    if (m_working->status() != QSettings::NoError || !now.isReadable)
        return fail("is not saved: the temporary folder " + m_folder.path() + " is of no use");

    const QVariantMap changed = changedValues(now.values);
    const QSet<QString> removed = removedKeys(now.values);
    if ((!changed.isEmpty() || !removed.isEmpty()) && !merge(changed, removed))
        return false;
    for (auto value = changed.begin(); value != changed.end(); ++value)
        m_base[value.key()] = value.value();
    for (const QString &key : removed)
        m_base.remove(key);
    return true;
}

QVariantMap SettingsStore::changedValues(const QVariantMap &now) const
{
    QVariantMap changed;
    for (auto value = now.begin(); value != now.end(); ++value)
        if (!m_overlaid.contains(value.key())
            && (!m_base.contains(value.key()) || m_base[value.key()] != value.value()))
            changed.insert(value.key(), value.value());
    return changed;
}

QSet<QString> SettingsStore::removedKeys(const QVariantMap &now) const
{
    QSet<QString> removed;
    for (auto value = m_base.begin(); value != m_base.end(); ++value)
        if (!m_overlaid.contains(value.key()) && !now.contains(value.key()))
            removed.insert(value.key());
    return removed;
}

// Between the reading of the file and its replacement nobody else may replace it.
bool SettingsStore::merge(const QVariantMap &changed, const QSet<QString> &removed)
{
    const QString folder = QFileInfo(m_path).path();
    if (!QDir().mkpath(folder))
        return fail("is not saved: the folder cannot be made");
    QLockFile lock(m_path + ".lock");
    if (!lock.tryLock(kLockMs))
        return fail(lock.error() == QLockFile::LockFailedError
                ? "is not saved: another program keeps it locked"
                : "is not saved: the folder cannot be written");

    Content file = readFile(m_path);
    if (!file.isReadable)
        return fail("is not saved: it cannot be read (" + file.problem + ")");
    const QString damaged = m_path + ".damaged";
    if (file.isDamaged) {
        QFile::remove(damaged);
        if (!QFile::copy(m_path, damaged))
            return fail("is not saved: it is damaged and cannot be kept as " + damaged);
    }
    for (auto value = changed.begin(); value != changed.end(); ++value)
        file.values[value.key()] = value.value();
    for (const QString &key : removed)
        file.values.remove(key);
    return replaceFile(file.values);
}

bool SettingsStore::replaceFile(const QVariantMap &values)
{
    QSettings scratch(scratchFile(), QSettings::IniFormat);
    setValues(scratch, values);
    scratch.sync();
    QFile file(scratch.fileName());
    // Without a value there is no scratch file, and an empty one is right.
    if (scratch.status() != QSettings::NoError
        || (!values.isEmpty() && !file.open(QIODevice::ReadOnly)))
        return fail("is not saved: the temporary folder " + m_folder.path() + " is of no use");
    QString problem;
    if (!writeText(m_path, file.isOpen() ? file.readAll() : QByteArray(), problem))
        return fail("cannot be written (" + problem + ")");
    return true;
}

SettingsStore::Content SettingsStore::readFile(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return {};
    if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly))
        return {false, false, {}, file.isOpen() ? QString() : file.errorString()};
    return parse(file.readAll());
}

// By way of a new file, as QSettings remembers the contents of those that it has seen.
SettingsStore::Content SettingsStore::parse(const QByteArray &text)
{
    const QString path = scratchFile();
    QString problem;
    if (!writeText(path, text, problem))
        return {false, false, {}, problem};
    Content content;
    QSettings settings(path, QSettings::IniFormat);
    for (const QString &key : settings.allKeys()) {
        if (key.isEmpty()) // a line that begins with "="; nothing can be kept under it
            content.isDamaged = true;
        else
            content.values.insert(key, settings.value(key));
    }
    // Lines are looked at when their keys are asked for.
    content.isDamaged |= settings.status() != QSettings::NoError;
    return content;
}

QString SettingsStore::scratchFile()
{
    return m_folder.filePath(QString::number(++m_scratchFiles) + ".ini");
}

bool SettingsStore::fail(const QString &text)
{
    m_error = "settings file " + m_path + " " + text;
    return false;
}
} // namespace host
