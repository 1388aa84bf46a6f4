// SPDX-License-Identifier: MIT
// Starts the tests as the module starts itself: with the common controls and the rich edit control.
//
// With --dots-per-inch=N they run on a screen of N dots per inch, which a program finds as it starts: so this one
// starts itself again, with the user's setting changed meanwhile. With --code-page=N they run only where the system's
// is that one.

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "Driver.h"
#include "server/Module.h"

namespace {

constexpr char dpiOption[] = "--dots-per-inch=";
constexpr char codePageOption[] = "--code-page=";
constexpr wchar_t desktopKey[] = L"Control Panel\\Desktop";
constexpr wchar_t dpiValue[] = L"LogPixels";

/// The user's setting, changed while this lives.
class CScreenDpi {
public:
    explicit CScreenDpi(DWORD dpi) {
        DWORD size = sizeof before;
        hadValue =
            RegGetValueW(HKEY_CURRENT_USER, desktopKey, dpiValue, RRF_RT_REG_DWORD, nullptr, &before, &size) == 0;
        Set(dpi);
    }
    ~CScreenDpi() {
        if (hadValue) {
            Set(before);
        } else {
            RegDeleteKeyValueW(HKEY_CURRENT_USER, desktopKey, dpiValue);
        }
    }
    CScreenDpi(const CScreenDpi&) = delete;
    CScreenDpi& operator=(const CScreenDpi&) = delete;

private:
    static void Set(DWORD dpi) {
        RegSetKeyValueW(HKEY_CURRENT_USER, desktopKey, dpiValue, REG_DWORD, &dpi, sizeof dpi);
    }

    DWORD before = 0;
    bool hadValue = false;
};

/// Runs this program with the rest of the arguments; what it returns.
int RunAgain(DWORD dpi, int count, char** arguments) {
    const CScreenDpi screen(dpi);
    char path[1024] = {};
    GetModuleFileNameA(nullptr, path, sizeof path);
    std::string command = "\"" + std::string(path) + "\"";
    for (int i = 0; i < count; ++i) command += " \"" + std::string(arguments[i]) + "\"";
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process))
        return 2;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 2;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(code);
}

/// The number that the first argument gives for the option; 0 if it isn't that option.
unsigned NumberOf(const char* option, int count, char** arguments) {
    const std::size_t length = std::strlen(option);
    if (count < 2 || std::strncmp(arguments[1], option, length) != 0) return 0;
    return static_cast<unsigned>(std::atoi(arguments[1] + length));
}

}  // namespace

int main(int argc, char** argv) {
    if (const unsigned dpi = NumberOf(dpiOption, argc, argv)) return RunAgain(dpi, argc - 2, argv + 2);
    const unsigned codePage = NumberOf(codePageOption, argc, argv);
    if (codePage && codePage != GetACP()) {
        std::printf("The code page is %u rather than %u.\n", GetACP(), codePage);
        return 2;
    }
    SetProcessDPIAware();  // otherwise the system stretches pictures of 96 dots per inch
    testing::InitGoogleTest(&argc, argv);
    reka::test::TakePicturesOfFailures();
    reka::StartModule(GetModuleHandleW(nullptr));
    const int result = RUN_ALL_TESTS();
    reka::EndModule(false);
    return result;
}
