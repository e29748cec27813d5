// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsStore.h"

#include "host_interfaces/Common.h"
#include "vm_library/source/file/WholeFile.h"

#include <QDataStream>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QTemporaryFile>

namespace host
{
namespace
{
// What a byte of a value may become in the file: half a letter of a text, "\\x1234" at most.
constexpr int kMostEscaped = 5;

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
    m_working.installEventFilter(&m_stillness);
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
        fail(tr("cannot be read, this run starts from defaults"));
    else if (m_isDamaged)
        fail(tr("is damaged, what could be read of it is used"));
}

SettingsStore::~SettingsStore()
{
    if (m_later.valid())
        m_later.wait();
}

bool SettingsStore::Stillness::eventFilter(QObject *, QEvent *event)
{
    return event->type() == QEvent::UpdateRequest;
}

void SettingsStore::overlay(const QString &key, const QVariant &value)
{
    m_overlaid.insert(key);
    m_working.setValue(key, value);
}

SettingsStore::Work SettingsStore::work() const
{
    Work work{m_path, m_isDamaged, m_base, {}, {}};
    for (const QString &key : m_working.allKeys())
        if (!m_overlaid.contains(key) && m_base.value(key) != m_working.value(key))
            work.changed.insert(key, m_working.value(key));
    for (const QString &key : m_base.keys())
        if (!m_overlaid.contains(key) && !m_working.contains(key))
            work.removed.insert(key);
    return work;
}

bool SettingsStore::save()
{
    finishLater();
    m_error.clear();
    m_work = work();
    return finish(m_work.save());
}

bool SettingsStore::saveLater()
{
    if (m_later.valid() && m_later.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        return true;
    m_error.clear();
    const bool isGood = finishLater();
    m_work = work();
    if (!m_work.changed.isEmpty() || !m_work.removed.isEmpty())
        m_later = std::async(std::launch::async, [this] { return m_work.save(); });
    return isGood;
}

bool SettingsStore::finishLater()
{
    return !m_later.valid() || finish(m_later.get());
}

/// What was saved is what the file holds.
bool SettingsStore::finish(const QString &error)
{
    if (!error.isEmpty())
        return fail(error);
    if (m_work.changed.isEmpty() && m_work.removed.isEmpty())
        return true;
    m_isDamaged = false;
    for (auto value = m_work.changed.begin(); value != m_work.changed.end(); ++value)
        m_base[value.key()] = value.value();
    for (const QString &key : m_work.removed)
        m_base.remove(key);
    return true;
}

QString SettingsStore::Work::save() const
{
    if (changed.isEmpty() && removed.isEmpty())
        return {};
    QString error = keepDamaged();
    if (error.isEmpty())
        error = findRoom();
    return error.isEmpty() ? write() : error;
}

QString SettingsStore::Work::write() const
{
    const FileTurn turn(path);
    QSettings file(path, QSettings::IniFormat);
    if (isDamaged) { // written anew, or its bad lines would stay
        file.clear();
        for (auto value = base.begin(); value != base.end(); ++value)
            file.setValue(value.key(), value.value());
    }
    for (auto value = changed.begin(); value != changed.end(); ++value)
        file.setValue(value.key(), value.value());
    for (const QString &key : removed)
        file.remove(key);
    file.sync();
    return file.status() == QSettings::AccessError ? tr("cannot be written") : QString();
}

QString SettingsStore::Work::keepDamaged() const
{
    const QString damaged = path + ".damaged";
    if (!isDamaged)
        return {};
    QFile file(path);
    QString reason;
    if (file.open(QIODevice::ReadOnly) && vm::file::writeWhole(damaged, file.readAll(), &reason))
        return {};
    if (reason.isEmpty())
        reason = damaged + ": " + file.errorString();
    return tr("is not saved: it is damaged and cannot be kept as %1").arg(reason);
}

/// QSettings replaces its file as a whole, but does not look whether the last of it still reached
/// the disk: on a full one it would leave an empty file and call that a success.
QString SettingsStore::Work::findRoom() const
{
    if (!QDir().mkpath(QFileInfo(path).path()))
        return tr("is not saved: the folder cannot be made");
    QByteArray values;
    QDataStream stream(&values, QIODevice::WriteOnly);
    stream << changed;
    const qint64 size = QFileInfo(path).size() + kMostEscaped * values.size();
    QTemporaryFile probe(path + ".XXXXXX");
    const QByteArray bytes(int(size), '\0');
    return probe.open() && probe.write(bytes) == size && probe.flush()
        ? QString()
        : tr("is not saved: %1").arg(vm::file::reasonOf(probe));
}

bool SettingsStore::fail(const QString &text)
{
    m_error = tr("settings file %1 %2").arg(m_path, text);
    return false;
}
} // namespace host
