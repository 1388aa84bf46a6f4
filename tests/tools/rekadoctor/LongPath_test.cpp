// SPDX-License-Identifier: MIT
// The form of paths that have 260 characters and more.

#include "LongPath.h"

#include <gtest/gtest.h>

namespace rekadoctor {

namespace {

struct LongPathCase {
    const char* name;
    std::string path;
    std::string expected;
};

std::string Letters(std::size_t count) {
    return std::string(count, 'a');
}

const LongPathCase longPathCases[] = {
    {"Empty", "", ""},
    {"Short", "C:\\REKA/REKA.dll", "C:\\REKA/REKA.dll"},
    {"LongestShort", "C:\\" + Letters(256), "C:\\" + Letters(256)},  // 259 characters and the end
    {"ShortestLong", "C:\\" + Letters(257), "\\\\?\\C:\\" + Letters(257)},
    {"SmallDrive", "d:\\" + Letters(300), "\\\\?\\d:\\" + Letters(300)},
    {"Slashes", "C:/x64/" + Letters(300) + "/REKA.dll", "\\\\?\\C:\\x64\\" + Letters(300) + "\\REKA.dll"},
    {"Share", "\\\\server\\tools\\" + Letters(300), "\\\\?\\UNC\\server\\tools\\" + Letters(300)},
    {"ShareWithSlashes", "//server/tools/" + Letters(300), "\\\\?\\UNC\\server\\tools\\" + Letters(300)},
    {"HasTheForm", "\\\\?\\C:\\" + Letters(300), "\\\\?\\C:\\" + Letters(300)},
    {"Device", "\\\\.\\" + Letters(300), "\\\\.\\" + Letters(300)},
    {"NotWhole", Letters(300) + "/REKA.dll", Letters(300) + "/REKA.dll"},
    {"DriveOnly", "C:" + Letters(300), "C:" + Letters(300)},
    {"NoDrive", "1:\\" + Letters(300), "1:\\" + Letters(300)},
};
class LongPaths : public testing::TestWithParam<LongPathCase> {};

TEST_P(LongPaths, HaveTheFormWithoutALimit) {
    EXPECT_EQ(LongPath(GetParam().path), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Table, LongPaths, testing::ValuesIn(longPathCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace rekadoctor
