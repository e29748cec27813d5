// SPDX-License-Identifier: GPL-3.0-or-later
// The receiver's byte stream through the whole of the reader's loop: torn, failing and short reads,
// windows, markers, frames that lost or won a byte, the tail that is kept.
#include "ByteFifo.h"
#include "Control/driver/HardwareZephrinNANO.h"
#include "Dsp/ZephrinMDSP.h"
#include "FuzzInput.h"
#include "QtProgram.h"
#include "support/TestHost.h"

#include <array>
#include <cstring>
#include <random>
#include <thread>

namespace
{
using fuzz::ByteFifo;
using fuzz::require;

constexpr std::size_t kWindow = 4096;
constexpr std::size_t kMostBytes = 6 * kWindow;
constexpr std::size_t kFrame = 512;
constexpr std::array<std::uint8_t, 5> kMarker = {0x55, 0x55, 0x55, 0x55, 0x01};

/// Ends its thread at once, so that it takes nothing: decoding is what is looked at here.
class EndedEngine : public ZephrinMDSP
{
public:
    using ZephrinMDSP::ZephrinMDSP;
    ~EndedEngine() override { close(); }
    void run() override { throw End(); }

    struct End
    { };
};

/// Streams without a thread: the loop of the reader is called instead.
class Driver : public HardwareZephrinNANO
{
public:
    using HardwareZephrinNANO::HardwareZephrinNANO;
    void run() override { }

    void readToTheEnd()
    {
        try {
            HardwareZephrinNANO::run();
        } catch (const ByteFifo::End &) { }
    }
};

/// What the driver's window holds after a read and how much it must ask for next, found out byte by
/// byte.
class Witness
{
public:
    void begin()
    {
        m_window.assign(kWindow, 0);
        m_wanted = kWindow;
    }

    void check(const std::uint8_t *buffer, std::size_t size)
    {
        const ByteFifo &fifo = ByteFifo::instance();
        if (fifo.reads > 0)
            takeLastRead(fifo);
        require(size == m_wanted, "a read asks for the window without its tail");
        const std::size_t tail = kWindow - size;
        require(std::equal(m_window.begin(), m_window.begin() + long(tail), buffer - tail),
            "the tail stands at the front of the window");
        m_before = fifo.position;
    }

private:
    void takeLastRead(const ByteFifo &fifo)
    {
        const std::size_t got = fifo.position - m_before;
        std::copy_n(
            fifo.stream.begin() + long(m_before), got, m_window.begin() + long(kWindow - m_wanted));
        if (got != m_wanted)
            return;
        const std::size_t last = lastMarker();
        std::copy(m_window.begin() + long(last), m_window.end(), m_window.begin());
        m_wanted = last;
    }

    /// Found by its last byte, from the end.
    std::size_t lastMarker() const
    {
        constexpr std::size_t kEnd = kMarker.size() - 1;
        const std::uint8_t *const window = m_window.data();
        std::size_t end = kWindow;
        while (const void *found = memrchr(window, kMarker[kEnd], end)) {
            end = std::size_t(static_cast<const std::uint8_t *>(found) - window);
            if (end >= kEnd && std::equal(kMarker.begin(), kMarker.end(), window + end - kEnd))
                return end - kEnd;
        }
        return kWindow;
    }

    std::vector<std::uint8_t> m_window;
    std::size_t m_wanted = 0;
    std::size_t m_before = 0; // position ahead of the last read
};

Witness &witness()
{
    static Witness the;
    return the;
}

Driver &driver()
{
    static Driver *const the = [] {
        fuzz::beQtProgram<QCoreApplication>();
        auto *const bridge = new test::TestBridge;
        const auto engine = std::make_shared<EndedEngine>(bridge->threadPool(), *bridge, nullptr);
        auto *const made = new Driver(engine);
        made->startStream(HardwareZephrinNANO::Rate48000);
        while (!engine->stopping())
            std::this_thread::yield();
        ByteFifo::instance().onRead = [](const std::uint8_t *buffer, std::size_t size) {
            witness().check(buffer, size);
        };
        return made;
    }();
    return *the;
}

/// Bytes of no meaning, some of which are like those of a marker.
const std::vector<std::uint8_t> &noise()
{
    static const std::vector<std::uint8_t> the = [] {
        std::vector<std::uint8_t> bytes(4 * kWindow);
        std::minstd_rand random;
        for (std::uint8_t &byte : bytes)
            byte = std::uint8_t(random() >> 8);
        return bytes;
    }();
    return the;
}

void addFrame(std::vector<std::uint8_t> &stream, fuzz::Input &input, std::size_t size)
{
    stream.insert(stream.end(), kMarker.begin(), kMarker.end());
    const auto from = noise().begin() + long(input.below(2 * kWindow));
    stream.insert(stream.end(), from, from + long(size - std::min(size, kMarker.size())));
}

/// A stream from few bytes, as a window alone is longer than what a fuzzer likes to change.
void write(
    std::vector<std::uint8_t> &stream, std::deque<ByteFifo::Mishap> &mishaps, fuzz::Input &input)
{
    std::size_t read = 0;
    while (!input.isEmpty() && stream.size() < kMostBytes) {
        const auto step = input.take<std::uint8_t>();
        const std::size_t amount = step >> 3;
        switch (step & 7) {
        case 0:
            for (std::size_t i = 0; i <= amount; ++i)
                addFrame(stream, input, kFrame);
            break;
        case 1:
            addFrame(stream, input, kFrame - 1);
            break;
        case 2:
            addFrame(stream, input, kFrame + 1);
            break;
        case 3:
            addFrame(stream, input, input.below(2 * kWindow));
            break;
        case 4: {
            const auto bytes = input.bytes(amount);
            stream.insert(stream.end(), bytes.begin(), bytes.end());
            break;
        }
        case 5:
            stream.insert(stream.end(), amount * 64 + 1, input.take<std::uint8_t>());
            break;
        case 6:
            read += amount;
            mishaps.push_back({read++, FT_OK, input.below(kWindow + 1)});
            break;
        case 7:
            read += amount;
            mishaps.push_back({read++, FT_IO_ERROR, 0});
            break;
        }
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Driver &reader = driver();
    ByteFifo &fifo = ByteFifo::instance();
    fuzz::Input input(data, size);
    fifo.stream.clear();
    fifo.mishaps.clear();
    fifo.position = 0;
    fifo.reads = 0;
    write(fifo.stream, fifo.mishaps, input);
    witness().begin();
    reader.readToTheEnd();
    return 0;
}
