// SPDX-License-Identifier: MIT
// Each source has a test of its name, or a row in tests/README.md that says where it is tested.

#include "floors/TestLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "floors/TreeOfSources.h"

namespace floors {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

const fs::path repository = REKA_REPOSITORY;
const fs::path table = repository / "tests/README.md";

std::set<std::string> SourcesInTheTable() {
    std::set<std::string> named;
    for (const char* const top : {"src", "tools", "examples"}) named.merge(ReadNamedFiles(table, top));
    return named;
}

TEST(TableOfTests, NamesEachSourceThatHasNoTestOfItsName) {
    const std::set<std::string> named = SourcesInTheTable();
    ASSERT_GE(named.size(), 20U);
    for (const std::string& source : FindSourcesWithoutTest(repository)) {
        EXPECT_TRUE(named.contains(source))
            << source << " has no test of its name: tests/README.md must say where it is "
            << "tested";
    }
}

TEST(TableOfTests, NamesNoSourceThatIsGoneOrHasATestOfItsName) {
    const std::set<std::string> untested = FindSourcesWithoutTest(repository);
    for (const std::string& source : SourcesInTheTable()) EXPECT_TRUE(untested.contains(source)) << source;
}

TEST(TableOfTests, NamesTestsThatAreThere) {
    const std::set<std::string> named = ReadNamedFiles(table, "tests");
    ASSERT_GE(named.size(), 20U);
    for (const std::string& test : named) EXPECT_TRUE(fs::exists(repository / test)) << test;
}

TEST(SourcesWithoutTest, AreFoundByTheirPaths) {
    const CTreeOfSources tree;
    for (const char* const file :
         {"src/text/Utf8.h", "src/text/Utf8.cpp", "tests/text/Utf8_test.cpp", "src/text/LetterCase.h",
          "src/platform/posix/Files.cpp", "tests/platform/Files_test.cpp", "src/platform/Seam.cpp",
          "src/platform/Seam.h", "tools/rekatool/RateGrid.cpp", "tests/tools/rekatool/RateGrid_test.cpp",
          "tools/rekatool/posix/Main.cpp", "examples/simulator/Sweep.h", "src/text/CMakeLists.txt",
          "bench/Times.cpp"}) {
        tree.Write(file, "");
    }
    EXPECT_THAT(FindSourcesWithoutTest(tree.root),
                ElementsAre("examples/simulator/Sweep.h", "src/platform/Seam.cpp", "src/platform/posix/Files.cpp",
                            "src/text/LetterCase.h", "tools/rekatool/posix/Main.cpp"));
}

TEST(NamedFiles, AreTheWholePathsInBackticks) {
    const CTreeOfSources tree;
    tree.Write(
        "page.md",
        "| `src/text/LetterCase.h`, `src/a/B.cpp` | `tests/a/B_test.cpp` |\nsrc/text/Utf8.cpp `src/text/` `Utf8.h`\n");
    EXPECT_THAT(ReadNamedFiles(tree.root / "page.md", "src"), ElementsAre("src/a/B.cpp", "src/text/LetterCase.h"));
    EXPECT_THAT(ReadNamedFiles(tree.root / "page.md", "tests"), ElementsAre("tests/a/B_test.cpp"));
    EXPECT_THAT(ReadNamedFiles(tree.root / "page.md", "tools"), IsEmpty());
}

}  // namespace
}  // namespace floors
