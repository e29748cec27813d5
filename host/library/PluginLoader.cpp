// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/PluginLoader.h"

#include "library/ProgramFolder.h"

#include "host_interfaces/DeviceAbstract.h"

#include <QFileInfo>
#include <QJsonObject>

#include <utility>

namespace host
{
namespace
{
constexpr char kPluginName[] = "libZephrinNano.so";

// Installed, and in the build tree.
const QStringList kPlaces = {
    HOST_LIBRARY_FOLDER "/plugins/", "../plugins/device/ZephrinNano/source/"};

QString besideProgram()
{
    QStringList files;
    for (const QString &place : kPlaces)
        files += place + kPluginName;
    return findBesideProgram(files).value_or(QString());
}
} // namespace

bool PluginLoader::load(const QString &file)
{
    const QString chosen = file.isEmpty() ? besideProgram() : file;
    if (chosen.isEmpty())
        return fail(QString("%1 is not beside the program").arg(kPluginName));
    if (!QFileInfo(chosen).isFile())
        return fail(chosen + ": there is no such file");

    m_loader.setFileName(QFileInfo(chosen).absoluteFilePath());
    // A symbol that nobody has shows here and not in the middle of a reception.
    m_loader.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    const QString iid = m_loader.metaData().value("IID").toString();
    if (iid.isEmpty())
        return fail(chosen + ": not a plugin: " + m_loader.errorString());
    const QString wanted = qobject_interface_iid<DeviceAbstract *>();
    if (iid != wanted)
        return fail(QString("%1: a plugin of \"%2\", not of \"%3\"").arg(chosen, iid, wanted));
    QObject *root = m_loader.instance();
    if (!root)
        return fail(chosen + ": " + m_loader.errorString());
    m_device = qobject_cast<DeviceAbstract *>(root);
    return m_device || fail(chosen + ": its object is no device");
}

void PluginLoader::deleteDevice()
{
    delete std::exchange(m_device, nullptr);
}

bool PluginLoader::fail(const QString &text)
{
    m_error = "--plugin: " + text.simplified();
    return false;
}
} // namespace host
