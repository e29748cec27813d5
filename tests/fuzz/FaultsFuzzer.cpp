// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of faults, and what they do to calls, reads and frames.
#include "Faults.h"
#include "FramePacker.h"
#include "FuzzInput.h"

#include <array>
#include <cmath>

namespace
{
using fuzz::require;

constexpr int kTurns = 24;
constexpr std::size_t kReadBytes = 4096;
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::Input input(data, size);
    vr::Faults faults;
    std::string_view rest = input.text();
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        std::string error;
        require(faults.add(line, error) == error.empty(), "a refusal has a reason");
    }
    require(std::isfinite(faults.clockError()), "the clock's error is a number");
    std::array<std::uint8_t, vr::FramePacker::kFrameSize + 1> frame = {};
    for (int turn = 0; turn < kTurns; ++turn) {
        faults.onCall("FT_Read");
        faults.onCall("FT_Open");
        require(faults.onRead(kReadBytes) <= kReadBytes, "a read is cut, not stretched");
        if (const auto fault = faults.onFrame(std::uint64_t(turn))) {
            const std::size_t got = fault->apply(frame.data(), vr::FramePacker::kFrameSize);
            require(got == vr::FramePacker::kFrameSize + (fault->add ? 1 : -1),
                "one byte comes or goes");
        }
        const double seconds = 0.01 * turn;
        while (const auto span = faults.takeSilence(seconds))
            require(span->from <= seconds && span->to > span->from,
                "a silence is due and has a length");
        while (faults.takeUnplug(seconds) || faults.takeReplug(seconds)) { }
        require(!(faults.nextEvent() < seconds), "what was due is spent");
    }
    return 0;
}
