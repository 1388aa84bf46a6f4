// SPDX-License-Identifier: MIT
// A document is walked through from mark to mark: a path in backticks, or a piece of code. Both are found by one
// pattern, so that a path within a piece of code names no file.

#include "floors/Quotes.h"

#include <algorithm>
#include <regex>

#include "floors/FloorPlan.h"

namespace floors {

std::vector<Quote> ReadQuotes(const std::filesystem::path& document) {
    const std::string text = ReadText(document);
    static const std::regex mark("\n```cpp\n|`((?:src|tests)/[^`\n]*\\.(?:h|cpp))`");
    std::vector<Quote> quotes;
    std::string file;
    std::smatch found;
    for (auto from = text.begin(); std::regex_search(from, text.end(), found, mark);) {
        from = found[0].second;
        if (found[1].matched) {
            file = found[1].str();
            continue;
        }
        const auto start = static_cast<std::size_t>(from - text.begin());
        const std::size_t end = std::min(text.find("\n```", start), text.size() - 1);
        quotes.push_back({file, text.substr(start, end + 1 - start)});
        from = text.begin() + static_cast<std::ptrdiff_t>(end);
    }
    return quotes;
}

}  // namespace floors
