// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/FtRelay.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace
{
using host::FtRelay;

/// A library that knows these names, and nothing else.
std::vector<const char *> g_names;
FT_STATUS g_status = FT_OK;

FT_STATUS listDevices(PVOID arg1, PVOID arg2, DWORD flags)
{
    if (g_status != FT_OK)
        return g_status;
    if (flags == FT_LIST_NUMBER_ONLY)
        *static_cast<DWORD *>(arg1) = DWORD(g_names.size());
    else
        std::strcpy(static_cast<char *>(arg2), g_names.at(reinterpret_cast<std::uintptr_t>(arg1)));
    return FT_OK;
}

void use()
{
    host::FtFunctions functions;
    functions.listDevices = listDevices;
    FtRelay::instance().goOnTo(functions);
}

DWORD count()
{
    DWORD devices = 0;
    FT_ListDevices(&devices, nullptr, FT_LIST_NUMBER_ONLY);
    return devices;
}

void askNames(DWORD from, DWORD to)
{
    char text[64];
    for (std::uintptr_t i = from; i < to; ++i)
        for (const DWORD which : {FT_OPEN_BY_SERIAL_NUMBER, FT_OPEN_BY_DESCRIPTION})
            FT_ListDevices(reinterpret_cast<PVOID>(i), text, FT_LIST_BY_INDEX | which);
}

TEST(FtRelayTest, TellsWhyThereIsNoReceiver)
{
    const struct
    {
        FT_STATUS status;
        std::vector<const char *> names;
        const char *told;
    } cases[] = {
        {FT_OK, {}, "plug it in"},
        {FT_OK, {"Dual RS232 A", "Dual RS232 B"}, "ZephrinNano"},
        {FT_OK, {"Dual RS232 A", ""}, "72-zephrin-nano.rules"},
        {FT_OTHER_ERROR, {}, "status 18"},
    };
    for (const auto &c : cases) {
        g_status = c.status;
        g_names = c.names;
        use();
        EXPECT_FALSE(FtRelay::instance().bus().isKnown);
        askNames(0, count());
        EXPECT_TRUE(FtRelay::instance().bus().isKnown);
        const QString reason = FtRelay::instance().bus().reason();
        EXPECT_TRUE(reason.contains(c.told)) << qPrintable(reason);
    }
}

TEST(FtRelayTest, ALookThatBeganInAnotherLibraryDoesNotCount)
{
    g_status = FT_OK;
    g_names = {"one", "two"};
    use();
    askNames(0, count() - 1);
    EXPECT_FALSE(FtRelay::instance().bus().isKnown) << "not at its end";
    use();
    askNames(1, 2);
    EXPECT_FALSE(FtRelay::instance().bus().isKnown);
    askNames(0, count());
    EXPECT_EQ(FtRelay::instance().bus().devices, 2u);
    FtRelay::instance().forgetBus();
    EXPECT_FALSE(FtRelay::instance().bus().isKnown);
}
} // namespace
