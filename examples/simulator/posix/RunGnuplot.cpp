// SPDX-License-Identifier: MIT
// The drawing program through a pipe. The shell is asked first whether there is one, as it would otherwise say itself,
// in words of its own, that there is none; and it is replaced by the program, whose exit status then is the answer.

#include "RunGnuplot.h"

#include <csignal>
#include <cstdio>

namespace rekasim {

bool RunGnuplot(const std::string& script) {
    std::FILE* const input = popen("command -v gnuplot >/dev/null && exec gnuplot >/dev/null", "w");
    if (!input) return false;
    // Writing to a program that has ended already must fail, and not end this one too.
    struct sigaction ignored = {};
    struct sigaction before = {};
    ignored.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignored, &before);
    const bool isWritten = std::fwrite(script.data(), 1, script.size(), input) == script.size();
    const bool isDone = pclose(input) == 0 && isWritten;
    sigaction(SIGPIPE, &before, nullptr);
    return isDone;
}

}  // namespace rekasim
