// The drawing program through a pipe.

#include "RunGnuplot.h"

#include <cstdio>

namespace rekasim {

bool RunGnuplot(const std::string& script) {
    std::FILE* const input = popen("gnuplot", "w");
    if (!input) return false;
    const bool isWritten = std::fwrite(script.data(), 1, script.size(), input) == script.size();
    return pclose(input) == 0 && isWritten;
}

}  // namespace rekasim
