// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/FtFunctions.h"

#include <QCoreApplication>
#include <QString>

namespace host
{
struct DeviceKind;

/// The library behind the FT_ functions: the virtual receiver or a driver of real hardware.
///
/// The first one has to be loaded before the plugin: a library of the same soname that is already
/// there satisfies what the plugin was linked against. Once loaded it stays to the end of the
/// process, as threads may still be in it. Main thread.
class D2xxLibrary
{
    Q_DECLARE_TR_FUNCTIONS(D2xxLibrary)

public:
    /// Loads the library of that kind that came with the program, or a file. False if that failed;
    /// error() tells why in one line.
    bool load(const DeviceKind &kind);
    bool load(const QString &file);

    /// Loaded, it gets the calls of the device from now on; no device may be open.
    void use() const;

    /// A function of this very library, null if it has none of that name.
    void *function(const char *name) const;

    const QString &file() const { return m_file; }
    const QString &error() const { return m_error; }

private:
    bool load(const QString &file, const QString &option);

    void *m_handle = nullptr;
    FtFunctions m_functions;
    QString m_file;
    QString m_error;
};
} // namespace host
