// SPDX-License-Identifier: MIT
// rekatool on Windows: the wide command line becomes UTF-8, and the console shows UTF-8 until the end.

#include <windows.h>

#include <iostream>

#include "RunRekatool.h"
#include "packagetext/win/Utf8Console.h"
#include "text/Utf8.h"

int wmain(int argc, wchar_t** argv) {
    const packagetext::CUtf8Console console;
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.push_back(reka::Utf8FromUtf16(reinterpret_cast<const char16_t*>(argv[i])));
    }
    return rekatool::RunRekatool(arguments, std::cout, std::cerr);
}
