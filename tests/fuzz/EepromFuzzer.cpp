// SPDX-License-Identifier: GPL-3.0-or-later
// Contents of the chip's EEPROM, as the USB layer finds and writes the user area in them, and user
// areas, as the device control takes its calibration from them.
#include "ByteFifo.h"
#include "Control/CalibrationControl.h"
#include "Control/ControlM.h"
#include "Dsp/ZephrinMDSP.h"
#include "Eeprom.h"
#include "FuzzInput.h"
#include "QtProgram.h"
#include "d2xx/usb/Chip.h"
#include "d2xx/usb/Eeprom.h"
#include "support/TestHost.h"

namespace
{
using fuzz::ByteFifo;
using fuzz::require;

/// A copy of the content, which is made ahead of every change, cannot be made below a file: so
/// nothing is ever written, and no folder fills.
constexpr const char *kNoFolder = "/dev/null/none";

constexpr std::size_t kPage = 36; // bytes

void tryChip(const d2xx::Chip &chip, fuzz::Input &input)
{
    std::vector<std::uint16_t> words(d2xx::EepromImage::kMostWords);
    const auto patch = input.bytes(input.take<std::uint8_t>());
    const bool isSound = input.flag(); // a content that may be written
    for (std::size_t i = 0; i < patch.size(); ++i)
        words[i / 2] |= std::uint16_t(patch[i] << i % 2 * 8);
    const std::size_t used = d2xx::EepromImage::wordCount(words[std::size_t(chip.eepromTypeWord)]);
    if (isSound && used > 0) {
        d2xx::EepromImage image({words.begin(), words.begin() + long(used)});
        words[used - 1] = image.checksum();
    }
    const auto before = words;
    const d2xx::Eeprom::Access access{
        [&](std::uint16_t number, std::uint16_t *word) {
            require(number < words.size(), "a word of the EEPROM is read");
            *word = words[number];
            return FT_STATUS(FT_OK);
        },
        [&](std::uint16_t number, std::uint16_t word) {
            require(number < words.size(), "a word of the EEPROM is written");
            words[number] = word;
            return FT_STATUS(FT_OK);
        }};
    d2xx::Eeprom eeprom(chip, access, "serial", kNoFolder);
    DWORD size = 0;
    if (eeprom.userAreaSize(&size) != FT_OK)
        return;
    require(size > 0 && size < 2 * d2xx::EepromImage::kMostWords, "the user area is a part of all");
    std::vector<std::uint8_t> area(size + 1);
    DWORD got = 0;
    require(eeprom.readUserArea(area.data(), DWORD(area.size()), &got) == FT_OK && got == size,
        "the user area is read as large as it was said to be");
    const auto data = input.bytes(input.take<std::uint8_t>());
    const bool written = eeprom.writeUserArea(data) == FT_OK;
    require(words == before, "nothing is written without a copy of the content");
    if (written)
        require(std::equal(data.begin(), data.end(), area.begin()), "only what is there already");

    d2xx::EepromImage image;
    eeprom.readImage(&image);
    const auto place = *image.userArea();
    image.setBytes(place.start, data.first(std::min(data.size(), place.size)));
    require(image.checksumHolds(), "a change renews the checksum");
}

ControlM &control()
{
    static ControlM *const the = [] {
        fuzz::beQtProgram<QCoreApplication>();
        auto *const bridge = new test::TestBridge;
        auto *const made =
            new ControlM(std::make_shared<ZephrinMDSP>(bridge->threadPool(), *bridge, nullptr));
        made->open(0);
        return made;
    }();
    return *the;
}

void calibrate(fuzz::Input &input)
{
    ByteFifo &fifo = ByteFifo::instance();
    fifo.eepromStatus = input.take<std::uint8_t>() == 255 ? FT_IO_ERROR : FT_OK;
    fifo.claimedSize = input.flag() ? input.take<std::uint32_t>() : input.take<std::uint8_t>();
    const bool isSound = input.flag();
    const auto bytes = input.bytes(input.size());
    fifo.userArea.assign(bytes.begin(), bytes.end());
    if (isSound && fifo.userArea.size() >= kPage) {
        const std::uint32_t crc = d2xx::crc32(std::span(fifo.userArea).first(kPage - sizeof crc));
        std::memcpy(fifo.userArea.data() + kPage - sizeof crc, &crc, sizeof crc);
    }
    control().setReadCalibrations();
    control().setWriteCalibrations();
}

void tryFile(fuzz::Input &input)
{
    vr::Eeprom eeprom;
    std::string error;
    const auto bytes = input.bytes(input.size());
    const bool taken = eeprom.replace(bytes.data(), bytes.size(), error);
    require(taken == (bytes.size() <= vr::Eeprom::kMaxSize), "a user area has its limit");
    require(taken == error.empty(), "a refusal has a reason");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static ControlM &started = control();
    (void)started;
    fuzz::Input input(data, size);
    switch (input.take<std::uint8_t>() % 8) {
    case 0:
        tryFile(input);
        break;
    case 1:
    case 2:
    case 3:
        calibrate(input);
        break;
    case 4:
        tryChip(*d2xx::Chip::find(d2xx::kVendorId, 0x6010), input);
        break;
    default:
        tryChip(*d2xx::Chip::find(d2xx::kVendorId, 0x6014), input);
    }
    return 0;
}
