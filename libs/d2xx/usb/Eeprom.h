// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/usb/ControlPipe.h"
#include "d2xx/usb/EepromImage.h"

#include <filesystem>
#include <functional>
#include <string>

namespace d2xx
{
struct Chip;

/// The EEPROM of an open chip.
///
/// Where the user area starts is worked out, not told by the chip, and a word written in the wrong
/// place can cost the device its name. So a write is refused where a calibration page stands
/// somewhere else or the checksum does not hold, a copy of the whole content is kept in a file
/// first, and what was written is read back; if it differs, the content of before is put back. Each
/// refusal goes to standard error with its reason.
///
/// Not thread-safe; the owner serialises all calls. Reading takes some 10 ms, writing some 100.
class Eeprom
{
public:
    /// Words come and go through these two, so that another EEPROM can stand here.
    struct Access
    {
        std::function<FT_STATUS(std::uint16_t number, std::uint16_t *word)> read;
        std::function<FT_STATUS(std::uint16_t number, std::uint16_t word)> write;
    };

    /// The serial number names the copy. The folder is made when it is needed.
    Eeprom(const Chip &chip, Access access, std::string serial, std::filesystem::path backups);

    /// The whole content as it is now.
    FT_STATUS readImage(EepromImage *image);

    FT_STATUS userAreaSize(DWORD *size);
    FT_STATUS readUserArea(std::uint8_t *data, DWORD size, DWORD *got);
    FT_STATUS writeUserArea(std::span<const std::uint8_t> data);

    /// Writes the content to a new file, as the bytes of the EEPROM. False with the reason told on
    /// standard error.
    static bool backUp(const EepromImage &image, const std::filesystem::path &file);

    /// The folder of the copies for this user: below XDG_DATA_HOME, else ~/.local/share.
    static std::filesystem::path backupFolder();

private:
    FT_STATUS readImage(EepromImage *image, EepromImage::Area *area);
    FT_STATUS writeDifference(const EepromImage &from, const EepromImage &to);

    const Chip &m_chip;
    Access m_access;
    std::string m_serial;
    std::filesystem::path m_backups;
};
} // namespace d2xx
