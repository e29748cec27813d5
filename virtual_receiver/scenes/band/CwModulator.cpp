// SPDX-License-Identifier: GPL-3.0-or-later
#include "CwModulator.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>
#include <numbers>
#include <string_view>

namespace vr
{
namespace
{
constexpr double kEdgeSeconds = 0.005;    // rise and fall: no clicks beyond some 200 Hz
constexpr double kDotSecondsAt1Wpm = 1.2; // a minute holds 50 dots for each word

// International Morse code, ITU-R M.1677-1.
const std::map<char, std::string_view> kMorse = {
    {'A', ".-"},
    {'B', "-..."},
    {'C', "-.-."},
    {'D', "-.."},
    {'E', "."},
    {'F', "..-."},
    {'G', "--."},
    {'H', "...."},
    {'I', ".."},
    {'J', ".---"},
    {'K', "-.-"},
    {'L', ".-.."},
    {'M', "--"},
    {'N', "-."},
    {'O', "---"},
    {'P', ".--."},
    {'Q', "--.-"},
    {'R', ".-."},
    {'S', "..."},
    {'T', "-"},
    {'U', "..-"},
    {'V', "...-"},
    {'W', ".--"},
    {'X', "-..-"},
    {'Y', "-.--"},
    {'Z', "--.."},
    {'0', "-----"},
    {'1', ".----"},
    {'2', "..---"},
    {'3', "...--"},
    {'4', "....-"},
    {'5', "....."},
    {'6', "-...."},
    {'7', "--..."},
    {'8', "---.."},
    {'9', "----."},
    {'.', ".-.-.-"},
    {',', "--..--"},
    {'?', "..--.."},
    {'/', "-..-."},
    {'=', "-...-"},
    {'+', ".-.-."},
    {'-', "-....-"},
};

class Keyer
{
public:
    explicit Keyer(double wordsPerMinute) : m_dot(kDotSecondsAt1Wpm / wordsPerMinute * kAudioRateHz)
    { }

    void key(int dots) { extend(dots, true); }
    void pause(int dots) { extend(dots, false); }
    std::vector<float> envelope() { return std::move(m_envelope); }

private:
    // The edge of an element lies inside it, so that gaps keep their length.
    void extend(int dots, bool down)
    {
        m_time += dots * m_dot;
        const std::size_t begin = m_envelope.size();
        m_envelope.resize(std::size_t(std::llround(m_time)), 0.0f);
        const std::size_t length = m_envelope.size() - begin;
        const double edge = kEdgeSeconds * kAudioRateHz;
        for (std::size_t i = 0; down && i < length; ++i) {
            const double fromEnd = double(std::min(i, length - 1 - i)) + 0.5;
            const double rise = std::min(1.0, fromEnd / edge);
            m_envelope[begin + i] = float(0.5 - 0.5 * std::cos(std::numbers::pi * rise));
        }
    }

    double m_dot;        // samples
    double m_time = 0.0; // samples, unrounded
    std::vector<float> m_envelope;
};
} // namespace

std::vector<float> CwModulator::keying(const std::string &text, double wordsPerMinute)
{
    Keyer keyer(wordsPerMinute);
    for (char character : text) {
        const auto code = kMorse.find(char(std::toupper(static_cast<unsigned char>(character))));
        if (code == kMorse.end()) {
            keyer.pause(4); // with the three dots after the last character: a word gap of seven
            continue;
        }
        for (char element : code->second) {
            keyer.key(element == '.' ? 1 : 3);
            keyer.pause(1);
        }
        keyer.pause(2);
    }
    return keyer.envelope();
}

CwModulator::CwModulator(AudioLoop envelope) : m_envelope(std::move(envelope)) { }

void CwModulator::make(Sample *out, std::size_t count)
{
    m_block.resize(count);
    m_envelope.read(m_block.data(), count);
    std::copy(m_block.begin(), m_block.end(), out);
}
} // namespace vr
