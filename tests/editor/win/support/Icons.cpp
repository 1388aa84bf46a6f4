// SPDX-License-Identifier: MIT
// Icons are drawn on white and compared dot by dot: handles tell nothing, since each loading gives another one. That
// the module's icons differ from each other is expected too, or the comparison would prove nothing.

#include "Icons.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "editor/win/resource.h"
#include "platform/win/SystemModules.h"

namespace reka::test {

namespace {

/// What is seen of it on white, in a square of that size; nothing for null.
std::vector<std::uint32_t> Look(HICON icon, int size) {
    if (!icon) return {};
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, size, -size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC device = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateDIBSection(device, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(device, bitmap);
    PatBlt(device, 0, 0, size, size, WHITENESS);
    DrawIconEx(device, 0, 0, icon, size, size, 0, nullptr, DI_NORMAL);
    GdiFlush();
    const auto* const pixels = static_cast<const std::uint32_t*>(bits);
    std::vector<std::uint32_t> look(pixels, pixels + static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    for (std::uint32_t& pixel : look) pixel &= 0xFFFFFF;
    SelectObject(device, before);
    DeleteObject(bitmap);
    DeleteDC(device);
    return look;
}

}  // namespace

void ExpectIcon(LRESULT icon, int resource, int widthMetric) {
    const int size = GetSystemMetrics(widthMetric);
    const std::vector<std::uint32_t> shown = Look(reinterpret_cast<HICON>(icon), size);
    for (const int number : {IDI_COMPONENT, IDI_RATE_WIZARD, IDI_EDIT_EXPRESSION}) {
        const auto loaded = static_cast<HICON>(
            LoadImageW(ModuleHandle(), MAKEINTRESOURCEW(number), IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
        EXPECT_NE(loaded, nullptr);
        EXPECT_EQ(shown == Look(loaded, size), number == resource) << number;
        DestroyIcon(loaded);
    }
}

}  // namespace reka::test
