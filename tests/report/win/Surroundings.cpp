// SPDX-License-Identifier: MIT
// The version comes from the system's innermost library, since the documented call gives what the program's manifest
// knows.

#include "report/win/Surroundings.h"

#include <windows.h>

#include "support/win/UnderWine.h"

namespace testreport {

namespace {

template <class Function>
Function InnerFunction(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name)));
}

bool IsWindows64Bit() {
    SYSTEM_INFO system = {};
    GetNativeSystemInfo(&system);
    return system.wProcessorArchitecture != PROCESSOR_ARCHITECTURE_INTEL;
}

}  // namespace

bool IsWine() {
    return reka::test::IsWine();
}

std::string SystemVersion() {
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    if (const auto get = InnerFunction<LONG(WINAPI*)(OSVERSIONINFOW*)>("RtlGetVersion")) get(&version);
    std::string text = "Windows " + std::to_string(version.dwMajorVersion) + "." +
                       std::to_string(version.dwMinorVersion) + "." + std::to_string(version.dwBuildNumber) +
                       (IsWindows64Bit() ? ", 64-bit" : ", 32-bit");
    if (const auto wine = InnerFunction<const char*(CDECL*)()>("wine_get_version")) {
        text += std::string(", which is Wine ") + wine();
    }
    return text;
}

std::string CodePages() {
    return std::to_string(GetACP()) + ", of consoles " + std::to_string(GetOEMCP());
}

std::string Screen() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return std::to_string(GetSystemMetrics(SM_CXSCREEN)) + " x " + std::to_string(GetSystemMetrics(SM_CYSCREEN)) +
           ", " + std::to_string(dpi) + " dots per inch";
}

}  // namespace testreport
