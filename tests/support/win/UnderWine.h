// SPDX-License-Identifier: MIT
// Expectations that a test can have under Wine alone, where nobody else uses the computer.

#pragma once

#include <windows.h>

#include <cstdio>

namespace reka::test {

inline bool IsWine() {
    const HMODULE system = GetModuleHandleW(L"ntdll.dll");
    return system && GetProcAddress(system, "wine_get_version");
}

/// Whether what holds under Wine alone, for that reason, is to be looked at. Says so in the test's output, where the
/// report of a run on Windows finds it.
inline bool HoldsUnderWineAlone(const char* reason) {
    std::printf("[WINE ALONE] %s\n", reason);
    return IsWine();
}

}  // namespace reka::test
