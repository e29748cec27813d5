// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/DiscoverZephrinNANO.h"

#include "d2xx/ftd2xx.h"
#include "vm_library/source/log/Log.h"

#include <cstdint>

namespace
{
constexpr char kProduct[] = "zephrinnano"; // part of the product string, in lower case

// Addresses of one USB: a library that counts more of them is broken, and asking for each would
// keep the scan busy for ever.
constexpr DWORD kMostDevices = 127;

QString listString(int index, DWORD which)
{
    char text[256] = {}; // the library fills at most 64
    auto *place = reinterpret_cast<PVOID>(std::intptr_t(index));
    if (FT_ListDevices(place, text, FT_LIST_BY_INDEX | which) != FT_OK)
        return {};
    return QString::fromUtf8(text, int(qstrnlen(text, sizeof text)));
}
} // namespace

DiscoverZephrinNANO *DiscoverZephrinNANO::instance()
{
    static DiscoverZephrinNANO self;
    return &self;
}

DiscoverZephrinNANO::~DiscoverZephrinNANO()
{
    wait();
}

void DiscoverZephrinNANO::scan()
{
    if (isRunning())
        return;
    m_scanning = true;
    QThread::start(QThread::InheritPriority);
}

std::list<DiscoverZephrinNANO::DevId> DiscoverZephrinNANO::devices()
{
    if (isRunning())
        wait();
    return m_devices;
}

QString DiscoverZephrinNANO::readSerial(int index) const
{
    return listString(index, FT_OPEN_BY_SERIAL_NUMBER);
}

QString DiscoverZephrinNANO::readProduct(int index) const
{
    return listString(index, FT_OPEN_BY_DESCRIPTION);
}

void DiscoverZephrinNANO::run()
{
    m_devices.clear();
    discover();
    m_scanning = false;
    emit discovered();
}

int DiscoverZephrinNANO::discover()
{
    DWORD count = 0;
    if (FT_ListDevices(&count, nullptr, FT_LIST_NUMBER_ONLY) != FT_OK)
        return 0;
    if (count > kMostDevices) {
        vm::log::warning("int DiscoverZephrinNANO::discover()", " too many devices: ", count);
        return 0;
    }
    for (int index = 0; index < int(count); ++index) {
        const QString serial = readSerial(index);
        if (readProduct(index).toLower().contains(kProduct))
            m_devices.push_back({index, serial});
    }
    return int(count);
}
