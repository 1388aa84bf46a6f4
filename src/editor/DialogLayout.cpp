// SPDX-License-Identifier: MIT
// Rows are placed one after the other, each by those above it. A dialog has a few dozen controls at most, so what a row
// refers to is looked for in the table, and nothing takes memory: a window can be sized without any.

#include "editor/DialogLayout.h"

#include <algorithm>

namespace reka {

namespace {

int EdgeOf(const ControlPlace& place, Side side) {
    switch (side) {
        case Side::Left:
            return place.left;
        case Side::Top:
            return place.top;
        case Side::Right:
            return place.right;
        default:
            return place.bottom;
    }
}

/// The dialog as far as it is laid out.
class CLayOut {
public:
    CLayOut(std::span<const LayoutRow> table, const DialogDesign& designed, const ControlSize& size, int dotsPerInch,
            std::span<ControlPlace> result)
        : rows(table), design(designed), client(size), dpi(dotsPerInch), places(result) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (rows[i].top.rule != EdgeRule::Centred) continue;
            lineHeight = std::max(lineHeight, design.controls[i].place.bottom - design.controls[i].place.top);
        }
    }

    void Place(std::size_t row) {
        const auto& [control, left, top, right, bottom] = rows[row];
        const ControlPlace& designed = design.controls[row].place;
        int width = designed.right - designed.left;
        if (left.rule == EdgeRule::Grown) width = std::max(width, GrownWidth(row));
        const int height = IsLayoutLine(control) ? lineHeight : designed.bottom - designed.top;
        ControlPlace& place = places[row];
        PlaceAlong({left, Side::Left}, {right, Side::Right}, width, row, place.left, place.right);
        PlaceAlong({top, Side::Top}, {bottom, Side::Bottom}, height, row, place.top, place.bottom);
    }

private:
    struct Edge {
        const Anchor& anchor;
        Side side;
    };

    /// One direction: what isn't tied is as far from the opposite edge as the control is large.
    void PlaceAlong(const Edge& lower, const Edge& upper, int size, std::size_t row, int& start, int& end) const {
        if (IsTied(lower.anchor)) start = Follow(lower, size, row);
        end = IsTied(upper.anchor) ? Follow(upper, size, row) : start + size;
        if (!IsTied(lower.anchor)) start = end - size;
    }

    int Follow(const Edge& edge, int size, std::size_t row) const {
        const Anchor& anchor = edge.anchor;
        const ControlPlace other = PlaceOf(anchor.of);
        const ControlPlace& designed = design.controls[row].place;
        switch (anchor.rule) {
            case EdgeRule::AsDesigned:
                return EdgeOf(other, edge.side) + EdgeOf(designed, edge.side) -
                       EdgeOf(DesignedPlaceOf(anchor.of), edge.side);
            case EdgeRule::Mirrored:
                return other.right - (designed.left - DesignedPlaceOf(anchor.of).left);
            case EdgeRule::Centred:
                return other.top + (other.bottom - other.top - size) / 2;
            default:
                return EdgeOf(other, anchor.side) + ScalePixels(anchor.distance, dpi);
        }
    }

    int GrownWidth(std::size_t row) const {
        const ControlPlace around = PlaceOf(rows[row].left.of);
        return std::min(design.controls[row].textWidth, (around.right - around.left) / 4);
    }

    std::size_t RowOf(int control) const {
        std::size_t row = 0;
        while (rows[row].control != control) ++row;
        return row;
    }
    ControlPlace PlaceOf(int control) const {
        return control == clientArea ? ControlPlace{0, 0, client.width, client.height} : places[RowOf(control)];
    }
    ControlPlace DesignedPlaceOf(int control) const {
        if (control == clientArea) return {0, 0, design.client.width, design.client.height};
        return design.controls[RowOf(control)].place;
    }

    std::span<const LayoutRow> rows;
    const DialogDesign& design;
    ControlSize client;
    int dpi;
    std::span<ControlPlace> places;
    int lineHeight = 0;
};

}  // namespace

void LayOut(std::span<const LayoutRow> rows, const DialogDesign& design, const ControlSize& client, int dpi,
            std::span<ControlPlace> places) {
    CLayOut layout(rows, design, client, dpi, places);
    for (std::size_t row = 0; row < rows.size(); ++row) layout.Place(row);
}

}  // namespace reka
