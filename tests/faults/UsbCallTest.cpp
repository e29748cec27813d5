// SPDX-License-Identifier: GPL-3.0-or-later
// Each call of libusb fails under the provider under the loaded plugin: the device is gone, a pipe
// stalls, time is over, there is no memory.
#include "CallFaults.h"
#include "ProcessTable.h"
#include "SessionProcess.h"

#include <gtest/gtest.h>

#include <libusb-1.0/libusb.h>

namespace
{
constexpr std::size_t kAtOnce = 8;

// A close waits 2 s for the kernel at most; a read of the plugin 0.2 s.
constexpr int kStatedMs = 2400;
constexpr int kBusyMachineMs = 5000;

struct UsbCall
{
    const char *function;
    int nth; ///< one in the middle of a session
};

constexpr UsbCall kCalls[] = {
    {"libusb_init", 1},
    {"libusb_get_device_list", 2},
    {"libusb_get_device_descriptor", 3},
    {"libusb_open", 2},
    {"libusb_get_string_descriptor_ascii", 2},
    {"libusb_set_auto_detach_kernel_driver", 1},
    {"libusb_claim_interface", 1},
    {"libusb_release_interface", 1},
    {"libusb_get_max_packet_size", 1},
    {"libusb_alloc_transfer", 9},
    {"libusb_submit_transfer", 20},
    {"libusb_cancel_transfer", 3},
    {"libusb_handle_events_timeout_completed", 10},
    {"libusb_bulk_transfer", 40},
    {"libusb_control_transfer", 8},
};

constexpr int kErrors[] = {
    LIBUSB_ERROR_NO_DEVICE, LIBUSB_ERROR_PIPE, LIBUSB_ERROR_TIMEOUT, LIBUSB_ERROR_NO_MEM};

struct UsbFault
{
    QString text;
    int call;
};

/// At the first call, and from one in the middle to the end; without `whole` one of all these for
/// each function, in turn.
std::vector<UsbFault> usbFaults(bool whole)
{
    std::vector<UsbFault> faults;
    std::size_t turn = 0;
    for (const UsbCall &call : kCalls) {
        std::size_t row = 0;
        for (const int error : kErrors)
            for (const bool toTheEnd : {false, true}) {
                if (whole || row++ == turn % (2 * std::size(kErrors)))
                    faults.push_back({QString("%1=%2@%3%4")
                                          .arg(call.function)
                                          .arg(error)
                                          .arg(toTheEnd ? call.nth : 1)
                                          .arg(toTheEnd ? "+" : ""),
                        toTheEnd ? call.nth : 1});
            }
        turn += 3; // another error and another place
    }
    return faults;
}
} // namespace

TEST(UsbCallTest, EveryFaultOfTheBusIsSurvivedByThePlugin)
{
    const auto faults = usbFaults(isWholeTableWanted());
    const auto sessions = resultsOf(faults, kAtOnce,
        [](const UsbFault &fault) { return SessionProcess(FAULT_USB_SESSION, fault.text); });
    for (std::size_t i = 0; i < faults.size(); ++i) {
        SCOPED_TRACE(qPrintable(faults[i].text + "\n" + sessions[i].output()));
        EXPECT_TRUE(sessions[i].hasEnded());
        EXPECT_EQ(sessions[i].status(), 0);
        EXPECT_GE(sessions[i].numberAfter("struck at call"), faults[i].call);
        EXPECT_LE(sessions[i].numberAfter("longest"), kStatedMs + kBusyMachineMs);
    }
}
