// SPDX-License-Identifier: MIT
// Shapes of texts, and lines of members.

#include "packagetext/DocumentShape.h"

#include <gtest/gtest.h>

namespace packagetext {

namespace {

std::string FaultOf(const std::string& text) {
    std::string errorText = "left from before";
    const bool isGood = CheckShape(text, {3, 4}, errorText);
    EXPECT_EQ(isGood, errorText.empty());
    return errorText;
}

TEST(DocumentShape, MayBeAsLargeAsItsLimits) {
    EXPECT_EQ(FaultOf(R"({"a":1,"b":[[]],"c":{"a":2},"d":4})"), "");
    EXPECT_EQ(FaultOf(R"({"a":1,"b":2,"c":3,"d":4,"e":5})"), "line 1: there is an object with more than 4 members");
    EXPECT_EQ(FaultOf("[[[[]]]]"), "the text is nested too deeply");
    EXPECT_EQ(FaultOf(std::string(1'000'000, '[')), "the text is nested too deeply");
}

TEST(DocumentShape, HasNoMemberTwice) {
    EXPECT_EQ(FaultOf("{\"a\": 1,\n\n\"a\": 1}"), "line 3: a: the member is there twice in one object");
    EXPECT_EQ(FaultOf("{\"b\": [0, {\"c\": 1,\n \"c\": 2}]}"),
              "line 2: b[1].c: the member is there twice in one object");
    EXPECT_EQ(FaultOf(R"({"a":{"b":1},"c":{"b":1}})"), "");
}

TEST(DocumentShape, LeavesSyntaxToTheParser) {
    for (const char* const text : {"", "{", "{\"a\" 1}", "[1,]"}) EXPECT_EQ(FaultOf(text), "") << text;
}

struct LineCase {
    const char* name;
    const char* sentence;
    std::size_t line;
};
const LineCase lineCases[] = {{"AMember", "title: x", 2},
                              {"AMemberOfAMember", "package.Name: x", 4},
                              {"AnElement", "package.ids[0]: x", 6},
                              {"ANumberAtTheEndOfItsLine", "package.ids[1]: x", 7},
                              {"ANumberBeforeTheEnd", "package.ids[2]: x", 8},
                              {"ANameWithBrackets", "package.of[R]: x", 10},
                              {"AnElementBehindIt", "package.of[R][1]: x", 12},
                              {"AMissingMember", "package.none: x", 3},
                              {"AMissingElement", "package.ids[9]: x", 5},
                              {"AMissingRoot", "material: x", 1},
                              {"AnObjectInAList", "list[1].b: x", 17},
                              {"ALongerName", "package.idsOfAll: x", 3},
                              {"NoPath", "nothing of the kind", 1}};
void PrintTo(const LineCase& row, std::ostream* stream) {
    *stream << row.name;
}

class Lines : public testing::TestWithParam<LineCase> {};

TEST_P(Lines, AreThoseOfTheMember) {
    const std::string text =
        "{\n\"title\": \"two\\nlines\",\n\"package\": {\n\"Name\": \"ids\",\n\"ids\": [\n\"a\",\n1\n,2],\n\"of\": 1,\n"
        "\"of[R]\": [\n1,\n2]\n},\n\"list\": [\n{\"a\": 1},\n{\"a\": 1,\n\"b\": 2}]}";
    const std::string sentence = GetParam().sentence;
    EXPECT_EQ(AtLine(text, sentence), "line " + std::to_string(GetParam().line) + ": " + sentence);
}
INSTANTIATE_TEST_SUITE_P(Table, Lines, testing::ValuesIn(lineCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace packagetext
