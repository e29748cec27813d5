// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/ftd2xx.h"

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace vr
{
/// The faults asked for and not yet spent. docs/faults.md tells the language of add().
///
/// Calls are counted from the moment a fault is added, stream positions from the start of the
/// stream. Not thread-safe; the owner serialises all calls.
class Faults
{
public:
    /// What befalls the bytes of one frame.
    struct ByteFault
    {
        bool add = false;       ///< else a byte is lost
        std::size_t offset = 0; ///< 0..511

        /// Applies it to a frame with room for one byte more; returns the new size.
        std::size_t apply(std::uint8_t *frame, std::size_t size) const;
    };

    /// What becomes of one call of an FT_ function.
    struct CallFault
    {
        enum class Answer { True, Short, Zero, Garbage };

        FT_STATUS status = FT_OK; ///< other than FT_OK: the call does nothing
        Answer answer = Answer::True;
        double hangSeconds = 0.0; ///< passes before the call does anything

        /// Of so many, those that are really given or taken.
        DWORD share(DWORD count) const;

        /// What is told of a count.
        DWORD told(DWORD count) const;
    };

    /// A stretch of the stream, in seconds.
    struct Span
    {
        double from = 0.0;
        double to = 0.0;
    };

    /// Takes a list of faults separated by commas, whole or not at all; "none" removes all. False
    /// with a one-line reason in error.
    bool add(std::string_view list, std::string &error);
    void clear() { *this = Faults(); }

    /// Call it once for each call of an FT_ function.
    CallFault onCall(std::string_view function);

    /// Of the bytes that a read would return, those it does. Call it once for each read.
    std::size_t onRead(std::size_t bytes);

    /// The fault of a frame of the stream, if any. Call it once for each frame sent.
    std::optional<ByteFault> onFrame(std::uint64_t frame);

    /// Spends the first silence that begins at or before a time of the stream, in seconds.
    std::optional<Span> takeSilence(double seconds);

    /// Earliest time of the stream at which a silence begins or the device is plugged out; infinity
    /// if there is none.
    double nextEvent() const;

    /// By how much the device's clock runs fast, as a share of 1.
    double clockError() const;

    /// Spends a plug-out, or a plug-in, that is due at a time of the stream.
    bool takeUnplug(double seconds);
    bool takeReplug(double seconds);

private:
    enum class Kind { Call, Torn, Byte, Silence, Unplug, Replug, Random, Clock };

    static constexpr std::uint64_t kForever = UINT64_MAX;

    struct Fault
    {
        Kind kind = Kind::Call;
        std::string function;       // Call
        CallFault call;             // Call
        std::uint64_t position = 1; // Byte: first frame. Call, Torn: the call it begins at, from 1
        std::uint64_t count = 1;    // frames or calls that it strikes
        std::uint64_t every = 1;    // Torn: strikes each of so many reads only
        ByteFault byte;             // Byte
        Span span;                  // Silence; Unplug and Replug use its begin
        double rate = 0.0; // Random: probability for each frame and each read. Clock: millionths
        std::minstd_rand random; // Torn, Random
        std::uint64_t calls = 0; // Call, Torn: seen so far

        bool strikes(); // Call, Torn: counts a call
        bool drawn();   // Random
    };

    static bool parse(std::string_view text, Fault &fault);
    static bool parseCall(std::string_view text, Fault &fault);
    bool takeTimed(Kind kind, double seconds, Span &span);

    std::vector<Fault> m_faults;
};
} // namespace vr
