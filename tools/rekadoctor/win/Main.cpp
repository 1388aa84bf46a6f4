// SPDX-License-Identifier: MIT
// rekadoctor's start: the wide command line becomes UTF-8, and the console shows UTF-8 until the end.

#include <windows.h>

#include <iostream>

#include "CWindowsComputer.h"
#include "RunRekadoctor.h"
#include "packagetext/win/Utf8Console.h"
#include "text/Utf8.h"

int wmain(int argc, wchar_t** argv) {
    const packagetext::CUtf8Console console;
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.push_back(reka::Utf8FromUtf16(reinterpret_cast<const char16_t*>(argv[i])));
    }
    rekadoctor::CWindowsComputer computer;
    return rekadoctor::RunRekadoctor(arguments, computer, std::cout, std::cerr);
}
