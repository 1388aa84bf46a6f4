// SPDX-License-Identifier: MIT
// A source is walked through once, mark by mark: a comment, a character, a literal, or anything else. Tests put the
// longer messages together out of parts, as the sources do, so a message counts as asserted where all its words stand
// in one literal of a test.

#include "floors/Messages.h"

#include <cctype>
#include <regex>

#include "floors/FloorPlan.h"

namespace floors {

namespace fs = std::filesystem;

namespace {

/// Where the literal, the character or the comment that begins at `start` ends.
std::size_t EndOf(const std::string& code, std::size_t start) {
    if (code.compare(start, 2, "//") == 0) return std::min(code.find('\n', start), code.size());
    if (code.compare(start, 2, "/*") == 0) return std::min(code.find("*/", start + 2), code.size() - 2) + 2;
    std::size_t end = start + 1;
    while (end < code.size() && code[end] != code[start] && code[end] != '\n') end += code[end] == '\\' ? 2 : 1;
    return std::min(end + 1, code.size());
}

std::string WithoutEscapedQuotes(const std::string& text) {
    return std::regex_replace(text, std::regex("\\\\\""), "\"");
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

/// The sources below a folder, by their paths below `root`.
std::set<fs::path> SourcesBelow(const fs::path& root, const std::string& folder) {
    std::set<fs::path> found;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root / folder)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".cpp" || extension == ".h") found.insert(entry.path().lexically_relative(root));
    }
    return found;
}

}  // namespace

std::vector<std::string> ReadLiterals(const std::string& code) {
    std::vector<std::string> literals;
    bool isSideBySide = false;
    for (std::size_t i = 0; i < code.size();) {
        const char c = code[i];
        const bool isComment = c == '/' && i + 1 < code.size() && (code[i + 1] == '/' || code[i + 1] == '*');
        // a mark between the digits of a number is no character
        const bool isCharacter = c == '\'' && (i == 0 || !std::isxdigit(static_cast<unsigned char>(code[i - 1])));
        if (c == '"') {
            const std::size_t end = EndOf(code, i);
            const std::string text = WithoutEscapedQuotes(code.substr(i + 1, end - i - 2));
            if (isSideBySide) {
                literals.back() += text;
            } else {
                literals.push_back(text);
            }
            isSideBySide = true;
            i = end;
        } else if (isComment || isCharacter) {
            i = EndOf(code, i);
        } else if (code.compare(i, 8, "#include") == 0) {
            i = std::min(code.find('\n', i), code.size());
        } else {
            const bool isPrefix = (c == 'u' || c == 'L') && i + 1 < code.size() && code[i + 1] == '"';
            if (!isPrefix && !std::isspace(static_cast<unsigned char>(c))) isSideBySide = false;
            ++i;
        }
    }
    return literals;
}

bool IsMessage(const std::string& literal) {
    static const std::regex word("[A-Za-z]{2,}");
    const auto words =
        std::distance(std::sregex_iterator(literal.begin(), literal.end(), word), std::sregex_iterator());
    return words >= 3 && literal.find(' ') != std::string::npos;
}

std::set<std::string> FindMessagesWithoutTest(const fs::path& root, const std::string& folder,
                                              const std::string& tests) {
    std::string asserted;
    for (const fs::path& test : SourcesBelow(root, tests)) {
        for (const std::string& literal : ReadLiterals(ReadText(root / test))) asserted += literal + "\n";
    }
    std::set<std::string> missing;
    for (const fs::path& source : SourcesBelow(root, folder)) {
        for (const std::string& literal : ReadLiterals(ReadText(root / source))) {
            if (!IsMessage(literal) || asserted.find(Trimmed(literal)) != std::string::npos) continue;
            missing.insert(source.generic_string() + ": " + Trimmed(literal));
        }
    }
    return missing;
}

std::set<std::string> ReadExcusedMessages(const fs::path& document) {
    const std::string text = ReadText(document);
    static const std::regex row("\n\\| \"([^\n|]*)\" \\|");
    std::set<std::string> excused;
    for (std::sregex_iterator found(text.begin(), text.end(), row), end; found != end; ++found) {
        excused.insert((*found)[1].str());
    }
    return excused;
}

}  // namespace floors
