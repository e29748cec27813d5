// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The functions of the USB FIFO library that this product uses, with the signatures and constants
/// that the chip vendor publishes. Any library with the soname libftd2xx.so that has them fits: the
/// virtual receiver of this tree, a provider on libusb, or the vendor's own.
///
/// Every function returns FT_OK (0) or one of the FT_STATUS codes below. One thread may be in
/// FT_Read while another is in FT_Write on the same handle.

#include <cstdint>

extern "C" {
using FT_HANDLE = void *;
using FT_STATUS = std::uint32_t;
using PVOID = void *;
using LPVOID = void *;
using DWORD = std::uint32_t;
using LPDWORD = DWORD *;
using ULONG = std::uint32_t;
using USHORT = std::uint16_t;
using UCHAR = std::uint8_t;
using PUCHAR = UCHAR *;

enum : FT_STATUS {
    FT_OK = 0,
    FT_INVALID_HANDLE = 1,
    FT_DEVICE_NOT_FOUND = 2,
    FT_DEVICE_NOT_OPENED = 3,
    FT_IO_ERROR = 4,
    FT_INSUFFICIENT_RESOURCES = 5,
    FT_INVALID_PARAMETER = 6,
    FT_INVALID_BAUD_RATE = 7,
    FT_DEVICE_NOT_OPENED_FOR_ERASE = 8,
    FT_DEVICE_NOT_OPENED_FOR_WRITE = 9,
    FT_FAILED_TO_WRITE_DEVICE = 10,
    FT_EEPROM_READ_FAILED = 11,
    FT_EEPROM_WRITE_FAILED = 12,
    FT_EEPROM_ERASE_FAILED = 13,
    FT_EEPROM_NOT_PRESENT = 14,
    FT_EEPROM_NOT_PROGRAMMED = 15,
    FT_INVALID_ARGS = 16,
    FT_NOT_SUPPORTED = 17,
    FT_OTHER_ERROR = 18,
};

/// Flags of FT_ListDevices, combined by or: what is asked, and of which device.
constexpr DWORD FT_LIST_NUMBER_ONLY = 0x80000000;
constexpr DWORD FT_LIST_BY_INDEX = 0x40000000;
constexpr DWORD FT_OPEN_BY_SERIAL_NUMBER = 1;
constexpr DWORD FT_OPEN_BY_DESCRIPTION = 2;

constexpr UCHAR FT_BITMODE_RESET = 0x00;
constexpr UCHAR FT_BITMODE_SYNC_FIFO = 0x40;
constexpr USHORT FT_FLOW_RTS_CTS = 0x0100;
constexpr ULONG FT_PURGE_RX = 1;
constexpr ULONG FT_PURGE_TX = 2;

/// FT_LIST_NUMBER_ONLY: arg1 is a DWORD* that takes the number of devices. FT_LIST_BY_INDEX with
/// one FT_OPEN_BY_ flag: arg1 is the index cast to a pointer, arg2 a char[64] for the string.
FT_STATUS FT_ListDevices(PVOID arg1, PVOID arg2, DWORD flags);

FT_STATUS FT_Open(int deviceNumber, FT_HANDLE *handle);
FT_STATUS FT_Close(FT_HANDLE handle);
FT_STATUS FT_ResetDevice(FT_HANDLE handle);
FT_STATUS FT_SetBitMode(FT_HANDLE handle, UCHAR mask, UCHAR mode);
FT_STATUS FT_SetLatencyTimer(FT_HANDLE handle, UCHAR milliseconds);
FT_STATUS FT_SetUSBParameters(FT_HANDLE handle, ULONG inTransferSize, ULONG outTransferSize);
FT_STATUS FT_SetFlowControl(FT_HANDLE handle, USHORT flowControl, UCHAR xon, UCHAR xoff);

/// Milliseconds; a read that times out returns FT_OK with what it has.
FT_STATUS FT_SetTimeouts(FT_HANDLE handle, ULONG readTimeout, ULONG writeTimeout);
FT_STATUS FT_Purge(FT_HANDLE handle, ULONG mask);
FT_STATUS FT_Read(FT_HANDLE handle, LPVOID buffer, DWORD bytesToRead, LPDWORD bytesReturned);
FT_STATUS FT_Write(FT_HANDLE handle, LPVOID buffer, DWORD bytesToWrite, LPDWORD bytesWritten);

/// The user area of the EEPROM, in bytes from its start.
FT_STATUS FT_EE_UASize(FT_HANDLE handle, LPDWORD size);
FT_STATUS FT_EE_UARead(FT_HANDLE handle, PUCHAR data, DWORD dataLength, LPDWORD bytesRead);
FT_STATUS FT_EE_UAWrite(FT_HANDLE handle, PUCHAR data, DWORD dataLength);
}
