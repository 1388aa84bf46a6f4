// SPDX-License-Identifier: MIT
// Where the controls of a dialog stand that can be sized. A table tells what the edges of each control follow, and one
// function makes rectangles of it, in pixels of the client area; so a test needs no window.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace reka {

struct ControlSize {
    int width = 0;
    int height = 0;
};

/// As the platform has it: `right` and `bottom` are the first pixel outside.
struct ControlPlace {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    bool operator==(const ControlPlace&) const = default;
};

constexpr int referenceDpi = 96;  // dots per inch of the screen that distances between controls are given for

/// A distance on a screen of that many dots per inch, rounded, and the same in both directions.
constexpr int ScalePixels(int pixels, int dpi) {
    const int size = pixels < 0 ? -pixels : pixels;
    const int scaled = (size * dpi + referenceDpi / 2) / referenceDpi;
    return pixels < 0 ? -scaled : scaled;
}

enum class EdgeRule : std::uint8_t { Loose, Fixed, AsDesigned, Mirrored, Centred, Grown };
enum class Side : std::uint8_t { Left, Top, Right, Bottom };

/// What an edge follows: a part of the client area, or of a control that stands above it in the table. By default it is
/// loose: it is as far from the opposite edge as in the template.
struct Anchor {
    EdgeRule rule = EdgeRule::Loose;
    int of = 0;
    Side side = Side::Left;
    int distance = 0;  // pixels of 96 dpi, to the right or downwards
};

/// Whether the place of the edge doesn't come from the opposite one.
constexpr bool IsTied(const Anchor& anchor) {
    return anchor.rule != EdgeRule::Loose && anchor.rule != EdgeRule::Grown;
}

constexpr int clientArea = 0;  // the number that stands for it

/// The number of a line, which is no control but what controls are centred in. All lines of a dialog are as high as the
/// tallest of these controls.
constexpr int LayoutLine(int number) {
    return -1 - number;
}
constexpr bool IsLayoutLine(int control) {
    return control < 0;
}

constexpr Anchor loose = {};
/// An edge of the control, and so many pixels to the right or downwards.
constexpr Anchor LeftOf(int control, int distance = 0) {
    return {EdgeRule::Fixed, control, Side::Left, distance};
}
constexpr Anchor TopOf(int control, int distance = 0) {
    return {EdgeRule::Fixed, control, Side::Top, distance};
}
constexpr Anchor RightOf(int control, int distance = 0) {
    return {EdgeRule::Fixed, control, Side::Right, distance};
}
constexpr Anchor BottomOf(int control, int distance = 0) {
    return {EdgeRule::Fixed, control, Side::Bottom, distance};
}
/// The same edge of the control, at the distance that the template has between the two.
constexpr Anchor AsDesigned(int control) {
    return {EdgeRule::AsDesigned, control, Side::Left, 0};
}
/// For a left edge and a top: where the template has it. For a right edge and a bottom: as far from that of the client
/// area as the template has it.
constexpr Anchor kept = AsDesigned(clientArea);
/// For a right edge: as far inside that of the control as the template has the left edges apart.
constexpr Anchor Mirrored(int control) {
    return {EdgeRule::Mirrored, control, Side::Left, 0};
}
/// For a top: in the middle of the line.
constexpr Anchor CentredIn(int line) {
    return {EdgeRule::Centred, line, Side::Top, 0};
}
/// For a left edge: loose, but the control is as wide as its text needs, up to a quarter of the width of that control,
/// where this is more than the template gives it.
constexpr Anchor GrownToQuarterOf(int control) {
    return {EdgeRule::Grown, control, Side::Left, 0};
}

struct LayoutRow {
    int control;
    Anchor left;
    Anchor top;
    Anchor right;
    Anchor bottom;
};

constexpr std::size_t mostLayoutRows = 40;

/// Whether each anchor leads upwards in the table, and each control is placed in both directions.
constexpr bool IsSoundLayout(std::span<const LayoutRow> rows) {
    const auto isAbove = [rows](int control, std::size_t end) {
        for (std::size_t i = 0; i < end; ++i) {
            if (rows[i].control == control) return true;
        }
        return control == clientArea;
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const LayoutRow& row = rows[i];
        if (IsLayoutLine(row.control) ? !IsTied(row.bottom) : !IsTied(row.left) && !IsTied(row.right)) return false;
        if (!IsTied(row.top) && !IsTied(row.bottom)) return false;
        for (const Anchor& anchor : {row.left, row.top, row.right, row.bottom}) {
            if (anchor.rule != EdgeRule::Loose && !isAbove(anchor.of, i)) return false;
        }
    }
    return rows.size() <= mostLayoutRows;
}

/// A control as the dialog's template has it.
struct DesignedControl {
    ControlPlace place;
    int textWidth = 0;  // that its text needs, for one that grows
};
struct DialogDesign {
    ControlSize client;
    std::span<const DesignedControl> controls;  // one for each row of the table; nothing for a line
};

/// Writes one place for each row of a sound table, for a client area of that size.
void LayOut(std::span<const LayoutRow> rows, const DialogDesign& design, const ControlSize& client, int dpi,
            std::span<ControlPlace> places);

}  // namespace reka
