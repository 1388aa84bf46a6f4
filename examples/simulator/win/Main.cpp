// SPDX-License-Identifier: MIT
// rekasim on Windows: the wide command line becomes UTF-8, and the console shows UTF-8 until the end.

#include <windows.h>

#include <iostream>

#include "RunRekasim.h"
#include "packagetext/win/Utf8Console.h"
#include "text/Utf8.h"

int wmain(int argc, wchar_t** argv) {
    const packagetext::CUtf8Console console;
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.push_back(reka::Utf8FromUtf16(reinterpret_cast<const char16_t*>(argv[i])));
    }
    return rekasim::RunRekasim(arguments, std::cout, std::cerr);
}
