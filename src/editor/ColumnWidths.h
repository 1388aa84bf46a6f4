// SPDX-License-Identifier: MIT
// How wide the columns of a list are: each as wide as its texts need where there is room for all. Where there isn't,
// the widest give way, so that one long name pushes no column out of sight.

#pragma once

#include <span>
#include <vector>

namespace reka {

struct ColumnWish {
    int wanted;  // pixels that show all of its texts
    int least;   // that it has in any case
};

/// The widths, one for each column, in a list of `room` pixels. No column gets more than it wants, but for its least.
std::vector<int> ShareRoom(std::span<const ColumnWish> wishes, int room);

}  // namespace reka
