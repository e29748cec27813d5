// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace host
{
/// The library behind the FT_ functions: the virtual receiver or a driver of real hardware.
///
/// It has to be there before the plugin: a library of the same soname that is already loaded
/// satisfies what the plugin was linked against, so the plugin takes this one. Once loaded it stays
/// to the end of the process, as the plugin's threads and statics may still call it.
class D2xxLibrary
{
public:
    /// Loads a file; without a name the virtual receiver that came with the program. False if that
    /// failed; error() tells why in one line. Once per process.
    bool open(const QString &file = {});

    /// A function of this very library, null if it has none of that name.
    void *function(const char *name) const;

    const QString &file() const { return m_file; }
    const QString &error() const { return m_error; }

private:
    bool load(const QString &file);

    void *m_handle = nullptr;
    QString m_file;
    QString m_error;
};
} // namespace host
