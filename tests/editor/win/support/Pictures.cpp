// SPDX-License-Identifier: MIT
// Pictures of what is on the screen, kept beside the tests' other results for people to look at.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "Driver.h"

namespace reka::test {

namespace {

/// Below the current one; another one for each program that runs at the same time.
std::string Folder() {
    const char* const named = std::getenv("REKA_TEST_PICTURES");
    return named ? named : "pictures";
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// The pixels of the screen from top to bottom, four bytes each.
std::vector<std::uint32_t> PixelsOf(const RECT& place, BITMAPINFOHEADER& header) {
    header = {};
    header.biSize = sizeof header;
    header.biWidth = place.right - place.left;
    header.biHeight = place.top - place.bottom;  // from top to bottom
    header.biPlanes = 1;
    header.biBitCount = 32;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(header.biWidth) *
                                      static_cast<std::size_t>(-header.biHeight));
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, header.biWidth, -header.biHeight);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, header.biWidth, -header.biHeight, screen, place.left, place.top, SRCCOPY);
    SelectObject(memory, before);
    BITMAPINFO info = {};
    info.bmiHeader = header;
    GetDIBits(screen, bitmap, 0, static_cast<UINT>(-header.biHeight), pixels.data(), &info, DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return pixels;
}

/// Takes one picture of each test that fails, when it does: what was on the screen then is what went wrong.
class CPhotographer : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { isTaken = false; }
    void OnTestPartResult(const testing::TestPartResult& result) override {
        const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
        if (!result.failed() || !test || isTaken) return;
        isTaken = true;
        std::string name = std::string("failure-") + test->test_suite_name() + "." + test->name();
        std::replace(name.begin(), name.end(), '/', '-');
        SavePicture(name, {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)});
    }

    bool isTaken = false;
};

}  // namespace

int ScreenDpi() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi;
}

void TakePicturesOfFailures() {
    testing::UnitTest::GetInstance()->listeners().Append(new CPhotographer);  // which the listeners own
}

bool SavePicture(const std::string& name, const RECT& place) {
    const std::string folder = Folder();
    CreateDirectoryA(folder.c_str(), nullptr);
    const std::string path = folder + "/" + name + "-" + std::to_string(ScreenDpi()) + ".bmp";
    BITMAPINFOHEADER header = {};
    const std::vector<std::uint32_t> pixels = PixelsOf(place, header);
    const auto size = static_cast<DWORD>(pixels.size() * sizeof pixels[0]);
    BITMAPFILEHEADER start = {};
    start.bfType = 0x4D42;  // "BM"
    start.bfOffBits = sizeof start + sizeof header;
    start.bfSize = start.bfOffBits + size;
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "wb"));
    return file && std::fwrite(&start, sizeof start, 1, file.get()) == 1 &&
           std::fwrite(&header, sizeof header, 1, file.get()) == 1 &&
           std::fwrite(pixels.data(), 1, size, file.get()) == size;
}

}  // namespace reka::test
