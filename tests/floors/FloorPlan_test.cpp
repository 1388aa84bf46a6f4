// SPDX-License-Identifier: MIT
// The source keeps to its floors.

#include "floors/FloorPlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "floors/TreeOfSources.h"

namespace floors {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

const fs::path repository = REKA_REPOSITORY;

std::vector<Floor> FloorsOfTheSource() {
    return ReadTable(repository / "cmake/Floors.cmake", "REKA_FLOORS");
}

std::vector<Floor> Companions() {
    return ReadTable(repository / "cmake/Floors.cmake", "REKA_COMPANIONS");
}

TEST(Floors, IncludeNothingAboveThem) {
    ASSERT_GE(FloorsOfTheSource().size(), 17U);
    ASSERT_GE(Companions().size(), 5U);
    EXPECT_THAT(FindForbiddenIncludes(repository, FloorsOfTheSource(), Companions()), IsEmpty());
}

TEST(Floors, IncludeSomethingOfEachThatTheyStandOn) {
    EXPECT_THAT(FindUnusedDirections(repository, FloorsOfTheSource(), Companions()), IsEmpty());
}

TEST(Floors, StandOnFloorsFurtherUpInTheTableAlone) {
    std::set<std::string> known;
    std::vector<Floor> rows = FloorsOfTheSource();
    for (const Floor& companion : Companions()) rows.push_back(companion);
    for (const Floor& floor : rows) {
        for (const std::string& name : floor.below) EXPECT_TRUE(known.contains(name)) << floor.folder << ": " << name;
        known.insert(floor.folder);
    }
}

TEST(Floors, AreWhatTheArchitectureDraws) {
    std::vector<Floor> drawn = ReadDrawing(repository / "docs/architecture.md");
    const std::vector<Floor> table = FloorsOfTheSource();
    ASSERT_EQ(drawn.size(), table.size());
    for (std::size_t i = 0; i < table.size(); ++i) {
        EXPECT_EQ(drawn[i].folder, table[i].folder);
        EXPECT_EQ(drawn[i].below, table[i].below) << table[i].folder;
    }
}

TEST(Floors, AreAllTheFoldersOfTheSource) {
    std::set<std::string> known;
    for (const Floor& floor : FloorsOfTheSource()) known.insert(floor.folder);
    const std::set<std::string> parts = {"platform/win", "platform/posix", "editor/win/icons", "."};
    for (const auto& [folder, count] : CountFiles(repository / "src")) {
        EXPECT_TRUE(known.contains(folder) || parts.contains(folder)) << folder << " is on no floor";
    }
}

TEST(Folders, HoldFewEnoughFilesToLookThrough) {
    const std::set<std::string> large = {"src/editor", "src/editor/win"};
    for (const char* const top : {"src", "tools", "examples", "bench", "fuzz", "tests", "cmake", "scripts"}) {
        for (const auto& [folder, count] : CountFiles(repository / top)) {
            const std::string name = folder == "." ? top : top + ("/" + folder);
            if (large.contains(name)) continue;
            EXPECT_LE(count, 30U) << name;
        }
    }
}

TEST(ForbiddenIncludes, AreToldWithBothFiles) {
    const CTreeOfSources tree;
    tree.Write("src/text/Utf8.h", "");
    tree.Write("src/platform/Files.h", "#include <string>\n#include \"text/Utf8.h\"\n");
    tree.Write("src/platform/win/Files.cpp", "#include \"platform/Files.h\"\n#include \"editor/win/CDialog.h\"\n");
    tree.Write("src/text/Utf8.cpp", "#include \"text/Utf8.h\"\n  #  include \"platform/Files.h\"\n");
    tree.Write("src/editor/win/CDialog.h", "// #include \"text/Utf8.h\"\n#include \"MadeByTheBuild.h\"\n");
    tree.Write("tools/doctor/Main.cpp",
               "#include \"Advice.h\"\n#include \"platform/Files.h\"\n#include \"text/Utf8.h\"\n");
    tree.Write("tools/doctor/Advice.h", "");
    const std::vector<Floor> table = {{"text", {}}, {"platform", {"text"}}, {"editor/win", {"platform"}}};
    EXPECT_THAT(FindForbiddenIncludes(tree.root, table, {{"tools/doctor", {"platform"}}}),
                ElementsAre("src/platform/win/Files.cpp includes src/editor/win/CDialog.h",
                            "src/text/Utf8.cpp includes src/platform/Files.h",
                            "tools/doctor/Main.cpp includes src/text/Utf8.h"));
}

TEST(UnusedDirections, AreToldFolderByFolder) {
    const CTreeOfSources tree;
    tree.Write("src/text/Utf8.h", "");
    tree.Write("src/platform/Files.h", "");
    tree.Write("src/records/Definition.h", "#include \"platform/Files.h\"\n");
    EXPECT_THAT(
        FindUnusedDirections(tree.root, {{"text", {}}, {"platform", {"text"}}, {"records", {"text", "platform"}}}, {}),
        ElementsAre("src/platform includes nothing of src/text", "src/records includes nothing of src/text"));
}

TEST(ForbiddenIncludes, AreThoseOfAFolderThatTheTableDoesNotKnow) {
    const CTreeOfSources tree;
    tree.Write("src/text/Utf8.h", "");
    tree.Write("src/attic/Box.cpp", "#include \"text/Utf8.h\"\n");
    EXPECT_THAT(FindForbiddenIncludes(tree.root, {{"text", {}}}, {}),
                ElementsAre("src/attic/Box.cpp includes src/text/Utf8.h"));
}

TEST(TableOfFloors, IsReadRowByRow) {
    const CTreeOfSources tree;
    tree.Write("Floors.cmake",
               "set(OTHER \"a: b\")\n# comment\nset(REKA_FLOORS\n    \"text:\"\n    \"editor/win: text a/b\")\n");
    EXPECT_THAT(ReadTable(tree.root / "Floors.cmake", "REKA_FLOORS"),
                ElementsAre(Floor{"text", {}}, Floor{"editor/win", {"text", "a/b"}}));
    EXPECT_THAT(ReadTable(tree.root / "Floors.cmake", "NO_SUCH_LIST"), IsEmpty());
}

TEST(DrawingOfFloors, IsReadFromTheGroundUp) {
    const CTreeOfSources tree;
    tree.Write("page.md",
               "# A\n\n| Floor | On | Holds |\n|---|---|---|\n| `editor/win/` | text, a/b | w |\n| `text/` | | t |\n");
    EXPECT_THAT(ReadDrawing(tree.root / "page.md"),
                ElementsAre(Floor{"text", {}}, Floor{"editor/win", {"text", "a/b"}}));
}

}  // namespace
}  // namespace floors
