// SPDX-License-Identifier: MIT
// Texts of the readable form as a person or a merge leaves them.

#include "ParseReadable.h"

#include <gtest/gtest.h>

#include <string_view>

namespace rekatool {

namespace {

Bytes BytesIn(std::string_view text) {
    return {text.begin(), text.end()};
}

struct ShapeCase {
    const char* name;
    std::string text;
    const char* errorText;  // empty for a good text
};
std::string Nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}
std::string Members(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += (i > 0 ? ",\"m" : "{\"m") + std::to_string(i) + "\":0";
    return text + "}";
}
const ShapeCase shapeCases[] = {
    {"Plain", R"({"a":[1,-1,1.5,true,null,"x"],"b":{"a":{}}})", ""},
    {"SameNameInOtherObjects", R"([{"a":1},{"a":2}])", ""},
    {"SameNameTwice", R"({"a":1,"b":2,"a":1})", "line 1: a: the member is there twice in one object"},
    {"SameNameBehindAnObject", R"({"a":{"b":1},"a":1})", "line 1: a: the member is there twice in one object"},
    {"DeepEnough", Nested(16), ""},
    {"TooDeep", Nested(17), "the text is nested too deeply"},
    {"TooDeepAndBroken", std::string(17, '['), "the text is nested too deeply"},
    {"ManyMembers", Members(32), ""},
    {"TooManyMembers", Members(33), "line 1: there is an object with more than 32 members"},
};
void PrintTo(const ShapeCase& row, std::ostream* stream) {
    *stream << row.name;
}

class Shapes : public testing::TestWithParam<ShapeCase> {};

TEST_P(Shapes, AreThoseOfTheForm) {
    Json content;
    std::string errorText = "left from before";
    EXPECT_EQ(ParseReadable(BytesIn(GetParam().text), content, errorText), *GetParam().errorText == '\0');
    EXPECT_EQ(errorText, GetParam().errorText);
    if (errorText.empty()) {
        EXPECT_EQ(content.dump(), GetParam().text);
    }
}
INSTANTIATE_TEST_SUITE_P(Table, Shapes, testing::ValuesIn(shapeCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ParseReadable, LeavesSyntaxToTheParser) {
    for (const char* const text : {"", "{", "{\"a\" 1}", "[1,]", "{} {}", "\"\xFF\"", "[1e999]"}) {
        Json content;
        std::string errorText;
        EXPECT_FALSE(ParseReadable(BytesIn(text), content, errorText)) << text;
        const bool isTooLarge = std::string_view(text) == "[1e999]";  // the parser doesn't tell its place
        EXPECT_TRUE(errorText.starts_with(isTooLarge ? "number overflow" : "line 1, column ")) << errorText;
    }
}

TEST(IsReadable, AsksForABraceAndNoZeros) {
    using std::string_view_literals::operator""sv;
    for (const std::string_view text :
         {"{"sv, "{}"sv, " \t\r\n{\"a\":1}"sv, "\xEF\xBB\xBF{}"sv, "\xEF\xBB\xBF\n{}"sv}) {
        EXPECT_TRUE(IsReadable(BytesIn(text))) << text;
    }
    for (const std::string_view text : {""sv, " "sv, "[{}]"sv, "\xEF\xBB\xBF"sv, "\xEF\xBB{}"sv, "{\0}"sv, "{\0\0\0"sv,
                                        "\1\0\0\0{\0\0\0"sv, "\1{"sv}) {
        EXPECT_FALSE(IsReadable(BytesIn(text))) << text;
    }
}

}  // namespace

}  // namespace rekatool
