// SPDX-License-Identifier: GPL-3.0-or-later
#include "ByteFifo.h"

#include <algorithm>
#include <cstring>

using fuzz::ByteFifo;

ByteFifo &ByteFifo::instance()
{
    static ByteFifo fifo;
    return fifo;
}

FT_STATUS FT_ListDevices(PVOID count, PVOID, DWORD flags)
{
    if (flags != FT_LIST_NUMBER_ONLY)
        return FT_DEVICE_NOT_FOUND;
    *static_cast<DWORD *>(count) = 0;
    return FT_OK;
}

FT_STATUS FT_Open(int, FT_HANDLE *handle)
{
    *handle = &ByteFifo::instance();
    return FT_OK;
}

FT_STATUS FT_Read(FT_HANDLE, LPVOID buffer, DWORD size, LPDWORD received)
{
    ByteFifo &fifo = ByteFifo::instance();
    auto *const bytes = static_cast<std::uint8_t *>(buffer);
    if (fifo.onRead)
        fifo.onRead(bytes, size);
    std::size_t count = size;
    FT_STATUS status = FT_OK;
    if (!fifo.mishaps.empty() && fifo.mishaps.front().read == fifo.reads) {
        count = std::min(count, fifo.mishaps.front().received);
        status = fifo.mishaps.front().status;
        fifo.mishaps.pop_front();
    }
    ++fifo.reads;
    // A read of nothing never gets further.
    if (size == 0 || count > fifo.stream.size() - fifo.position)
        throw ByteFifo::End();
    std::copy_n(fifo.stream.data() + fifo.position, count, bytes);
    fifo.position += count;
    *received = DWORD(count);
    return status;
}

FT_STATUS FT_EE_UASize(FT_HANDLE, LPDWORD size)
{
    *size = ByteFifo::instance().claimedSize;
    return ByteFifo::instance().eepromStatus;
}

FT_STATUS FT_EE_UARead(FT_HANDLE, PUCHAR data, DWORD size, LPDWORD received)
{
    const auto &area = ByteFifo::instance().userArea;
    *received = DWORD(std::min<std::size_t>(size, area.size()));
    std::copy_n(area.begin(), *received, data);
    return FT_OK;
}

FT_STATUS FT_EE_UAWrite(FT_HANDLE, PUCHAR data, DWORD size)
{
    ByteFifo::instance().userArea.assign(data, data + size);
    return FT_OK;
}
