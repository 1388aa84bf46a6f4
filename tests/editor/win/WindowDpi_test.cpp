// SPDX-License-Identifier: MIT
// What dialogs take for their dots per inch, of systems that tell much, little or nothing.

#include "editor/win/WindowDpi.h"

#include <gtest/gtest.h>

#include "FakeDpi.h"

namespace reka::test {
namespace {

class WindowDpi : public testing::Test {
protected:
    WindowDpi() { EXPECT_NE(window, nullptr); }
    ~WindowDpi() override { DestroyWindow(window); }

    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
};

TEST_F(WindowDpi, IsTheMonitorsWhereTheSystemSizesDialogsByIt) {
    const CFakeDpi system(144, DialogSizing::ByMonitor);
    EXPECT_EQ(DpiOfNewDialog(window), 144);
    EXPECT_EQ(DpiOfWindow(window), 144);
}

TEST_F(WindowDpi, IsTheScreensForANewDialogWhereTheSystemDoesNot) {
    const CFakeDpi system(144, DialogSizing::ByScreen);
    EXPECT_EQ(DpiOfNewDialog(window), ScreenDpi());
    EXPECT_EQ(DpiOfWindow(window), 144);
}

TEST_F(WindowDpi, IsTheScreensWhereTheSystemKnowsNoOther) {
    const CFakeDpi system(144, DialogSizing::Unknown);
    EXPECT_EQ(DpiOfNewDialog(window), ScreenDpi());
    EXPECT_EQ(DpiOfWindow(window), ScreenDpi());
    EXPECT_EQ(SystemMetric(SM_CXSMICON, 144), GetSystemMetrics(SM_CXSMICON));
    TakeOverScaling(window);  // nobody to tell
}

TEST_F(WindowDpi, IsTheScreensForAWindowThatIsGone) {
    const CFakeDpi system(0, DialogSizing::ByMonitor);
    EXPECT_EQ(DpiOfNewDialog(window), ScreenDpi());
    EXPECT_EQ(DpiOfWindow(window), ScreenDpi());
}

TEST_F(WindowDpi, ScalesTheMeasuresOfTheSystem) {
    const CFakeDpi system(144, DialogSizing::ByMonitor);
    EXPECT_EQ(SystemMetric(SM_CXICON, 144), 48);
    EXPECT_EQ(SystemMetric(SM_CXICON, 192), 64);
}

TEST_F(WindowDpi, TellsTheSystemToLeaveScalingAlone) {
    const CFakeDpi system(144, DialogSizing::ByMonitor);
    TakeOverScaling(window);
    EXPECT_EQ(CFakeDpi::leftAlone, window);
}

TEST_F(WindowDpi, IsThatOfThisSystem) {
    EXPECT_EQ(DpiOfNewDialog(window), ScreenDpi());
    EXPECT_EQ(DpiOfWindow(window), ScreenDpi());
    EXPECT_EQ(SystemMetric(SM_CXSMICON, ScreenDpi()), GetSystemMetrics(SM_CXSMICON));
}

}  // namespace
}  // namespace reka::test
