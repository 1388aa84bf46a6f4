// SPDX-License-Identifier: MIT
// Sources and tests are compared by their paths alone: what a test holds is its own affair, and that of the table in
// tests/README.md. Grammars have no tests of their names, nor do scripts and the files of the build.

#include "floors/TestLayout.h"

#include <regex>

#include "floors/FloorPlan.h"

namespace floors {

namespace {

namespace fs = std::filesystem;

/// Tests mirror src/ itself, and the other folders below folders of their names.
fs::path TestOf(const fs::path& source) {
    const fs::path below = *source.begin() == "src" ? source.lexically_relative("src") : source;
    return "tests" / below.parent_path() / (source.stem().string() + "_test.cpp");
}

/// The source that a header goes with, or the file itself.
fs::path SourceOf(const fs::path& root, const fs::path& file) {
    const fs::path source = fs::path(file).replace_extension(".cpp");
    return fs::exists(root / source) ? source : file;
}

}  // namespace

std::set<std::string> FindSourcesWithoutTest(const fs::path& root) {
    std::set<std::string> sources;
    for (const char* const top : {"src", "tools", "examples"}) {
        if (!fs::exists(root / top)) continue;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root / top)) {
            const fs::path file = fs::relative(entry.path(), root);
            if (file.extension() != ".cpp" && file.extension() != ".h") continue;
            if (!fs::exists(root / TestOf(file))) sources.insert(SourceOf(root, file).generic_string());
        }
    }
    return sources;
}

std::set<std::string> ReadNamedFiles(const fs::path& document, const std::string& top) {
    const std::string text = ReadText(document);
    const std::regex pattern("`(" + top + "/[^`\n]*\\.[a-z]+)`");
    return {std::sregex_token_iterator(text.begin(), text.end(), pattern, 1), {}};
}

}  // namespace floors
