// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsStore.h"

#include "host_interfaces/Common.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QTemporaryFile>

namespace host
{
namespace
{
// What merging may add to the sum of both files: names of groups, quotation marks.
constexpr qint64 kSpareBytes = 4096;

/// Held while the file is opened, read and written. QSettings has a lock of its own for writing
/// only: opened, it reads first and looks at the time of the file after that, so what another
/// program saves between the two would be taken for known, and lost. Where no lock can be made (a
/// folder that is missing or read only) or nobody gives it back, the file is used without.
class FileTurn
{
public:
    explicit FileTurn(const QString &path) : m_lock(path + ".turn") { m_lock.tryLock(kPatienceMs); }

private:
    static constexpr int kPatienceMs = 5000; // a save takes a few milliseconds
    QLockFile m_lock;
};
} // namespace

QString SettingsStore::defaultPath()
{
    return Common::settingsPath() + "/velmora-host.ini";
}

SettingsStore::SettingsStore(const QString &path)
    : m_path(path), m_working(m_folder.filePath("run.ini"), QSettings::IniFormat)
{
    const FileTurn turn(m_path);
    const QSettings file(m_path, QSettings::IniFormat);
    for (const QString &key : file.allKeys()) {
        if (key.isEmpty()) // a line that begins with "="; nothing can be kept under it
            m_isDamaged = true;
        else
            m_base.insert(key, file.value(key));
    }
    // Lines are looked at when their keys are asked for.
    m_isDamaged |= file.status() == QSettings::FormatError;
    for (auto value = m_base.begin(); value != m_base.end(); ++value)
        m_working.setValue(value.key(), value.value());
    if (file.status() == QSettings::AccessError)
        fail("cannot be read, this run starts from defaults");
    else if (m_isDamaged)
        fail("is damaged, what could be read of it is used");
}

void SettingsStore::overlay(const QString &key, const QVariant &value)
{
    m_overlaid.insert(key);
    m_working.setValue(key, value);
}

bool SettingsStore::save()
{
    m_error.clear();
    QVariantMap changed;
    QSet<QString> removed;
    for (const QString &key : m_working.allKeys())
        if (!m_overlaid.contains(key) && m_base.value(key) != m_working.value(key))
            changed.insert(key, m_working.value(key));
    for (const QString &key : m_base.keys())
        if (!m_overlaid.contains(key) && !m_working.contains(key))
            removed.insert(key);
    if (changed.isEmpty() && removed.isEmpty())
        return true;
    if (!keepDamaged() || !hasRoom() || !write(changed, removed))
        return false;
    m_isDamaged = false;
    for (auto value = changed.begin(); value != changed.end(); ++value)
        m_base[value.key()] = value.value();
    for (const QString &key : removed)
        m_base.remove(key);
    return true;
}

bool SettingsStore::write(const QVariantMap &changed, const QSet<QString> &removed)
{
    const FileTurn turn(m_path);
    QSettings file(m_path, QSettings::IniFormat);
    if (m_isDamaged) { // written anew, or its bad lines would stay
        file.clear();
        for (auto value = m_base.begin(); value != m_base.end(); ++value)
            file.setValue(value.key(), value.value());
    }
    for (auto value = changed.begin(); value != changed.end(); ++value)
        file.setValue(value.key(), value.value());
    for (const QString &key : removed)
        file.remove(key);
    file.sync();
    return file.status() != QSettings::AccessError || fail("cannot be written");
}

bool SettingsStore::keepDamaged()
{
    const QString damaged = m_path + ".damaged";
    if (!m_isDamaged)
        return true;
    QFile::remove(damaged);
    return QFile::copy(m_path, damaged)
        || fail("is not saved: it is damaged and cannot be kept as " + damaged);
}

/// QSettings replaces its file as a whole, but does not look whether the last of it still reached
/// the disk: on a full one it would leave an empty file and call that a success.
bool SettingsStore::hasRoom()
{
    if (!QDir().mkpath(QFileInfo(m_path).path()))
        return fail("is not saved: the folder cannot be made");
    m_working.sync();
    const qint64 size =
        QFileInfo(m_path).size() + QFileInfo(m_working.fileName()).size() + kSpareBytes;
    QTemporaryFile probe(m_path + ".XXXXXX");
    const QByteArray bytes(int(size), '\0');
    return (probe.open() && probe.write(bytes) == size && probe.flush())
        || fail("is not saved: " + probe.errorString());
}

bool SettingsStore::fail(const QString &text)
{
    m_error = "settings file " + m_path + " " + text;
    return false;
}
} // namespace host
