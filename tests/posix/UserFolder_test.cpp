// Which folder stands for the data of applications.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "platform/Files.h"
#include "platform/Utf8.h"

namespace reka::test {
namespace {

/// An environment variable for the time of a test.
class CVariable {
public:
    CVariable(const char* variable, const std::string& value) : name(variable) {
        const char* const found = std::getenv(name);
        hadValue = found != nullptr;
        if (found) before = found;
        setenv(name, value.c_str(), 1);
    }
    ~CVariable() {
        if (hadValue) {
            setenv(name, before.c_str(), 1);
        } else {
            unsetenv(name);
        }
    }
    CVariable(const CVariable&) = delete;
    CVariable& operator=(const CVariable&) = delete;

private:
    const char* name;
    bool hadValue = false;
    std::string before;
};

std::string Find() {
    std::u16string folder;
    return SystemFiles().FindUserFolder(folder) ? Utf8FromUtf16(folder) : "<none>";
}

TEST(UserFolder, IsTheConfiguredOneOrThatBelowHome) {
    const std::string root = std::filesystem::temp_directory_path() / "reka-user-folder";
    std::filesystem::remove_all(root);
    {
        const CVariable configured("XDG_CONFIG_HOME", root + "/deep/config/");
        EXPECT_EQ(Find(), root + "/deep/config");
        EXPECT_TRUE(std::filesystem::is_directory(root + "/deep/config"));
    }
    for (const char* const none : {"", "relative"}) {
        const CVariable configured("XDG_CONFIG_HOME", none);
        const CVariable home("HOME", root + "/home");
        EXPECT_EQ(Find(), root + "/home/.config");
    }
    {
        std::filesystem::create_directories(root);
        SystemFiles().OpenForWriting(Utf16FromUtf8(root + "/file"));
        const CVariable configured("XDG_CONFIG_HOME", root + "/file/config");  // which can't be made
        EXPECT_EQ(Find(), "<none>");
    }
    std::filesystem::remove_all(root);
}

}  // namespace
}  // namespace reka::test
