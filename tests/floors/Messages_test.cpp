// SPDX-License-Identifier: MIT
// Each message of the component stands in a test as a user sees it, or is excused in tests/README.md.

#include "floors/Messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "floors/TreeOfSources.h"

namespace floors {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

TEST(Messages, AreAssertedOrExcused) {
    const fs::path repository = REKA_REPOSITORY;
    std::set<std::string> excused = ReadExcusedMessages(repository / "tests/README.md");
    for (const std::string& message : FindMessagesWithoutTest(repository, "src", "tests")) {
        const std::string words = message.substr(message.find(": ") + 2);
        EXPECT_TRUE(excused.contains(words)) << message << ": no test asserts these words";
        excused.erase(words);
    }
    for (const std::string& words : excused) ADD_FAILURE() << words << ": a test asserts it, or it is gone";
}

TEST(Literals, AreReadFromCode) {
    EXPECT_THAT(
        ReadLiterals("#include \"a.h\"\n// \"comment\"\nx(u\"one \"\n  u\"two\", L\"three\"); /* \"no\" */ c = '\"';\n"
                     "y = 0x8000'0000 + f(\"with \\\"quotes\\\" and \\n\");"),
        ElementsAre("one two", "three", "with \"quotes\" and \\n"));
    EXPECT_THAT(ReadLiterals("a = \"ends"), ElementsAre("end"));
}

TEST(Literals, AreMessagesIfTheyHaveWords) {
    EXPECT_TRUE(IsMessage("out of memory"));
    EXPECT_TRUE(IsMessage(" (calcType is not known)"));
    EXPECT_FALSE(IsMessage("SetReactionProp"));
    EXPECT_FALSE(IsMessage("a b c d"));
    EXPECT_FALSE(IsMessage("one two"));
}

TEST(MessagesWithoutTest, AreFound) {
    const CTreeOfSources tree;
    tree.Write("src/a/One.cpp", "Fail(u\"the first is \" u\"asserted\"); Fail(u\" this one is not \");");
    tree.Write("src/a/Two.h", "const char* text = \"nor is this one\";");
    tree.Write("tests/a/One_test.cpp", "EXPECT_EQ(text, \"behind it: the first is asserted, it says\");");
    EXPECT_THAT(FindMessagesWithoutTest(tree.root, "src", "tests"),
                ElementsAre("src/a/One.cpp: this one is not", "src/a/Two.h: nor is this one"));
}

TEST(ExcusedMessages, AreReadFromATable) {
    const CTreeOfSources tree;
    tree.Write("README.md",
               "# Tests\n\n| Message | Why |\n|---|---|\n| \"one is left\" | for good |\n| `two` | no |\n");
    EXPECT_THAT(ReadExcusedMessages(tree.root / "README.md"), ElementsAre("one is left"));
}

}  // namespace
}  // namespace floors
