// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/D2xxLibrary.h"

#include "library/FtReadMeter.h"
#include "library/ProgramFolder.h"

#include <QFile>

#include <dlfcn.h>

namespace host
{
bool D2xxLibrary::open(const QString &file)
{
    if (!file.isEmpty())
        return load(file);
    const auto found = findBesideProgram(
        {HOST_LIBRARY_FOLDER "/libftd2xx.so", "../virtual_receiver/libftd2xx.so"});
    if (found)
        return load(*found);
    m_error = "the virtual receiver's libftd2xx.so is not beside the program; name a library with "
              "--d2xx";
    return false;
}

bool D2xxLibrary::load(const QString &file)
{
    m_file = file;
    // Without a slash dlopen() would look along the system's paths.
    const QString path = file.contains('/') ? file : "./" + file;
    // Global, so that the plugin finds the functions; at once, so that a missing one shows here.
    m_handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_GLOBAL);
    if (!m_handle) {
        m_error = "--d2xx: " + QString::fromLocal8Bit(dlerror()).simplified();
        return false;
    }
    if (!FtReadMeter::instance().standBefore(function("FT_Read"))) {
        m_error = "--d2xx: " + file + " has no FT_Read()";
        return false;
    }
    return true;
}

void *D2xxLibrary::function(const char *name) const
{
    return dlsym(m_handle, name);
}
} // namespace host
