// The drawing program through a pipe, found where the system looks for programs.

#include "RunGnuplot.h"

#include <cstdio>

namespace rekasim {

bool RunGnuplot(const std::string& script) {
    std::FILE* const input = _popen("gnuplot", "wb");
    if (!input) return false;
    const bool isWritten = std::fwrite(script.data(), 1, script.size(), input) == script.size();
    return _pclose(input) == 0 && isWritten;
}

}  // namespace rekasim
