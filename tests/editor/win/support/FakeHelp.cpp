// SPDX-License-Identifier: MIT
// A control library of HTML Help that only notes how it was called.

#include <windows.h>

namespace {

wchar_t lastCall[2000];
int callCount = 0;
HWND answer = nullptr;
HWND lastCaller = nullptr;

}  // namespace

// Has the ordinal that the system's library gives it.
extern "C" HWND WINAPI FakeHtmlHelp(HWND caller, LPCWSTR file, UINT command, DWORD_PTR data) {
    ++callCount;
    lastCaller = caller;
    wsprintfW(lastCall, L"%u|%s|%s", command, file, reinterpret_cast<LPCWSTR>(data));
    return answer;
}

extern "C" const wchar_t* LastHelpCall() {
    return lastCall;
}
extern "C" int HelpCallCount() {
    return callCount;
}
extern "C" HWND LastHelpCaller() {
    return lastCaller;
}
extern "C" void SetHelpAnswer(HWND window) {
    answer = window;
}
