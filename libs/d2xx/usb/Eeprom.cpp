// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/Eeprom.h"

#include "d2xx/usb/Chip.h"
#include "d2xx/usb/UsbStatus.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <utility>

namespace d2xx
{
namespace
{
/// What may stand in a file's name; the rest of a serial number becomes a line.
std::string fileName(std::string serial, const EepromImage &image)
{
    std::ranges::replace_if(
        serial, [](unsigned char c) { return !std::isalnum(c) && c != '-'; }, '_');
    char crc[16];
    std::snprintf(
        crc, sizeof crc, "%08x", unsigned(crc32(image.bytes(0, 2 * image.words().size()))));
    return (serial.empty() ? "unnamed" : serial) + "-" + crc + ".eeprom";
}

bool writeAll(int file, const std::vector<std::uint8_t> &bytes)
{
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t n = write(file, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += std::size_t(n);
    }
    return fsync(file) == 0;
}
bool holds(const std::filesystem::path &file, const std::vector<std::uint8_t> &bytes)
{
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> found(std::istreambuf_iterator<char>(stream), {});
    return std::ranges::equal(found, bytes, {}, [](char c) { return std::uint8_t(c); });
}
} // namespace

Eeprom::Eeprom(const Chip &chip, Access access, std::string serial, std::filesystem::path backups)
    : m_chip(chip), m_access(std::move(access)), m_serial(std::move(serial)),
      m_backups(std::move(backups))
{ }

FT_STATUS Eeprom::readImage(EepromImage *image)
{
    std::uint16_t type = 0;
    if (const FT_STATUS status = m_access.read(std::uint16_t(m_chip.eepromTypeWord), &type))
        return status;
    std::vector<std::uint16_t> words(EepromImage::wordCount(type));
    if (words.empty())
        return FT_EEPROM_NOT_PROGRAMMED;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (const FT_STATUS status = m_access.read(std::uint16_t(i), &words[i]))
            return status;
    }
    *image = EepromImage(std::move(words));
    return FT_OK;
}

FT_STATUS Eeprom::readImage(EepromImage *image, EepromImage::Area *area)
{
    if (const FT_STATUS status = readImage(image))
        return status;
    const auto found = image->userArea();
    if (!found)
        return FT_EEPROM_NOT_PROGRAMMED;
    *area = *found;
    return FT_OK;
}

FT_STATUS Eeprom::userAreaSize(DWORD *size)
{
    EepromImage image;
    EepromImage::Area area;
    if (const FT_STATUS status = readImage(&image, &area))
        return status;
    *size = DWORD(area.size);
    return FT_OK;
}

FT_STATUS Eeprom::readUserArea(std::uint8_t *data, DWORD size, DWORD *got)
{
    EepromImage image;
    EepromImage::Area area;
    if (const FT_STATUS status = readImage(&image, &area))
        return status;
    const auto bytes = image.bytes(area.start, std::min<std::size_t>(size, area.size));
    std::ranges::copy(bytes, data);
    *got = DWORD(bytes.size());
    return FT_OK;
}

FT_STATUS Eeprom::writeUserArea(std::span<const std::uint8_t> data)
{
    EepromImage before;
    EepromImage::Area area;
    if (const FT_STATUS status = readImage(&before, &area))
        return status;
    if (data.size() > area.size)
        return FT_INVALID_PARAMETER;
    if (!before.checksumHolds()) {
        complain("EEPROM of %s not written: its checksum does not hold", m_serial.c_str());
        return FT_EEPROM_NOT_PROGRAMMED;
    }
    for (auto page = before.findCalibration(); page; page = before.findCalibration(*page + 1)) {
        if (*page != area.start) {
            complain("EEPROM of %s not written: it holds a calibration page at byte %zu, where %zu "
                     "was expected",
                m_serial.c_str(), *page, area.start);
            return FT_EEPROM_WRITE_FAILED;
        }
    }
    EepromImage after = before;
    after.setBytes(area.start, data);
    if (after.words() == before.words())
        return FT_OK;
    // Named by its content: one content is kept once.
    if (!backUp(before, m_backups / fileName(m_serial, before)))
        return FT_EEPROM_WRITE_FAILED;

    FT_STATUS status = writeDifference(before, after);
    EepromImage found;
    if (readImage(&found) == FT_OK && found.words() == after.words())
        return FT_OK;
    if (status == FT_OK)
        status = FT_EEPROM_WRITE_FAILED;
    writeDifference(EepromImage(), before);
    const bool restored = readImage(&found) == FT_OK && found.words() == before.words();
    complain("EEPROM of %s read back other than it was written; %s%s", m_serial.c_str(),
        restored ? "its content of before is back"
                 : "its content of before could NOT be put back, a copy is in ",
        restored ? "" : (m_backups / fileName(m_serial, before)).c_str());
    return status;
}

FT_STATUS Eeprom::writeDifference(const EepromImage &from, const EepromImage &to)
{
    FT_STATUS first = FT_OK;
    for (std::size_t i = 0; i < to.words().size(); ++i) {
        if (i < from.words().size() && from.words()[i] == to.words()[i])
            continue;
        const FT_STATUS status = m_access.write(std::uint16_t(i), to.words()[i]);
        if (first == FT_OK)
            first = status;
    }
    return first;
}

bool Eeprom::backUp(const EepromImage &image, const std::filesystem::path &file)
{
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    const auto bytes = image.bytes(0, 2 * image.words().size());
    if (holds(file, bytes))
        return true;
    // Under another name until it is whole: a copy cut short must not pass for one.
    std::filesystem::path unfinished = file;
    unfinished += ".part";
    const int handle = open(unfinished.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const bool written = handle >= 0 && writeAll(handle, bytes);
    const int reason = errno;
    if (handle >= 0)
        close(handle);
    if (!written || std::rename(unfinished.c_str(), file.c_str()) != 0) {
        complain("no copy of the EEPROM, so it is not written: %s: %s", file.c_str(),
            std::strerror(written ? errno : reason));
        unlink(unfinished.c_str());
        return false;
    }
    return true;
}

std::filesystem::path Eeprom::backupFolder()
{
    const char *data = std::getenv("XDG_DATA_HOME");
    const char *home = std::getenv("HOME");
    const std::filesystem::path base = data && *data ? std::filesystem::path(data)
        : home && *home                              ? std::filesystem::path(home) / ".local/share"
                                                     : std::filesystem::temp_directory_path();
    return base / "zephrin-nano" / "eeprom";
}
} // namespace d2xx
