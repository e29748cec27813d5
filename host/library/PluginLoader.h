// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPluginLoader>
#include <QString>

class DeviceAbstract;

namespace host
{
/// Finds, checks and loads the device plugin. Main thread.
class PluginLoader
{
public:
    /// Loads a file; without a name the plugin that came with the program. False if it is no plugin
    /// of this host; error() tells why in one line.
    bool load(const QString &file = {});

    /// Ends the device. What it was joined to may still hold code of the plugin, so it goes between
    /// this and unload().
    void deleteDevice();

    /// Takes the plugin out again. Its threads must be gone.
    void unload() { m_loader.unload(); }

    /// The plugin's one object, owned by the plugin. Null without one.
    DeviceAbstract *device() const { return m_device; }

    QString file() const { return m_loader.fileName(); }
    const QString &error() const { return m_error; }

private:
    bool fail(const QString &text);

    QPluginLoader m_loader;
    DeviceAbstract *m_device = nullptr;
    QString m_error;
};
} // namespace host
