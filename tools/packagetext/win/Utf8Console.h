// SPDX-License-Identifier: MIT
// The console of a program that writes UTF-8. It is shared with the shell that started the program, and with what runs
// in it next, so it gets back what it had.

#pragma once

#include <windows.h>

#include <iostream>

namespace packagetext {

/// While it lives, the console shows what is written as UTF-8.
class CUtf8Console {
public:
    CUtf8Console() : before(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
    ~CUtf8Console() {
        std::cout.flush();
        if (before != 0) SetConsoleOutputCP(before);  // 0: there is no console
    }
    CUtf8Console(const CUtf8Console&) = delete;
    CUtf8Console& operator=(const CUtf8Console&) = delete;

private:
    const UINT before;
};

}  // namespace packagetext
