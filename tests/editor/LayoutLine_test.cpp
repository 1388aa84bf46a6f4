// SPDX-License-Identifier: MIT
// The line that controls are centred in is as high as the tallest of them, whatever else the dialog has; and the edge
// of a control that lies in another one, wherever that is.

#include <gtest/gtest.h>

#include <vector>

#include "editor/DialogLayout.h"

namespace reka::test {
namespace {

TEST(LayoutLine, IsAsHighAsTheTallestControlInIt) {
    constexpr int tallList = 1;
    constexpr int label = 2;
    constexpr int field = 3;
    const std::vector<LayoutRow> rows = {
        {tallList, LeftOf(clientArea), TopOf(clientArea), loose, loose},
        {LayoutLine(1), LeftOf(clientArea), TopOf(clientArea, 10), RightOf(clientArea), loose},
        {label, LeftOf(clientArea), CentredIn(LayoutLine(1)), loose, loose},
        {field, RightOf(label, 5), CentredIn(LayoutLine(1)), loose, loose}};
    std::vector<DesignedControl> controls(rows.size());
    controls[0].place = {0, 0, 60, 100};
    controls[2].place = {0, 0, 30, 8};
    controls[3].place = {0, 0, 40, 14};
    std::vector<ControlPlace> places(rows.size());
    LayOut(rows, {{}, controls}, {200, 150}, referenceDpi, places);
    EXPECT_EQ(places[0], (ControlPlace{0, 0, 60, 100}));
    EXPECT_EQ(places[1], (ControlPlace{0, 10, 200, 24}));
    EXPECT_EQ(places[2], (ControlPlace{0, 13, 30, 21}));
    EXPECT_EQ(places[3], (ControlPlace{35, 10, 75, 24}));
}

TEST(MirroredEdge, IsAsFarInsideTheControlAsTheLeftOne) {
    constexpr int group = 1;
    constexpr int inside = 2;
    const std::vector<LayoutRow> rows = {{group, AsDesigned(clientArea), TopOf(clientArea), RightOf(clientArea), loose},
                                         {inside, AsDesigned(group), TopOf(clientArea), Mirrored(group), loose}};
    std::vector<DesignedControl> controls(rows.size());
    controls[0].place = {20, 0, 100, 50};
    controls[1].place = {27, 10, 90, 30};
    std::vector<ControlPlace> places(rows.size());
    LayOut(rows, {{}, controls}, {300, 150}, referenceDpi, places);
    EXPECT_EQ(places[0], (ControlPlace{20, 0, 300, 50}));
    EXPECT_EQ(places[1], (ControlPlace{27, 0, 293, 20}));
}

}  // namespace
}  // namespace reka::test
