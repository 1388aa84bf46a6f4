// SPDX-License-Identifier: MIT
// The examples of the style page are what stands in the source.

#include "floors/Quotes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "floors/FloorPlan.h"
#include "floors/TreeOfSources.h"

namespace floors {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

const fs::path repository = REKA_REPOSITORY;

TEST(StylePage, QuotesTheSourceAsItIs) {
    const std::vector<Quote> quotes = ReadQuotes(repository / "docs/style.md");
    ASSERT_GE(quotes.size(), 5U);
    for (const Quote& quote : quotes) {
        const std::string source = ReadText(repository / quote.file);
        EXPECT_NE(source.find(quote.code), std::string::npos) << quote.file << " doesn't hold\n" << quote.code;
    }
}

TEST(Quotes, BelongToTheFileNamedBefore) {
    const CTreeOfSources tree;
    tree.Write("page.md",
               "A page\n```cpp\nint a;\n```\nSee `src/a/B.h` and `src/a/B.cpp`:\n\n```cpp\nint b;  // "
               "`src/c/D.h`\n\nint c;\n```\n"
               "`B.h` `docs/a.md`\n```\ntext\n```\n```cpp\nint d;\n");
    EXPECT_THAT(ReadQuotes(tree.root / "page.md"),
                ElementsAre(Quote{"", "int a;\n"}, Quote{"src/a/B.cpp", "int b;  // `src/c/D.h`\n\nint c;\n"},
                            Quote{"src/a/B.cpp", "int d;\n"}));
}

}  // namespace
}  // namespace floors
