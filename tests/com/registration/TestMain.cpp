// SPDX-License-Identifier: MIT
// Starts the tests where that is meant: they delete the user's settings and leave the component registered, which
// nobody expects of a program that is tried by a double click.

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>

namespace {

constexpr wchar_t permission[] = L"REKA_TESTS_MAY_REGISTER";

bool IsPermitted() {
    wchar_t value[8] = {};
    return GetEnvironmentVariableW(permission, value, 8) == 1 && value[0] == L'1';
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!testing::GTEST_FLAG(list_tests) && !IsPermitted()) {
        std::fputs(
            "These tests register REKA and delete what it has in the registry: set REKA_TESTS_MAY_REGISTER=1 where "
            "that "
            "may be.\n",
            stderr);
        return 2;
    }
    return RUN_ALL_TESTS();
}
