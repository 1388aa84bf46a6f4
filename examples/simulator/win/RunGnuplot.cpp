// SPDX-License-Identifier: MIT
// The drawing program through a pipe, found where the system looks for programs. The pipe is binary, so that the script
// arrives byte for byte as it was made.

#include "RunGnuplot.h"

#include <cstdio>

namespace rekasim {

bool RunGnuplot(const std::string& script) {
    std::FILE* const input = _popen("gnuplot >NUL", "wb");
    if (!input) return false;
    const bool isWritten = std::fwrite(script.data(), 1, script.size(), input) == script.size();
    return _pclose(input) == 0 && isWritten;
}

}  // namespace rekasim
