// SPDX-License-Identifier: GPL-3.0-or-later
#include "Faults.h"

#include "FramePacker.h"
#include "TextScanner.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>

namespace vr
{
namespace
{
// Where a byte fault strikes if its text does not say: a byte lost at the end of a frame spoils the
// last sample only, one added in front of the samples shifts them all by one byte.
constexpr std::size_t kLostAt = FramePacker::kFrameSize - 1;
constexpr std::size_t kAddedAt = FramePacker::kHeaderSize;

constexpr double kMostClockError = 1e5; // millionths

using Answer = Faults::CallFault::Answer;

constexpr double kHangSeconds = 3.0; // longer than a program's patience
constexpr double kMostHangSeconds = 3600.0;

// More than any count can be, in whatever unit.
constexpr DWORD kGarbage = 0xdeadbeef;

constexpr std::string_view kFunctions[] = {
    "FT_ListDevices",
    "FT_Open",
    "FT_Close",
    "FT_ResetDevice",
    "FT_SetBitMode",
    "FT_SetLatencyTimer",
    "FT_SetUSBParameters",
    "FT_SetFlowControl",
    "FT_SetTimeouts",
    "FT_Purge",
    "FT_Read",
    "FT_Write",
    "FT_EE_UASize",
    "FT_EE_UARead",
    "FT_EE_UAWrite",
};

// Those that give a count, a text or, the last, a handle.
constexpr std::string_view kGiving[] = {
    "FT_ListDevices", "FT_Read", "FT_Write", "FT_EE_UASize", "FT_EE_UARead", "FT_Open"};

template <std::size_t kSize>
bool isOneOf(const std::string_view (&names)[kSize], std::string_view name)
{
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool canAnswer(std::string_view function, Answer answer)
{
    return answer == Answer::True ? isOneOf(kFunctions, function)
                                  : isOneOf(kGiving, function)
            && (answer != Answer::Short || function != "FT_Open"); // half a handle is none
}
} // namespace

std::size_t Faults::ByteFault::apply(std::uint8_t *frame, std::size_t size) const
{
    if (add) {
        std::memmove(frame + offset + 1, frame + offset, size - offset);
        frame[offset] = 0;
        return size + 1;
    }
    std::memmove(frame + offset, frame + offset + 1, size - offset - 1);
    return size - 1;
}

DWORD Faults::CallFault::share(DWORD count) const
{
    return answer == Answer::Zero ? 0 : answer == Answer::Short ? count / 2 : count;
}

DWORD Faults::CallFault::told(DWORD count) const
{
    return answer == Answer::Garbage ? kGarbage : share(count);
}

/// "fail:FT_Write@3x2=10" and its like.
bool Faults::parseCall(std::string_view text, Fault &fault)
{
    TextScanner scan(text);
    CallFault &call = fault.call;
    const bool fails = scan.take("fail:");
    const bool hangs = !fails && scan.take("hang:");
    if (fails)
        call.status = FT_IO_ERROR;
    else if (hangs)
        call.hangSeconds = kHangSeconds;
    else if (scan.take("short:"))
        call.answer = Answer::Short;
    else if (scan.take("zero:"))
        call.answer = Answer::Zero;
    else if (scan.take("garbage:"))
        call.answer = Answer::Garbage;
    else
        return false;
    fault.function = scan.takeUntil("@x=");
    fault.count = kForever;
    if (scan.take("@")) {
        fault.count = 1;
        if (!scan.take(fault.position) || !scan.takeOptional("x", fault.count))
            return false;
    }
    if ((fails && !scan.takeOptional("=", call.status))
        || (hangs && !scan.takeOptional("=", call.hangSeconds)))
        return false;
    return scan.atEnd() && fault.position > 0 && canAnswer(fault.function, call.answer)
        && call.hangSeconds >= 0.0 && call.hangSeconds <= kMostHangSeconds;
}

bool Faults::parse(std::string_view text, Fault &fault)
{
    if (parseCall(text, fault))
        return true;
    fault = Fault();
    TextScanner scan(text);
    if (scan.take("read-error@")) {
        fault.function = "FT_Read";
        fault.call.status = FT_IO_ERROR;
        return scan.take(fault.position) && scan.takeOptional("x", fault.count) && scan.atEnd()
            && fault.position > 0;
    }
    if (scan.take("torn-read")) {
        fault.kind = Kind::Torn;
        if (scan.take("@"))
            return scan.take(fault.position) && scan.takeOptional("x", fault.count) && scan.atEnd()
                && fault.position > 0;
        fault.count = kForever;
        return scan.take("/") && scan.take(fault.every) && scan.atEnd() && fault.every > 0;
    }
    if (scan.take("random:")) {
        fault.kind = Kind::Random;
        std::uint32_t seed = 0;
        const bool good = scan.take(seed) && scan.take(":") && scan.take(fault.rate);
        fault.random.seed(seed);
        return good && scan.atEnd() && fault.rate >= 0.0 && fault.rate <= 1.0;
    }
    if (scan.take("clock:")) {
        fault.kind = Kind::Clock;
        return scan.take(fault.rate) && scan.atEnd() && std::abs(fault.rate) <= kMostClockError;
    }
    if (scan.take("silence@")) {
        fault.kind = Kind::Silence;
        // Cut at the dots first: "1." would be taken for a number.
        TextScanner begin(text.substr(0, text.find("..")));
        return begin.take("silence@") && begin.take(fault.span.from) && begin.atEnd()
            && scan.takeTo("..") && scan.take(fault.span.to) && scan.atEnd()
            && fault.span.from >= 0.0 && fault.span.to > fault.span.from;
    }
    fault.byte.add = scan.take("added-byte@");
    if (fault.byte.add || scan.take("lost-byte@")) {
        fault.kind = Kind::Byte;
        fault.byte.offset = fault.byte.add ? kAddedAt : kLostAt;
        return scan.take(fault.position) && scan.takeOptional(":", fault.byte.offset)
            && scan.takeOptional("x", fault.count) && scan.atEnd()
            && fault.byte.offset < FramePacker::kFrameSize;
    }
    fault.kind = scan.take("un") ? Kind::Unplug : Kind::Replug;
    return (fault.kind == Kind::Unplug || scan.take("re")) && scan.take("plug@")
        && scan.take(fault.span.from) && scan.atEnd() && fault.span.from >= 0.0;
}

bool Faults::add(std::string_view list, std::string &error)
{
    if (list == "none") {
        clear();
        return true;
    }
    std::vector<Fault> added;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(',', begin), list.size());
        begin = std::min(list.find_first_not_of(' ', begin), end);
        const std::string_view text = list.substr(begin, end - begin);
        if (!parse(text, added.emplace_back())) {
            error = "fault \"" + std::string(text) + "\": not understood, nothing added";
            return false;
        }
        begin = end + 1;
    }
    std::move(added.begin(), added.end(), std::back_inserter(m_faults));
    return true;
}

bool Faults::Fault::strikes()
{
    ++calls;
    return calls >= position && calls - position < count && (calls - position) % every == every - 1;
}

bool Faults::Fault::drawn()
{
    return std::uniform_real_distribution<double>()(random) < rate;
}

double Faults::clockError() const
{
    double millionths = 0.0;
    for (const Fault &fault : m_faults)
        millionths += fault.kind == Kind::Clock ? fault.rate : 0.0;
    return millionths * 1e-6;
}

Faults::CallFault Faults::onCall(std::string_view function)
{
    CallFault all;
    for (Fault &fault : m_faults) {
        if (fault.kind != Kind::Call || fault.function != function || !fault.strikes())
            continue;
        if (fault.call.status != FT_OK)
            all.status = fault.call.status;
        if (fault.call.answer != Answer::True)
            all.answer = fault.call.answer;
        all.hangSeconds += fault.call.hangSeconds;
    }
    return all;
}

std::size_t Faults::onRead(std::size_t bytes)
{
    for (Fault &fault : m_faults) {
        const bool torn = (fault.kind == Kind::Torn && fault.strikes())
            || (fault.kind == Kind::Random && fault.drawn());
        if (torn && bytes > 0)
            bytes = std::uniform_int_distribution<std::size_t>(0, bytes - 1)(fault.random);
    }
    return bytes;
}

std::optional<Faults::ByteFault> Faults::onFrame(std::uint64_t frame)
{
    std::optional<ByteFault> found;
    for (Fault &fault : m_faults) {
        if (fault.kind == Kind::Byte && frame >= fault.position
            && frame - fault.position < fault.count)
            found = fault.byte;
        if (fault.kind == Kind::Random && fault.drawn()) {
            std::uniform_int_distribution<std::size_t> offset(0, FramePacker::kFrameSize - 1);
            found = ByteFault{fault.random() % 2 == 0, offset(fault.random)};
        }
    }
    return found;
}

bool Faults::takeTimed(Kind kind, double seconds, Span &span)
{
    const auto due = [&](const Fault &fault) {
        return fault.kind == kind && fault.span.from <= seconds;
    };
    const auto fault = std::find_if(m_faults.begin(), m_faults.end(), due);
    if (fault == m_faults.end())
        return false;
    span = fault->span;
    m_faults.erase(fault);
    return true;
}

std::optional<Faults::Span> Faults::takeSilence(double seconds)
{
    Span span;
    return takeTimed(Kind::Silence, seconds, span) ? std::optional(span) : std::nullopt;
}

bool Faults::takeUnplug(double seconds)
{
    Span span;
    return takeTimed(Kind::Unplug, seconds, span);
}

bool Faults::takeReplug(double seconds)
{
    Span span;
    return takeTimed(Kind::Replug, seconds, span);
}

double Faults::nextEvent() const
{
    double next = std::numeric_limits<double>::infinity();
    for (const Fault &fault : m_faults) {
        if (fault.kind == Kind::Silence || fault.kind == Kind::Unplug)
            next = std::min(next, fault.span.from);
    }
    return next;
}
} // namespace vr
