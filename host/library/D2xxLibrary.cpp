// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/D2xxLibrary.h"

#include "library/DeviceKind.h"
#include "library/FtRelay.h"
#include "library/ProgramFolder.h"

#include <QFile>

#include <dlfcn.h>

namespace host
{
bool D2xxLibrary::load(const DeviceKind &kind)
{
    const QString option = "--device " + kind.key;
    if (const auto found = findBesideProgram(kind.files))
        return load(*found, option);
    m_error = tr("%1: %2 is not beside the program; install it anew, or name a library with --d2xx")
                  .arg(option, kind.files.first());
    return false;
}

bool D2xxLibrary::load(const QString &file)
{
    return load(file, "--d2xx");
}

bool D2xxLibrary::load(const QString &file, const QString &option)
{
    m_file = file;
    // Without a slash dlopen() would look along the system's paths.
    const QString path = file.contains('/') ? file : "./" + file;
    // Global, so that the plugin finds the functions; at once, so that a missing one shows here.
    m_handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_GLOBAL);
    if (!m_handle) {
        m_error = option + ": " + QString::fromLocal8Bit(dlerror()).simplified();
        return false;
    }
    QString missing;
    m_functions = FtFunctions::of(m_handle, &missing);
    if (!missing.isEmpty())
        m_error = tr("%1: %2 has no %3()").arg(option, file, missing);
    return missing.isEmpty();
}

void D2xxLibrary::use() const
{
    FtRelay::instance().goOnTo(m_functions);
}

void *D2xxLibrary::function(const char *name) const
{
    return dlsym(m_handle, name);
}
} // namespace host
