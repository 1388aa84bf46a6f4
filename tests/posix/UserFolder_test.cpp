// SPDX-License-Identifier: MIT
// Which folder stands for the data of applications.

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/Files.h"
#include "support/posix/EnvironmentVariable.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

std::string Find() {
    std::u16string folder;
    return SystemFiles().FindUserFolder(folder) ? Utf8FromUtf16(folder) : "<none>";
}

TEST(UserFolder, IsTheConfiguredOneOrThatBelowHome) {
    const std::string root = std::filesystem::temp_directory_path() / "reka-user-folder";
    std::filesystem::remove_all(root);
    {
        const CEnvironmentVariable configured("XDG_CONFIG_HOME", root + "/deep/config/");
        EXPECT_EQ(Find(), root + "/deep/config");
        EXPECT_TRUE(std::filesystem::is_directory(root + "/deep/config"));
    }
    for (const char* const none : {"", "relative"}) {
        const CEnvironmentVariable configured("XDG_CONFIG_HOME", none);
        const CEnvironmentVariable home("HOME", root + "/home");
        EXPECT_EQ(Find(), root + "/home/.config");
    }
    {
        std::filesystem::create_directories(root);
        SystemFiles().OpenForWriting(Utf16FromUtf8(root + "/file"));
        const CEnvironmentVariable configured("XDG_CONFIG_HOME", root + "/file/config");  // which can't be made
        EXPECT_EQ(Find(), "<none>");
    }
    std::filesystem::remove_all(root);
}

}  // namespace
}  // namespace reka::test
