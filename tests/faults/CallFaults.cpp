// SPDX-License-Identifier: GPL-3.0-or-later
#include "CallFaults.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace
{
using enum Ending;

struct Place
{
    Ending ending;
    const char *warning = nullptr;
    bool keepsHandle = false;
};

constexpr bool kKept = true;

/// At the first call, at the second, and from the n-th on. A hang is at the n-th alone, unless that
/// is the first: then at each.
struct Row
{
    const char *fault;
    unsigned nth;
    std::array<Place, 3> places;
};

constexpr char kTooMany[] = "too many devices: 3735928559";
constexpr char kOpen[] = "failed to open, 4"; // with the status
constexpr char kFifo[] = "failed to set sync FIFO bit mode, ";
constexpr char kUsb[] = "failed to set USB parameters, ";
constexpr char kInit[] = "failed to init ZephrinNANO";
constexpr char kWrite[] = "failed to write data, writed: 0";
constexpr char kRead[] = "failed to read IQ, error";
constexpr char kPage[] = "Failed read page size!";
constexpr char kPageSize[] = "Incorrect page size: ";
constexpr char kCalibration[] = "Failed read calibrations!";
constexpr char kCrc[] = "Incorrect CRC";

// The first scan asks for the number, the serial and the name of the one device. A start opens
// once and sets the bit mode twice; the second USB parameters are those of the stream. 30 writes
// set the converter up, the 40th starts the stream, the 45th belongs to what is sent 100 ms later.
constexpr Row kRows[] = {
    {"fail:FT_ListDevices", 3, {{{Fine}, {Fine}, {Missing}}}},
    {"short:FT_ListDevices", 3, {{{Fine}, {Fine}, {Missing}}}},
    {"zero:FT_ListDevices", 3, {{{Fine}, {Fine}, {Missing}}}},
    {"garbage:FT_ListDevices", 3, {{{Fine, kTooMany}, {Fine}, {Missing}}}},
    {"fail:FT_Open", 1, {{{Fine, kOpen}, {Fine, kOpen}, {Unopened, kOpen}}}},
    {"zero:FT_Open", 1, {{{Fine, kFifo}, {Fine, kFifo}, {Unopened, kFifo}}}},
    {"garbage:FT_Open", 1, {{{Fine, kFifo}, {Fine, kFifo}, {Unopened, kFifo}}}},
    {"fail:FT_Close", 1,
        {{{Fine, "failed to correct close, ", kKept}, {Fine, "failed to correct close, ", kKept},
            {Fine, "failed to correct close, ", kKept}}}},
    {"fail:FT_ResetDevice", 1,
        {{{Fine, "failed to reset device, "}, {Fine, "failed to reset device, "},
            {Fine, "failed to reset device, "}}}},
    {"fail:FT_SetBitMode", 2,
        {{{Fine, "failed to reset bit mode, "}, {Unopened, kFifo, kKept},
            {Unopened, kFifo, kKept}}}},
    {"fail:FT_SetLatencyTimer", 1,
        {{{Fine, "failed to set latency timer, "}, {Fine, "failed to set latency timer, "},
            {Fine, "failed to set latency timer, "}}}},
    {"fail:FT_SetUSBParameters", 2, {{{Fine, kUsb}, {Unstarted, kUsb}, {Unstarted, kUsb}}}},
    {"fail:FT_SetFlowControl", 1,
        {{{Fine, "failed to set Flow Control, "}, {Fine, "failed to set Flow Control, "},
            {Fine, "failed to set Flow Control, "}}}},
    {"fail:FT_SetTimeouts", 1,
        {{{Fine, "failed to set timeouts, "}, {Fine, "failed to set timeouts, "},
            {Fine, "failed to set timeouts, "}}}},
    {"fail:FT_Purge", 1,
        {{{Unstarted, "failed to purge, "}, {Fine, "failed to purge, "},
            {Unstarted, "failed to purge, "}}}},
    {"fail:FT_Read", 10, {{{Fine, kRead}, {Fine, kRead}, {Lost, kRead}}}},
    {"short:FT_Read", 10, {{{Fine}, {Fine}, {Silent}}}},
    {"zero:FT_Read", 10, {{{Fine}, {Fine}, {Silent}}}},
    {"garbage:FT_Read", 10, {{{Fine}, {Fine}, {Silent}}}},
    {"fail:FT_Write", 45,
        {{{Unopened, kInit, kKept}, {Unopened, kInit, kKept}, {Fine, kWrite, kKept}}}},
    {"short:FT_Write", 1, {{{Fine}, {Fine}, {Silent}}}},
    {"zero:FT_Write", 1, {{{Fine}, {Fine}, {Silent}}}},
    {"garbage:FT_Write", 1, {{{Fine}, {Fine}, {Fine}}}},
    {"fail:FT_EE_UASize", 1, {{{Fine, kPage}, {Fine, kPage}, {Fine, kPage}}}},
    {"short:FT_EE_UASize", 1, {{{Fine, kPageSize}, {Fine, kPageSize}, {Fine, kPageSize}}}},
    {"zero:FT_EE_UASize", 1, {{{Fine, kPageSize}, {Fine, kPageSize}, {Fine, kPageSize}}}},
    {"garbage:FT_EE_UASize", 1, {{{Fine, kPageSize}, {Fine, kPageSize}, {Fine, kPageSize}}}},
    {"fail:FT_EE_UARead", 1, {{{Fine, kCalibration}, {Fine, kCalibration}, {Fine, kCalibration}}}},
    {"short:FT_EE_UARead", 1, {{{Fine, kCrc}, {Fine, kCrc}, {Fine, kCrc}}}},
    {"zero:FT_EE_UARead", 1, {{{Fine, kCrc}, {Fine, kCrc}, {Fine, kCrc}}}},
    {"garbage:FT_EE_UARead", 1, {{{Fine}, {Fine}, {Fine}}}},
    {"fail:FT_EE_UAWrite", 1, {{{Fine, kCalibration}, {Fine, kCalibration}, {Fine, kCalibration}}}},
    {"hang:FT_ListDevices", 3, {{{Either}, {Either}, {Either}}}},
    {"hang:FT_Open", 1, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_Close", 1, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_ResetDevice", 1, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_SetBitMode", 4, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_SetLatencyTimer", 1, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_SetUSBParameters", 4, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_SetFlowControl", 1, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_SetTimeouts", 4, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_Purge", 3, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_Read", 3, {{{Lost}, {Lost}, {Lost}}}},
    {"hang:FT_Write", 45, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_EE_UASize", 1, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_EE_UARead", 1, {{{Fine}, {Fine}, {Fine}}}},
    {"hang:FT_EE_UAWrite", 1, {{{Fine}, {Fine}, {Fine}}}},
};

/// Each function, and each kind of fault, for a table of seconds.
constexpr struct
{
    const char *fault;
    std::size_t place;
} kSample[] = {
    {"garbage:FT_ListDevices", 0},
    {"fail:FT_Open", 0},
    {"zero:FT_Open", 2},
    {"fail:FT_Close", 0},
    {"fail:FT_ResetDevice", 1},
    {"fail:FT_SetBitMode", 0},
    {"fail:FT_SetBitMode", 1},
    {"fail:FT_SetLatencyTimer", 2},
    {"fail:FT_SetUSBParameters", 2},
    {"fail:FT_SetFlowControl", 0},
    {"fail:FT_SetTimeouts", 0},
    {"fail:FT_SetTimeouts", 1},
    {"fail:FT_Purge", 0},
    {"hang:FT_Read", 1},
    {"fail:FT_Write", 1},
    {"fail:FT_Write", 2},
    {"short:FT_Write", 2},
    {"garbage:FT_EE_UASize", 0},
    {"short:FT_EE_UARead", 1},
    {"fail:FT_EE_UAWrite", 2},
};

CallFault callFault(const Row &row, std::size_t place)
{
    const Place &expected = row.places[place];
    const bool hangs = QString(row.fault).startsWith("hang");
    const unsigned call = place < 2 ? unsigned(place) + 1 : row.nth;
    const bool isOnce = place < 2 || (hangs && row.nth > 1);
    const char *const toTheEnd = isOnce ? "" : "x1000000000";
    return {QString("%1@%2%3").arg(row.fault).arg(call).arg(toTheEnd),
        QString(row.fault).section(':', 1), call, expected.warning, expected.ending,
        expected.keepsHandle, hangs};
}

bool isInSample(const Row &row, std::size_t place)
{
    return std::any_of(std::begin(kSample), std::end(kSample), [&](const auto &sample) {
        return QString(sample.fault) == row.fault && sample.place == place;
    });
}
} // namespace

std::vector<CallFault> callFaults(bool whole)
{
    std::vector<CallFault> faults;
    for (const Row &row : kRows)
        for (std::size_t place = 0; place < row.places.size(); ++place)
            if (whole || isInSample(row, place))
                faults.push_back(callFault(row, place));
    return faults;
}

bool isWholeTableWanted()
{
    return qEnvironmentVariableIsSet("ZEPHRIN_ALL_FAULTS");
}
