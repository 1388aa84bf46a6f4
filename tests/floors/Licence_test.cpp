// SPDX-License-Identifier: MIT
// Every source, script and build file says under which licence it is, within its first two lines.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "floors/FloorPlan.h"

namespace floors {
namespace {

namespace fs = std::filesystem;

bool HoldsCode(const fs::path& file) {
    static const std::set<std::string> endings = {".h",  ".cpp", ".y",   ".rc",    ".idl", ".def", ".in",
                                                  ".sh", ".py",  ".nsi", ".cmake", ".vbs", ".js",  ".pas"};
    return endings.contains(file.extension().string()) || file.filename() == "CMakeLists.txt";
}

bool NamesItsLicence(const fs::path& file) {
    const std::string text = ReadText(file);
    const std::size_t secondLine = text.find('\n') + 1;
    return text.substr(0, text.find('\n', secondLine)).find("SPDX-License-Identifier: MIT") != std::string::npos;
}

TEST(Licence, StandsAtTheTopOfEachFileOfCode) {
    std::vector<std::string> silent;
    std::size_t count = 0;
    for (const char* const top :
         {"src", "tools", "examples", "bench", "fuzz", "tests", "cmake", "scripts", "packaging"}) {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(fs::path(REKA_REPOSITORY) / top)) {
            if (!entry.is_regular_file() || !HoldsCode(entry.path())) continue;
            ++count;
            if (!NamesItsLicence(entry.path())) silent.push_back(entry.path().string());
        }
    }
    EXPECT_THAT(silent, testing::IsEmpty());
    EXPECT_GE(count, 500U);
}

}  // namespace
}  // namespace floors
