// SPDX-License-Identifier: MIT
// Plots where the drawing program or the disk fails, with a script in the program's place.

#include "reactor/DrawProfile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/posix/EnvironmentVariable.h"
#include "support/posix/FailingCalls.h"

namespace rekasim {

namespace {

/// A folder of its own, with a gnuplot that runs `script`, where the plot's path is "$plot".
class CPlotFolder {
public:
    explicit CPlotFolder(const std::string& script)
        : folder(MakeFolder()), path("PATH", folder.string() + ":/usr/bin:/bin") {
        const std::filesystem::path program = folder / "gnuplot";
        std::ofstream(program) << "#!/bin/sh\nplot=$(sed -n \"s/^set output '\\(.*\\)'$/\\1/p\")\n" << script << "\n";
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        std::ofstream(Plot()) << "old";
    }
    ~CPlotFolder() { std::filesystem::remove_all(folder); }
    CPlotFolder(const CPlotFolder&) = delete;
    CPlotFolder& operator=(const CPlotFolder&) = delete;

    std::string Plot(const char* name = "plot.svg") const { return (folder / name).string(); }
    std::string Content() const {
        std::ostringstream content;
        content << std::ifstream(Plot()).rdbuf();
        return content.str();
    }
    /// Beside the program and the plot.
    long OtherFiles() const {
        return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()) - 2;
    }

private:
    static std::string MakeFolder() {
        std::string name = testing::TempDir() + "reka-plots-XXXXXX";
        return mkdtemp(name.data()) ? name : "";
    }

    std::filesystem::path folder;
    reka::test::CEnvironmentVariable path;
};

ReactorProfile SampleProfile() {
    ReactorProfile profile;
    profile.positionName = "volume";
    profile.positionUnit = "m3";
    profile.points = {{0, 300, {1, 0}}, {1, 300, {0.5, 0.5}}};
    profile.compounds = {"A", "B"};
    return profile;
}

std::string FailureOf(const std::string& path) {
    try {
        DrawProfile(SampleProfile(), "title", path);
    } catch (const ReactorFailure& failure) {
        return failure.failure.text;
    }
    return "";
}

TEST(DrawProfile, PutsAWholePictureInTheOldOnesPlace) {
    const CPlotFolder folder("printf '<svg></svg>\\n\\n' >\"$plot\"");
    EXPECT_EQ(FailureOf(folder.Plot()), "");
    EXPECT_EQ(folder.Content(), "<svg></svg>\n\n");
    EXPECT_EQ(folder.OtherFiles(), 0);
}

TEST(DrawProfile, KnowsTheEndOfAPng) {
    const CPlotFolder folder("printf 'IEND\\256B`\\202' >\"$plot\"");
    EXPECT_EQ(FailureOf(folder.Plot("plot.png")), "");
    EXPECT_NE(FailureOf(folder.Plot()), "");  // no SVG
}

TEST(DrawProfile, LeavesTheOldPictureWhereTheNewOneIsNotWhole) {
    for (const char* const script : {"printf '<svg>' >\"$plot\"", ":"}) {  // gnuplot itself ends well on a full disk
        const CPlotFolder folder(script);
        EXPECT_EQ(FailureOf(folder.Plot()),
                  folder.Plot() + ": the file can't be written: gnuplot left the plot unfinished, as on a full disk");
        EXPECT_EQ(folder.Content(), "old");
        EXPECT_EQ(folder.OtherFiles(), 0);
    }
}

TEST(DrawProfile, LeavesTheOldPictureWhereTheProgramFails) {
    const CPlotFolder folder("printf '<svg></svg>' >\"$plot\"; exit 1");
    EXPECT_EQ(FailureOf(folder.Plot()), "gnuplot, which draws the plot, isn't there or can't write " + folder.Plot());
    EXPECT_EQ(folder.Content(), "old");
    EXPECT_EQ(folder.OtherFiles(), 0);
}

TEST(DrawProfile, LeavesTheOldPictureOrTheNewOneWhicheverCallFails) {
    std::unique_ptr<CPlotFolder> folder;
    std::string failure;
    int failures = 0;
    reka::test::ForEachFileCall(
        [&] {
            folder.reset();  // gives the path back before it is changed again
            folder = std::make_unique<CPlotFolder>("printf '<svg></svg>' >\"$plot\"");
        },
        [&] { failure = FailureOf(folder->Plot()); },
        [&](int n, bool isReached) {
            SCOPED_TRACE("call " + std::to_string(n));
            EXPECT_TRUE(isReached || failure.empty());
            failures += !failure.empty();
            EXPECT_EQ(folder->Content(), failure.empty() ? "<svg></svg>" : "old");
            EXPECT_EQ(folder->OtherFiles(), 0);
            EXPECT_TRUE(failure.empty() || failure.starts_with(folder->Plot() + ": the file can't be written: "));
        });
    EXPECT_GT(failures, 5);
}

TEST(DrawProfile, SaysWhyAPathCanNotBeWritten) {
    const CPlotFolder folder("printf '<svg></svg>' >\"$plot\"");
    EXPECT_EQ(FailureOf(folder.Plot("no-such-folder/plot.svg")),
              folder.Plot("no-such-folder/plot.svg") + ": the file can't be written: No such file or directory");
}

TEST(DrawProfile, KeepsTheProgramsOutputToItself) {
    const CPlotFolder folder("echo noise; printf '<svg></svg>' >\"$plot\"");
    testing::internal::CaptureStdout();
    EXPECT_EQ(FailureOf(folder.Plot()), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace

}  // namespace rekasim
