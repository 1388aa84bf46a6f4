// SPDX-License-Identifier: MIT
// The temperatures of a sweep.

#include "Sweep.h"

#include <gtest/gtest.h>

namespace rekasim {

namespace {

struct SweepCase {
    const char* name;
    double from;
    double to;
    double step;
    std::vector<double> temperatures;
};
const SweepCase sweepCases[] = {
    {"EndsOnAStep", 300, 320, 10, {300, 310, 320}},
    {"EndsBetweenSteps", 300, 325, 10, {300, 310, 320}},
    {"OneTemperature", 300, 300, 10, {300}},
    {"StepBeyondTheEnd", 300, 305, 10, {300}},
};
class Sweeps : public testing::TestWithParam<SweepCase> {};

TEST_P(Sweeps, ListTheirTemperatures) {
    std::vector<double> temperatures;
    std::string errorText;
    ASSERT_TRUE(ListTemperatures(GetParam().from, GetParam().to, GetParam().step, temperatures, errorText));
    EXPECT_EQ(temperatures, GetParam().temperatures);
}
INSTANTIATE_TEST_SUITE_P(Table, Sweeps, testing::ValuesIn(sweepCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Sweep, IncludesAnEndThatIsReachedWithinRounding) {
    std::vector<double> temperatures;
    std::string errorText;
    ASSERT_TRUE(ListTemperatures(298.15, 299.15, 0.1, temperatures, errorText));
    ASSERT_EQ(temperatures.size(), 11U);
    EXPECT_EQ(temperatures.back(), 299.15);
}

TEST(Sweep, CountsFromItsBeginning) {
    std::vector<double> temperatures;
    std::string errorText;
    ASSERT_TRUE(ListTemperatures(1000, 1000.5, 0.015625, temperatures, errorText)) << errorText;
    EXPECT_EQ(temperatures.size(), 33U);
}

struct RefusedSweep {
    const char* name;
    double from;
    double to;
    double step;
    const char* errorText;
};
const RefusedSweep refusedSweeps[] = {
    {"FromZero", 0, 300, 10, "the sweep must begin above 0 K"},
    {"Downwards", 400, 300, 10, "the sweep must not end below its beginning"},
    {"NoStep", 300, 400, 0, "the step of the sweep must be above 0 K"},
    {"NegativeStep", 300, 400, -5, "the step of the sweep must be above 0 K"},
    {"TooMany", 300, 400, 1e-6, "the sweep has more than 100000 temperatures"},
};
class RefusedSweeps : public testing::TestWithParam<RefusedSweep> {};

TEST_P(RefusedSweeps, TellWhy) {
    std::vector<double> temperatures;
    std::string errorText;
    EXPECT_FALSE(ListTemperatures(GetParam().from, GetParam().to, GetParam().step, temperatures, errorText));
    EXPECT_EQ(errorText, GetParam().errorText);
}
INSTANTIATE_TEST_SUITE_P(Table, RefusedSweeps, testing::ValuesIn(refusedSweeps),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace rekasim
