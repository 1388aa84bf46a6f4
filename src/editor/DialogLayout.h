// Where the controls of the dialogs stand that can be sized, in pixels of the client area.

#pragma once

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

/// A distance on a screen of that many dots per inch, rounded.
constexpr int ScalePixels(int pixels, int dpi) {
    return (pixels * dpi + referenceDpi / 2) / referenceDpi;
}

/// The place of a control of that size with its left top corner there.
constexpr ControlPlace PlaceAt(int left, int top, const ControlSize& size) {
    return {left, top, left + size.width, top + size.height};
}

}  // namespace reka
