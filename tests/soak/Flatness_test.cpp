// SPDX-License-Identifier: MIT
// What counts as flat.

#include "soak/Flatness.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace soak {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Flatness, HoldsWithinTheBounds) {
    CFlatness flatness({{"handles", 0}, {"bytes", 100}});
    flatness.Add(0, {7, 1000});
    flatness.Add(1000, {9, 5000});  // in between it may be anything
    flatness.Add(2000, {7, 1100});
    EXPECT_THAT(flatness.Growths(), IsEmpty());
}

TEST(Flatness, TellsWhatGrew) {
    CFlatness flatness({{"handles", 0}, {"windows", 2}, {"bytes", 100}});
    flatness.Add(0, {7, 3, 1000});
    flatness.Add(2000, {8, 5, 1101});
    EXPECT_THAT(flatness.Growths(), ElementsAre("handles grew by 1, more than 0", "bytes grew by 101, more than 100"));
}

TEST(Flatness, TellsWhatCouldNotBeCounted) {
    CFlatness flatness({{"handles", 0}, {"windows", 2}, {"bytes", 100}});
    flatness.Add(0, {-1, 0, 1000});
    EXPECT_THAT(flatness.Uncounted(), ElementsAre("handles"));
    flatness.Add(1000, {-1, 0, -1});
    flatness.Add(2000, {-1, 0, 1000});
    EXPECT_THAT(flatness.Growths(), IsEmpty());
    EXPECT_THAT(flatness.Uncounted(), ElementsAre("handles", "bytes"));
}

TEST(Flatness, NeedsTwoSamples) {
    CFlatness flatness({{"handles", 0}});
    EXPECT_THAT(flatness.Growths(), ElementsAre("there are too few samples"));
    flatness.Add(0, {7});
    EXPECT_THAT(flatness.Growths(), ElementsAre("there are too few samples"));
    EXPECT_EQ(flatness.SlopePerThousand(0), 0);
}

TEST(Flatness, HasTheSlopeOfAllSamples) {
    CFlatness flatness({{"handles", 0}});
    flatness.Add(500, {10});
    flatness.Add(1500, {12});
    flatness.Add(2500, {14});
    EXPECT_DOUBLE_EQ(flatness.SlopePerThousand(0), 2);
    flatness.Add(3500, {10});
    // deviations of -1500, -500, 500, 1500 and -1.5, 0.5, 2.5, -1.5: products 1000, squares 5e6
    EXPECT_DOUBLE_EQ(flatness.SlopePerThousand(0), 1000 * 1000 / 5e6);
}

}  // namespace
}  // namespace soak
