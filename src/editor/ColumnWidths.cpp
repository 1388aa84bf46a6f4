// SPDX-License-Identifier: MIT
// One width is the most that any column gets, and the largest one for which all have room is looked for by halves: a
// column that wants less has all that it wants, and those that want more share the rest evenly.

#include "editor/ColumnWidths.h"

#include <algorithm>
#include <cstdint>

namespace reka {

namespace {

int WidthOf(const ColumnWish& wish, int most) {
    return std::max(wish.least, std::min(wish.wanted, most));
}

bool HaveRoom(std::span<const ColumnWish> wishes, int most, int room) {
    std::int64_t sum = 0;
    for (const ColumnWish& wish : wishes) sum += WidthOf(wish, most);
    return sum <= room;
}

}  // namespace

std::vector<int> ShareRoom(std::span<const ColumnWish> wishes, int room) {
    int most = 0;
    for (const ColumnWish& wish : wishes) most = std::max(most, wish.wanted);
    if (!HaveRoom(wishes, most, room)) {
        int fitting = 0;  // or the least widths, where not even these have room
        for (int tooMuch = most; tooMuch - fitting > 1;) {
            const int middle = fitting + (tooMuch - fitting) / 2;
            (HaveRoom(wishes, middle, room) ? fitting : tooMuch) = middle;
        }
        most = fitting;
    }
    std::vector<int> widths;
    widths.reserve(wishes.size());
    for (const ColumnWish& wish : wishes) widths.push_back(WidthOf(wish, most));
    return widths;
}

}  // namespace reka
