// SPDX-License-Identifier: GPL-3.0-or-later
#include "FaultyDevice.h"

#include "virtual_receiver/virtual_receiver.h"

#include <algorithm>
#include <sstream>

namespace
{
std::string g_function;
}

namespace faulty
{
bool arm(const std::string &text)
{
    const std::size_t name = text.find(':') + 1;
    g_function = text.substr(name, text.find_first_of("@x=", name) - name);
    return vr_fault(text.c_str()) == 0;
}

void mend()
{
    vr_fault("none");
}

void replug()
{
    vr_set_plugged(0);
    vr_set_plugged(1);
}

int threads()
{
    return 0;
}

unsigned calls()
{
    vr_status status{};
    vr_get_status(&status);
    if (g_function == "FT_Read")
        return unsigned(status.reads);
    std::istringstream lines(vr_get_calls());
    unsigned count = 0;
    for (std::string line; std::getline(lines, line);)
        count += line.starts_with(g_function + "(");
    return count;
}
} // namespace faulty
