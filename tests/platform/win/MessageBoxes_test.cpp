// SPDX-License-Identifier: MIT
// The system's message boxes: a thread of the test finds each by its title, looks at it and presses a button.

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "platform/UserMessages.h"

namespace reka::test {
namespace {

constexpr std::chrono::seconds longestWait(20);

const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

std::u16string TextOfWindow(HWND window) {
    wchar_t text[1000] = {};
    SendMessageW(window, WM_GETTEXT, 1000, reinterpret_cast<LPARAM>(text));
    return reinterpret_cast<const char16_t*>(text);
}

/// What a box showed.
struct ShownBox {
    std::vector<std::u16string> texts;  // of its parts, the buttons left out
    std::vector<int> buttons;           // their numbers, in ascending order
    HICON icon = nullptr;
    HWND owner = nullptr;
    bool isOwnerEnabled = true;
};

BOOL CALLBACK LookAtPart(HWND part, LPARAM data) {
    auto& shown = *reinterpret_cast<ShownBox*>(data);
    wchar_t name[100] = {};
    GetClassNameW(part, name, 100);
    if (std::wstring(name) == L"Button") {
        if (GetWindowLongW(part, GWL_STYLE) & WS_VISIBLE) shown.buttons.push_back(GetDlgCtrlID(part));
        return TRUE;
    }
    const auto icon = reinterpret_cast<HICON>(SendMessageW(part, STM_GETICON, 0, 0));
    if (icon) {
        shown.icon = icon;
    } else {
        shown.texts.push_back(TextOfWindow(part));
    }
    return TRUE;
}

/// Waits for a box of this process with the title, looks at it and presses the button. A box that doesn't come within
/// the time ends what the thread that made this is waiting for.
class CBoxPresser {
public:
    CBoxPresser(std::u16string boxTitle, int pressed)
        : title(std::move(boxTitle)), button(pressed), shower(GetCurrentThreadId()), thread([this] { Run(); }) {}
    ~CBoxPresser() { Finish(); }
    CBoxPresser(const CBoxPresser&) = delete;
    CBoxPresser& operator=(const CBoxPresser&) = delete;

    /// To be called once the box is gone. True if it was found.
    bool Finish() {
        isOver = true;
        if (thread.joinable()) thread.join();
        return isFound;
    }

    ShownBox shown;

private:
    void Run() {
        const auto end = std::chrono::steady_clock::now() + longestWait;
        while (!isOver && std::chrono::steady_clock::now() < end) {
            const HWND box = FindWindowW(L"#32770", Wide(title));
            DWORD process = 0;
            if (box) GetWindowThreadProcessId(box, &process);
            if (process == GetCurrentProcessId() && IsWindowVisible(box)) {
                isFound = true;
                Look(box);
                PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
                return;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        if (!isOver) PostThreadMessageW(shower, WM_QUIT, 0, 0);
    }

    void Look(HWND box) {
        shown.owner = GetWindow(box, GW_OWNER);
        shown.isOwnerEnabled = shown.owner && IsWindowEnabled(shown.owner);
        EnumChildWindows(box, LookAtPart, reinterpret_cast<LPARAM>(&shown));
        std::sort(shown.buttons.begin(), shown.buttons.end());
    }

    const std::u16string title;
    const int button;
    const DWORD shower;
    std::atomic<bool> isOver{false};
    bool isFound = false;
    std::thread thread;  // at the end, since it uses what stands above
};

/// A window of the test, active while it lives.
class CTestWindow {
public:
    CTestWindow()
        : window(CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                                 nullptr, GetModuleHandleW(nullptr), nullptr)) {
        SetActiveWindow(window);
    }
    ~CTestWindow() { DestroyWindow(window); }
    CTestWindow(const CTestWindow&) = delete;
    CTestWindow& operator=(const CTestWindow&) = delete;
    HWND Get() const { return window; }

private:
    HWND window;
};

struct BoxCase {
    const char* name;
    std::uint32_t style;
    std::vector<int> buttons;
    const wchar_t* icon;
    int pressed;
    MessageAnswer answer;
};
void PrintTo(const BoxCase& row, std::ostream* stream) {
    *stream << row.name;
}

// The styles that the component uses.
const BoxCase boxCases[] = {
    {"QuestionYes", 36, {IDYES, IDNO}, IDI_QUESTION, IDYES, MessageAnswer::Yes},
    {"QuestionNo", 36, {IDYES, IDNO}, IDI_QUESTION, IDNO, MessageAnswer::No},
    {"Failure", 16, {IDOK}, IDI_ERROR, IDOK, MessageAnswer::Ok},
    {"Information", 64, {IDOK}, IDI_INFORMATION, IDOK, MessageAnswer::Ok},
    {"Warning", 48, {IDOK}, IDI_WARNING, IDOK, MessageAnswer::Ok},
    {"ContinueOk", 49, {IDOK, IDCANCEL}, IDI_WARNING, IDOK, MessageAnswer::Ok},
    {"ContinueCancel", 49, {IDOK, IDCANCEL}, IDI_WARNING, IDCANCEL, MessageAnswer::Cancel},
};

class MessageBoxes : public testing::TestWithParam<BoxCase> {
protected:
    /// Shows a box of the row's style for that owner, and checks all but who owns it.
    static ShownBox Show(MessageOwner owner) {
        const BoxCase& row = GetParam();
        const std::u16string title = u"REKA box of the test:";
        const std::u16string text = u"A text with a quote \" and \u00E9\u4E2D.";
        CBoxPresser presser(title, row.pressed);
        EXPECT_EQ(SystemMessageBoxes().Show({text, title, row.style, owner}), row.answer);
        EXPECT_TRUE(presser.Finish());
        EXPECT_NE(std::find(presser.shown.texts.begin(), presser.shown.texts.end(), text), presser.shown.texts.end());
        EXPECT_EQ(presser.shown.buttons, row.buttons);
        EXPECT_NE(presser.shown.icon, nullptr);
        EXPECT_EQ(presser.shown.icon, LoadIconW(nullptr, row.icon));
        return presser.shown;
    }
};

TEST_P(MessageBoxes, AreShownAndAnswered) {
    const CTestWindow window;  // which is active, but not asked for
    const ShownBox shown = Show(MessageOwner::None);
    EXPECT_EQ(shown.owner, nullptr);
    EXPECT_TRUE(IsWindowEnabled(window.Get()));
}

TEST_P(MessageBoxes, BelongToTheActiveWindow) {
    const CTestWindow window;
    ASSERT_EQ(GetActiveWindow(), window.Get());
    const ShownBox shown = Show(MessageOwner::ActiveWindow);
    EXPECT_EQ(shown.owner, window.Get());
    EXPECT_FALSE(shown.isOwnerEnabled);  // while the box is open
    EXPECT_TRUE(IsWindowEnabled(window.Get()));
}
INSTANTIATE_TEST_SUITE_P(Table, MessageBoxes, testing::ValuesIn(boxCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace reka::test
