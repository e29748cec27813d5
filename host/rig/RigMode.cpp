// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/RigMode.h"

namespace host::rigmode
{
namespace
{
struct Row
{
    const char *name;
    Mode mode;
    std::uint32_t bit;
    bool isAlias = false;
};

// Names and bits: rmode_t of hamlib's rig.h. Data programs ask for PKTUSB and PKTLSB.
constexpr Row kRows[] = {
    {"AM", Mode::AM, 1u << 0},
    {"CW", Mode::CW, 1u << 1},
    {"USB", Mode::USB, 1u << 2},
    {"LSB", Mode::LSB, 1u << 3},
    {"FM", Mode::NFM, 1u << 5},
    {"WFM", Mode::WFM, 1u << 6},
    {"PKTLSB", Mode::DIGL, 1u << 10},
    {"PKTUSB", Mode::DIGU, 1u << 11},
    {"SAM", Mode::SAM, 1u << 16},
    {"DSB", Mode::DSB, 1u << 19},
    {"DRM", Mode::DRM, 0},
    {"RTTY", Mode::DIGL, 1u << 4, true},
    {"RTTYR", Mode::DIGU, 1u << 8, true},
    {"CWR", Mode::CW, 1u << 7, true},
    {"AMS", Mode::SAM, 1u << 9, true},
    {"PKTFM", Mode::NFM, 1u << 12, true},
    {"FMN", Mode::NFM, 1u << 21, true},
    {"PKTAM", Mode::AM, 1u << 22, true},
};
} // namespace

QByteArray nameOf(Mode mode)
{
    for (const Row &row : kRows)
        if (row.mode == mode)
            return row.name;
    return {};
}

std::optional<Mode> find(const QByteArray &name)
{
    for (const Row &row : kRows)
        if (name == row.name)
            return row.mode;
    return std::nullopt;
}

QByteArray names()
{
    QByteArray list;
    for (const Row &row : kRows)
        if (!row.isAlias)
            list += QByteArray(list.isEmpty() ? "" : " ") + row.name;
    return list;
}

std::uint32_t bit(Mode mode)
{
    for (const Row &row : kRows)
        if (row.mode == mode)
            return row.bit;
    return 0;
}

std::uint32_t allBits()
{
    std::uint32_t bits = 0;
    for (const Row &row : kRows)
        bits |= row.bit;
    return bits;
}
} // namespace host::rigmode
