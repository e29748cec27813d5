// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/CalibrationControl.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{
using Control = CalibrationControl;

struct Value
{
    const char *name;
    void (Control::*set)(double);
    double (Control::*get)() const; // none, nor a signal, for the gain before the ADC
    void (Control::*changed)(double);
    double start;
    double weight; // in the stream correction
};

class CalibrationValueTest : public testing::TestWithParam<Value>
{ };

// 1e-12 of the smaller value is the border: beyond it a value counts as changed. 0 is only 0.
TEST_P(CalibrationValueTest, ChangeIsSignalledWithTheStreamCorrectionAfterIt)
{
    const Value &row = GetParam();
    Control control;
    std::vector<double> own, stream;
    bool ownFirst = true;
    if (row.changed)
        QObject::connect(&control, row.changed, [&](double value) { own.push_back(value); });
    QObject::connect(&control, &Control::streamPreampCoeffChanged, [&](double value) {
        stream.push_back(value);
        ownFirst = ownFirst && (!row.changed || own.size() == stream.size());
    });

    (control.*row.set)(row.start);
    EXPECT_TRUE(own.empty() && stream.empty());
    const std::vector<double> changes{2.0, -2.0, 1e-300, 0.0, 4.0, 4.0 + 5e-12};
    for (const double value : changes) {
        for (const double same : {value, value, value * (1.0 + 5e-13)})
            (control.*row.set)(same);
        EXPECT_TRUE(!row.get || (control.*row.get)() == value);
        EXPECT_EQ(stream.back(), row.weight * value);
    }
    EXPECT_EQ(stream.size(), changes.size());
    EXPECT_EQ(own, row.changed ? changes : std::vector<double>());
    EXPECT_TRUE(ownFirst);
}

INSTANTIATE_TEST_SUITE_P(Values, CalibrationValueTest,
    testing::Values(Value{"UserLevel", &Control::setUserPreampCoeff, &Control::userPreampCoeff,
                        &Control::userPreampCoeffChanged, 0, 1},
        Value{"UserFactor", &Control::setUserFreqCoeff, &Control::userFreqCoeff,
            &Control::userFreqChanged, 1, 0},
        Value{"AdminLevel", &Control::setAdminPreampCoeff, &Control::adminPreampCoeff,
            &Control::adminPreampCoeffChanged, 0, 1},
        Value{"AdminFactor", &Control::setAdminFreqCoeff, &Control::adminFreqCoeff,
            &Control::adminFreqChanged, 1, 0},
        Value{"Preamp", &Control::setPreamp, nullptr, nullptr, 0, -1}),
    [](const auto &info) { return std::string(info.param.name); });
} // namespace
