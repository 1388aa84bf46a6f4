// SPDX-License-Identifier: MIT
// The bell: messages come in the order sent, posted, typed, painted, timed. A timer of the test's thread therefore
// strikes when everything before it has been dealt with, in whatever modal loop that thread is.

#include "Driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <optional>
#include <vector>

#include "platform/UserMessages.h"
#include "text/Utf8.h"

namespace reka::test {

namespace {

constexpr std::chrono::seconds longestWait(20);
constexpr UINT ringMessage = WM_APP + 1;
constexpr UINT runMessage = WM_APP + 2;

struct GivenUp {};

LRESULT CALLBACK BellProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case ringMessage:
            SetTimer(window, 1, USER_TIMER_MINIMUM, nullptr);
            SetWindowLongPtrW(window, GWLP_USERDATA, lParam);
            return 0;
        case runMessage:
            (*reinterpret_cast<const std::function<void()>*>(lParam))();
            return 0;
        case WM_TIMER:
            KillTimer(window, 1);
            SetEvent(reinterpret_cast<HANDLE>(GetWindowLongPtrW(window, GWLP_USERDATA)));
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

HWND MakeBell() {
    WNDCLASSW bellClass = {};
    bellClass.lpfnWndProc = BellProcedure;
    bellClass.hInstance = GetModuleHandleW(nullptr);
    bellClass.lpszClassName = L"REKA bell of the tests";
    RegisterClassW(&bellClass);  // fails after the first time
    return CreateWindowExW(0, bellClass.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, bellClass.hInstance,
                           nullptr);
}

std::u16string ClassOf(HWND window) {
    wchar_t name[100] = {};
    GetClassNameW(window, name, 100);
    return reinterpret_cast<const char16_t*>(name);
}

BOOL CALLBACK CollectWindow(HWND window, LPARAM data) {
    reinterpret_cast<std::vector<HWND>*>(data)->push_back(window);
    return TRUE;
}

/// The visible windows of a thread that are of that class, the topmost first.
std::vector<HWND> ShownWindowsOf(DWORD thread, std::u16string_view className) {
    std::vector<HWND> windows;
    EnumThreadWindows(thread, CollectWindow, reinterpret_cast<LPARAM>(&windows));
    const auto isAnother = [&](HWND window) { return ClassOf(window) != className || !IsWindowVisible(window); };
    windows.erase(std::remove_if(windows.begin(), windows.end(), isAnother), windows.end());
    return windows;
}

std::vector<HWND> DialogsOf(DWORD thread) {
    return ShownWindowsOf(thread, u"#32770");
}

INPUT KeyInput(WORD key, DWORD flags) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    return input;
}

INPUT CharacterInput(char16_t character, DWORD flags) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = character;
    input.ki.dwFlags = KEYEVENTF_UNICODE | flags;
    return input;
}

INPUT MouseInput(DWORD flags, POINT place) {
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    // The screen is 65536 units wide and high, and a unit's share of a pixel is rounded down.
    const auto scale = [](LONG pixel, int size) {
        return static_cast<LONG>((std::int64_t{pixel} * 65536 + 65535) / size);
    };
    input.mi.dx = scale(place.x, GetSystemMetrics(SM_CXSCREEN));
    input.mi.dy = scale(place.y, GetSystemMetrics(SM_CYSCREEN));
    return input;
}

constexpr DWORD moveFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE;

std::vector<INPUT> Holding(std::initializer_list<WORD> held, const std::vector<INPUT>& inputs) {
    std::vector<INPUT> all;
    for (const WORD key : held) all.push_back(KeyInput(key, 0));
    all.insert(all.end(), inputs.begin(), inputs.end());
    for (const WORD key : held) all.push_back(KeyInput(key, KEYEVENTF_KEYUP));
    return all;
}

void Put(std::vector<INPUT> inputs) {
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

struct BoxParts {
    std::vector<std::u16string> texts;
    std::vector<int> buttons;
    HICON icon = nullptr;
    CUser* user = nullptr;
};

BOOL CALLBACK LookAtPart(HWND part, LPARAM data) {
    auto& parts = *reinterpret_cast<BoxParts*>(data);
    if (ClassOf(part) == u"Button") {
        if (GetWindowLongW(part, GWL_STYLE) & WS_VISIBLE) parts.buttons.push_back(GetDlgCtrlID(part));
        return TRUE;
    }
    const auto icon = reinterpret_cast<HICON>(parts.user->Send(part, STM_GETICON));
    if (icon) {
        parts.icon = icon;
    } else {
        parts.texts.push_back(parts.user->TextOf(part));
    }
    return TRUE;
}

std::vector<int> ButtonsOf(std::uint32_t style) {
    switch (style & messagestyle::buttons) {
        case messagestyle::okCancel:
            return {IDOK, IDCANCEL};
        case messagestyle::yesNo:
            return {IDYES, IDNO};
        default:
            return {IDOK};
    }
}

HICON IconOf(std::uint32_t style) {
    switch (style & 0xF0) {
        case messagestyle::iconError:
            return LoadIconW(nullptr, IDI_ERROR);
        case messagestyle::iconQuestion:
            return LoadIconW(nullptr, IDI_QUESTION);
        case messagestyle::iconExclamation:
            return LoadIconW(nullptr, IDI_WARNING);
        case messagestyle::iconInformation:
            return LoadIconW(nullptr, IDI_INFORMATION);
        default:
            return nullptr;
    }
}

}  // namespace

RECT PlaceOf(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    return place;
}

POINT MiddleOf(const RECT& place) {
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

CUser::CUser(std::function<void(CUser&)> userWork)
    : work(std::move(userWork)),
      testThread(GetCurrentThreadId()),
      bell(MakeBell()),
      rung(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      finished(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      thread([this] { Run(); }) {}

CUser::~CUser() {
    Finish();
    DestroyWindow(bell);
    CloseHandle(rung);
    CloseHandle(finished);
}

void CUser::Finish() {
    if (!thread.joinable()) return;
    isOver = true;
    // What the work still asks of this thread is answered.
    while (MsgWaitForMultipleObjects(1, &finished, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    thread.join();
}

void CUser::Run() {
    try {
        work(*this);
        const auto end = std::chrono::steady_clock::now() + longestWait;
        while (!isOver && std::chrono::steady_clock::now() < end) Sleep(5);
        if (!isOver) GiveUp("the work is done, but a window is still open");
    } catch (const GivenUp&) {
    } catch (const std::exception& failure) {
        ADD_FAILURE() << "the user's work ended by an exception: " << failure.what();
    }
    CloseEverything();
    SetEvent(finished);
}

void CUser::CloseEverything() {
    const auto end = std::chrono::steady_clock::now() + longestWait;
    while (!isOver && std::chrono::steady_clock::now() < end) {
        const std::vector<HWND> dialogs = DialogsOf(testThread);
        for (const HWND dialog : dialogs) {
            if (!IsWindowEnabled(dialog)) continue;
            PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
            PostMessageW(dialog, WM_COMMAND, IDNO, 0);  // a question for yes or no can't be cancelled
        }
        Sleep(100);
    }
}

void CUser::GiveUp(const std::string& why) {
    ADD_FAILURE() << why;
    throw GivenUp();
}

void CUser::WaitUntil(const char* what, const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + longestWait;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) GiveUp(std::string("waited in vain: ") + what);
        if (isOver && !condition()) GiveUp(std::string("the windows were closed before: ") + what);
        Sleep(10);
    }
}

void CUser::Settle() {
    PostMessageW(bell, ringMessage, 0, reinterpret_cast<LPARAM>(rung));
    const auto end = std::chrono::steady_clock::now() + longestWait;
    while (WaitForSingleObject(rung, 20) != WAIT_OBJECT_0) {
        if (isOver) return;
        if (std::chrono::steady_clock::now() >= end) GiveUp("the windows don't answer");
    }
}

void CUser::OnTestThread(const std::function<void()>& action) {
    Send(bell, runMessage, 0, reinterpret_cast<LPARAM>(&action));
}

HWND CUser::FindDialog(const std::u16string& title) const {
    for (const HWND dialog : DialogsOf(testThread)) {
        wchar_t text[500] = {};
        GetWindowTextW(dialog, text, 500);
        if (title == reinterpret_cast<const char16_t*>(text) && IsWindowEnabled(dialog)) return dialog;
    }
    return nullptr;
}

HWND CUser::WaitForForeground(const std::u16string& title) {
    HWND found = nullptr;
    const std::string what = "a window with the title " + Utf8FromUtf16(title);
    WaitUntil(what.c_str(), [&] { return (found = FindDialog(title)) != nullptr; });
    Settle();
    if (GetForegroundWindow() != found) {
        SetForegroundWindow(found);
        WaitUntil((what + " in the foreground").c_str(), [&] { return GetForegroundWindow() == found; });
        Settle();
    }
    return found;
}

CDrivenWindow CUser::WaitFor(const std::u16string& title) {
    return {*this, WaitForForeground(title)};
}

void CUser::Answer(const ExpectedBox& expected, int button) {
    const HWND box = WaitForForeground(expected.title);
    BoxParts parts;
    parts.user = this;
    EnumChildWindows(box, LookAtPart, reinterpret_cast<LPARAM>(&parts));
    std::sort(parts.buttons.begin(), parts.buttons.end());
    EXPECT_NE(std::find(parts.texts.begin(), parts.texts.end(), expected.text), parts.texts.end())
        << "expected: " << Utf8FromUtf16(expected.text)
        << "\nshown: " << (parts.texts.empty() ? "" : Utf8FromUtf16(parts.texts.front()));
    const std::vector<int> buttons = ButtonsOf(expected.style);
    EXPECT_EQ(parts.buttons, buttons);
    EXPECT_EQ(parts.icon, IconOf(expected.style));
    const int defaultButton = buttons[expected.style & 0x100 ? 1 : 0];
    EXPECT_EQ(GetDlgCtrlID(Focus()), defaultButton) << "the default button";
    const HWND owner = GetWindow(box, GW_OWNER);
    EXPECT_FALSE(owner && IsWindowEnabled(owner)) << "the box isn't modal";
    const CDrivenWindow driven(*this, box);
    driven.Click(button);
    WaitUntil("the end of the message box", [&] { return !IsWindow(box) || !IsWindowVisible(box); });
}

/// Keys go to the window in the foreground, which another program's window may have taken, such as the desktop's as it
/// starts.
void CUser::BringForward() {
    const HWND top = TopDialog();
    if (!top || GetForegroundWindow() == top) return;
    SetForegroundWindow(top);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    while (GetForegroundWindow() != top && std::chrono::steady_clock::now() < end) Sleep(10);
    Settle();
}

void CUser::Press(WORD key, std::initializer_list<WORD> held) {
    BringForward();
    Put(Holding(held, {KeyInput(key, 0), KeyInput(key, KEYEVENTF_KEYUP)}));
    Settle();
}

void CUser::Type(std::u16string_view text) {
    BringForward();
    constexpr std::size_t atOnce = 100;  // a queue of messages has an end
    for (std::size_t start = 0; start < text.size(); start += atOnce) {
        std::vector<INPUT> inputs;
        for (const char16_t character : text.substr(start, atOnce)) {
            inputs.push_back(CharacterInput(character, 0));
            inputs.push_back(CharacterInput(character, KEYEVENTF_KEYUP));
        }
        Put(std::move(inputs));
        Settle();
    }
}

void CUser::ClickAt(POINT place, int count, std::initializer_list<WORD> held) {
    if (std::abs(place.x - lastClick.x) < 10 && std::abs(place.y - lastClick.y) < 10) {
        Sleep(GetDoubleClickTime() + 20);  // no click before is part of this one
    }
    lastClick = place;
    Put({MouseInput(moveFlags, place)});
    Settle();
    // Each with its place: the display may have moved the pointer back by now, since it has one of its own.
    std::vector<INPUT> clicks;
    for (int i = 0; i < count; ++i) {
        clicks.push_back(MouseInput(moveFlags | MOUSEEVENTF_LEFTDOWN, place));
        clicks.push_back(MouseInput(moveFlags | MOUSEEVENTF_LEFTUP, place));
    }
    Put(Holding(held, clicks));
    Settle();
}

void CUser::RightClickAt(POINT place) {
    Put({MouseInput(moveFlags, place)});
    Put({MouseInput(moveFlags | MOUSEEVENTF_RIGHTDOWN, place), MouseInput(moveFlags | MOUSEEVENTF_RIGHTUP, place)});
}

void CUser::Drag(POINT from, POINT to) {
    Sleep(GetDoubleClickTime() + 20);  // no click before is part of this
    Put({MouseInput(moveFlags, from)});
    Settle();
    Put({MouseInput(moveFlags | MOUSEEVENTF_LEFTDOWN, from)});
    Settle();
    constexpr int steps = 4;
    for (int i = 1; i <= steps; ++i) {
        Put({MouseInput(moveFlags, {from.x + (to.x - from.x) * i / steps, from.y + (to.y - from.y) * i / steps})});
        Settle();
    }
    Put({MouseInput(moveFlags | MOUSEEVENTF_LEFTUP, to)});
    Settle();
}

LRESULT CUser::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    const auto limit = static_cast<UINT>(std::chrono::milliseconds(longestWait).count());
    if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, limit, &result)) {
        GiveUp("message " + std::to_string(message) + " isn't answered");
    }
    return static_cast<LRESULT>(result);
}

std::u16string CUser::TextOf(HWND window) {
    const auto length = static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH));
    std::u16string text(length + 1, u'\0');
    const LRESULT copied = Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

HWND CUser::Focus() const {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(testThread, &info) ? info.hwndFocus : nullptr;
}

HWND CUser::ShownWindow(std::u16string_view className) const {
    const std::vector<HWND> windows = ShownWindowsOf(testThread, className);
    return windows.empty() ? nullptr : windows.front();
}

HWND CUser::TopDialog() const {
    for (const HWND dialog : DialogsOf(testThread)) {
        if (IsWindowEnabled(dialog)) return dialog;
    }
    return nullptr;
}

int CUser::CountDialogs() const {
    return static_cast<int>(DialogsOf(testThread).size());
}

}  // namespace reka::test
