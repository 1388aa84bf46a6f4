// SPDX-License-Identifier: MIT
// With a certain beginning the system passes a path on to the file system untouched, without its old limit, but also
// without turning slashes round.

#include "LongPath.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace rekadoctor {

namespace {

constexpr std::size_t shortLimit = 260;  // characters with the end; UTF-8 has as many bytes at least

bool IsLetter(char letter) {
    return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z');
}

}  // namespace

std::string LongPath(const std::string& path) {
    if (path.size() < shortLimit) return path;
    std::string turned = path;
    std::replace(turned.begin(), turned.end(), '/', '\\');
    const std::string_view view = turned;
    if (view.starts_with(R"(\\?\)") || view.starts_with(R"(\\.\)")) return path;
    if (view.starts_with(R"(\\)")) return R"(\\?\UNC\)" + turned.substr(2);
    if (IsLetter(view[0]) && view.substr(1, 2) == R"(:\)") return R"(\\?\)" + turned;
    return path;
}

}  // namespace rekadoctor
