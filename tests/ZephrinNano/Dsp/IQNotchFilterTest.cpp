// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/IQNotchFilter.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{
constexpr double kDds = 7.1e6;
constexpr double kRate = 48000.0;

// A run of a carrier at the notch.
std::vector<COMPLEX> carrier(int length, int first = 0)
{
    return test::tone(length, 1000.0 / kRate, 1.0, 0.0, first);
}

std::vector<COMPLEX> filtered(IQNotchFilter &notch, std::vector<COMPLEX> stream)
{
    test::run(notch, stream);
    return stream;
}

void set(IQNotchFilter &notch, unsigned long index, double hz, double width)
{
    notch.setEnable(index, true);
    notch.setFrequency(index, hz);
    notch.setWidth(index, width);
}
} // namespace

TEST(IQNotchFilterTest, AChangeRestartsTheHistoryAndARepetitionDoesNot)
{
    const struct
    {
        const char *name;
        std::function<void(IQNotchFilter &)> call;
        bool restarts;
    } rows[] = {
        {"another dds", [](auto &n) { n.setDds(kDds + 0.001); }, true},
        {"the same dds", [](auto &n) { n.setDds(kDds * (1.0 + 1e-13)); }, false},
        {"another rate", [](auto &n) { n.setSampleRate(kRate + 0.001); }, true},
        {"another frequency", [](auto &n) { n.setFrequency(1, kDds + 1000.001); }, true},
        {"the same frequency", [](auto &n) { n.setFrequency(1, kDds + 1000.0); }, false},
        {"the same width", [](auto &n) { n.setWidth(1, 100.0); }, true},
    };
    for (const auto &row : rows) {
        IQNotchFilter notch(2);
        notch.setSampleRate(kRate);
        notch.setDds(kDds);
        notch.setActive(true);
        set(notch, 1, kDds + 1000.0, 100.0);
        const int gone = 9600;
        filtered(notch, carrier(gone));
        row.call(notch);
        const auto next = filtered(notch, carrier(1, gone));
        // A filter without history lets its first sample pass as it is.
        constexpr double kFaded = 1e-6;
        EXPECT_NEAR(test::magnitude(next[0]), row.restarts ? 1.0 : 0.0, kFaded) << row.name;
    }
}
