// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/BusView.h"
#include "library/FtFunctions.h"

#include <atomic>
#include <mutex>

namespace host
{
/// The program's own FT_ functions, which stand before those of any library and go on to the one
/// that was chosen last. A plugin that is loaded keeps what it was bound to, so this is what lets
/// the library be changed under it; and on the way reads are metered (FtReadMeter) and it is seen
/// what the device's looks at the bus find.
///
/// Whoever changes the library closes the device before: a handle belongs to the library that gave
/// it. Any thread.
class FtRelay
{
public:
    static FtRelay &instance();

    /// The functions stay where they are until the program ends: a look at the bus may be in the
    /// middle of the library before.
    void goOnTo(const FtFunctions &functions);

    const FtFunctions &functions() const { return *m_functions.load(std::memory_order_acquire); }

    /// The last complete look at the bus that began since goOnTo() and forgetBus().
    BusView bus() const;

    /// What was seen is not true any more.
    void forgetBus();

    /// What a library answers to FT_ListDevices() is noted on its way.
    FT_STATUS listDevices(PVOID arg1, PVOID arg2, DWORD flags);

private:
    FtRelay();

    void noteNumber(FT_STATUS status, DWORD devices);
    void noteName(DWORD index, FT_STATUS status, const char *text);

    const FtFunctions m_linked; // of the library that the program is linked to, if any
    std::atomic<const FtFunctions *> m_functions = &m_linked;

    mutable std::mutex m_mutex;
    BusView m_bus;  // the last complete look
    BusView m_look; // the one that is going on
    bool m_isLooking = false;
};
} // namespace host
