// SPDX-License-Identifier: MIT
// Starts the tests in an apartment like a simulator's. Once they are done nothing may keep the module loaded.

#include <gtest/gtest.h>

#include <cstdio>

#include "Host.h"

namespace {

/// What the module says after the last test: 0 if it can go. It is loaded if the tests haven't, or no longer.
HRESULT AskWhetherItCanGo() {
    const std::wstring path = host::ModulePath();
    if (path.empty()) return REGDB_E_CLASSNOTREG;
    const HMODULE module = LoadLibraryW(path.c_str());
    if (!module) return HRESULT_FROM_WIN32(GetLastError());
    using CanUnloadNow = HRESULT(STDAPICALLTYPE*)();
    const auto canUnloadNow =
        reinterpret_cast<CanUnloadNow>(reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
    const HRESULT answer = canUnloadNow ? canUnloadNow() : E_FAIL;
    FreeLibrary(module);
    return answer;
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();  // before the component is registered
    const host::CApartment apartment;
    const int result = RUN_ALL_TESTS();
    const HRESULT answer = AskWhetherItCanGo();
    if (answer == S_OK) return result;
    std::printf("[  FAILED  ] the module can't be unloaded after the tests: %s, %08lX\n",
                answer == S_FALSE ? "something is still alive" : "it can't be asked",
                static_cast<unsigned long>(answer));
    return 1;
}
