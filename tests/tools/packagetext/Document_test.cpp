// SPDX-License-Identifier: MIT
// Documents as files.

#include "packagetext/Document.h"

#include <gtest/gtest.h>

#include "support/TemporaryFile.h"

namespace packagetext {

using reka::test::CTemporaryFile;

namespace {

TEST(Document, IsWrittenWithPlainListsOnOneLine) {
    CTemporaryFile file("lists.json", "");
    std::string errorText;
    const Json content = Json::parse(R"({"b": [1, 2.5, null], "a": {"texts": ["x", "Größe"], "none": {}, "empty": []},
                                         "objects": [{"id": 1}, {"id": 2}]})");
    ASSERT_TRUE(WriteDocument(file.Path(), content, errorText)) << errorText;
    EXPECT_EQ(file.Content(),
              "{\n"
              "  \"b\": [1, 2.5, null],\n"
              "  \"a\": {\n"
              "    \"texts\": [\"x\", \"Größe\"],\n"
              "    \"none\": {},\n"
              "    \"empty\": []\n"
              "  },\n"
              "  \"objects\": [\n"
              "    {\n"
              "      \"id\": 1\n"
              "    },\n"
              "    {\n"
              "      \"id\": 2\n"
              "    }\n"
              "  ]\n"
              "}\n");
    Json read;
    ASSERT_TRUE(ReadDocument(file.Path(), read, errorText)) << errorText;
    EXPECT_EQ(read, content);
}

TEST(Document, MayHaveANameOutsideAscii) {
    CTemporaryFile file("Größe-Δ.json", R"({"a": 1})");
    ASSERT_TRUE(file.IsThere());
    Json content;
    std::string errorText;
    EXPECT_TRUE(ReadDocument(file.Path(), content, errorText)) << errorText;
}

struct BadDocument {
    const char* name;
    const char* content;
    const char* errorText;  // behind the path
};
const BadDocument badDocuments[] = {
    {"Empty", "\n",
     ": line 2, column 1: syntax error while parsing value - unexpected end of input; expected '[', '{', or a literal"},
    {"MissingComma", "{\n  \"a\": 1\n  \"b\": 2\n}",
     ": line 3, column 5: syntax error while parsing object - unexpected string literal; expected '}'"},
    {"NumberTooLarge", "{\"a\": 1e999}", ": number overflow parsing '1e999'"},
    {"NoObject", "[1]", ": a document is a JSON object"},
    {"MemberTwice", "{\"package\": {\n  \"a\": 1,\n  \"a\": 2\n}}",
     ": line 3: package.a: the member is there twice in one object"},
};
class BadDocuments : public testing::TestWithParam<BadDocument> {};

TEST_P(BadDocuments, TellWhereAndWhy) {
    const CTemporaryFile file("bad.json", GetParam().content);
    Json content;
    std::string errorText;
    EXPECT_FALSE(ReadDocument(file.Path(), content, errorText));
    EXPECT_EQ(errorText, file.Path() + GetParam().errorText);
    EXPECT_TRUE(content.is_null());
}
INSTANTIATE_TEST_SUITE_P(Table, BadDocuments, testing::ValuesIn(badDocuments),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Document, NestsOnlySoDeepThatItCanBeWrittenAgain) {
    for (const std::size_t depth : {std::size_t{63}, std::size_t{64}, std::size_t{1'000'000}}) {
        const std::string lists = std::string(depth, '[') + std::string(depth, ']');
        const CTemporaryFile file("deep.json", "{\"note\": " + lists + "}");
        Json content;
        std::string errorText;
        EXPECT_EQ(ReadDocument(file.Path(), content, errorText), depth == 63) << errorText;
        if (depth > 63) {
            EXPECT_EQ(errorText, file.Path() + ": the text is nested too deeply");
        }
    }
}

TEST(Document, ThatIsMissingIsNamed) {
    Json content;
    std::string errorText;
    EXPECT_FALSE(ReadDocument("no-such-file.json", content, errorText));
    EXPECT_EQ(errorText, "no-such-file.json: the file can't be opened");
    EXPECT_FALSE(WriteDocument("no-such-folder/x.json", Json::object(), errorText));
    const std::string start = "no-such-folder/x.json: the file can't be written: ";
    EXPECT_EQ(errorText.substr(0, start.size()), start);
    EXPECT_GT(errorText.size(), start.size());  // with the system's reason
}

}  // namespace

}  // namespace packagetext
