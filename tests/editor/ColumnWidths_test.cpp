// SPDX-License-Identifier: MIT
// How the columns of a list share its room.

#include "editor/ColumnWidths.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>

namespace reka::test {
namespace {

using Wishes = std::vector<ColumnWish>;
using Widths = std::vector<int>;

struct RoomCase {
    const char* name;
    Wishes wishes;
    int room;
    Widths widths;
};
const RoomCase roomCases[] = {
    {"RoomForAll", {{100, 40}, {60, 40}, {80, 70}}, 300, {100, 60, 80}},
    {"JustEnough", {{100, 40}, {60, 40}, {80, 70}}, 240, {100, 60, 80}},
    {"OneLongNameGivesWay", {{900, 40}, {60, 40}, {80, 70}}, 300, {160, 60, 80}},
    {"TwoLongOnesShareTheRest", {{900, 40}, {60, 40}, {500, 70}}, 300, {120, 60, 120}},
    {"AnOddPixelIsLeft", {{900, 40}, {60, 40}, {500, 70}}, 301, {120, 60, 120}},
    {"ALeastWidthIsKept", {{900, 40}, {60, 40}, {500, 200}}, 300, {50, 50, 200}},
    {"LeastWidthsWhereNoneHasRoom", {{900, 40}, {60, 50}, {500, 70}}, 100, {40, 50, 70}},
    {"MoreThanWantedInAnyCase", {{10, 40}, {60, 50}}, 300, {40, 60}},
    {"NoRoom", {{10, 0}, {20, 0}}, 0, {0, 0}},
    {"RoomBelowZero", {{10, 5}, {20, 0}}, -30, {5, 0}},
    {"NoColumns", {}, 100, {}},
    {"WidestNumbers", {{2147483647, 0}, {2147483647, 0}}, 2147483647, {1073741823, 1073741823}},
};
class Room : public testing::TestWithParam<RoomCase> {};
TEST_P(Room, IsShared) {
    EXPECT_EQ(ShareRoom(GetParam().wishes, GetParam().room), GetParam().widths);
}
INSTANTIATE_TEST_SUITE_P(Table, Room, testing::ValuesIn(roomCases),
                         [](const auto& row) { return std::string(row.param.name); });

/// As a list is widened no column gets narrower, and no more is given out than there is.
TEST(ColumnWidths, GrowWithTheList) {
    const Wishes wishes = {{300, 40}, {90, 40}, {210, 70}, {10, 20}};
    Widths before = ShareRoom(wishes, 170);
    for (int room = 171; room < 700; ++room) {
        const Widths widths = ShareRoom(wishes, room);
        for (std::size_t i = 0; i < widths.size(); ++i) EXPECT_GE(widths[i], before[i]) << room;
        EXPECT_LE(std::accumulate(widths.begin(), widths.end(), 0), room);
        before = widths;
    }
    EXPECT_EQ(before, (Widths{300, 90, 210, 20}));
}

}  // namespace
}  // namespace reka::test
