// SPDX-License-Identifier: MIT
// Which folder stands for the data of applications.

#include <gtest/gtest.h>
#include <pwd.h>

#include <cstring>
#include <filesystem>

#include "platform/Files.h"
#include "support/posix/EnvironmentVariable.h"
#include "text/Utf8.h"

namespace {

std::string accountFolder;  // of the only account that there is; empty for none

}  // namespace

/// Stands before the library's own, so that no real account is looked at.
extern "C" int getpwuid_r(uid_t, passwd* account, char* texts, size_t size, passwd** found) {
    *found = nullptr;
    if (accountFolder.empty() || accountFolder.size() >= size) return 0;
    account->pw_dir = std::strcpy(texts, accountFolder.c_str());
    *found = account;
    return 0;
}

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
    for (const char* const none : {"", "relative"}) {
        const CEnvironmentVariable configured("XDG_CONFIG_HOME", "");
        const CEnvironmentVariable home("HOME", none);
        EXPECT_EQ(Find(), "<none>");
        accountFolder = root + "/account";
        EXPECT_EQ(Find(), root + "/account/.config");
        accountFolder.clear();
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
