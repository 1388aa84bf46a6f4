// SPDX-License-Identifier: MIT
// The registry script with what stands in for its two names, in a registry of the tests' own: one key takes the place
// of the current user's hive.

#include "server/Registration.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "server/Module.h"

namespace reka::test {
namespace {

constexpr wchar_t ownHive[] = L"Software\\REKA tests";
constexpr wchar_t descriptionKey[] =
    L"Software\\Classes\\CLSID\\{95E42661-1916-4261-8FCC-6F598A19E544}\\CapeDescription";

class RegistryScript : public testing::Test {
protected:
    RegistryScript() {
        RegDeleteTreeW(HKEY_CURRENT_USER, ownHive);
        EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, ownHive, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &hive, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, hive), ERROR_SUCCESS);
        TheModule().isPerUser = true;
    }
    ~RegistryScript() override {
        TheModule().isPerUser = false;
        SetVersion(u"");
        EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, nullptr), ERROR_SUCCESS);
        RegCloseKey(hive);
        EXPECT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, ownHive), ERROR_SUCCESS);
    }

    static void SetVersion(std::u16string_view version) {
        char16_t* const end = std::copy(version.begin(), version.end(), TheModule().version);
        *end = 0;
    }
    static bool IsThere(const wchar_t* path) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
        RegCloseKey(key);
        return true;
    }
    /// A text of the description; absent if there is none.
    static std::optional<std::wstring> ReadDescription(const wchar_t* name) {
        wchar_t text[256] = {};
        DWORD size = sizeof text;
        const LSTATUS status =
            RegGetValueW(HKEY_CURRENT_USER, descriptionKey, name, RRF_RT_REG_SZ, nullptr, text, &size);
        if (status != ERROR_SUCCESS) return std::nullopt;
        return text;
    }

    HKEY hive = nullptr;
};

TEST_F(RegistryScript, TellsAnyVersion) {
    for (const std::u16string_view version :
         {std::u16string_view(u"1.2.3.4"), std::u16string_view(u""), std::u16string_view(u"<unknown>")}) {
        SetVersion(version);
        ASSERT_EQ(RunRegistryScript(true), S_OK);
        EXPECT_EQ(ReadDescription(L"ComponentVersion"), std::wstring(version.begin(), version.end()));
        EXPECT_EQ(ReadDescription(L"VendorURL"), L"https://navo.example/reka");  // which stands behind it
        ASSERT_EQ(RunRegistryScript(false), S_OK);
        EXPECT_FALSE(IsThere(descriptionKey));
    }
}

TEST_F(RegistryScript, MakesTheUsersClassesOnlyToRegister) {
    EXPECT_EQ(RunRegistryScript(false), S_OK);  // there is nothing to remove
    EXPECT_FALSE(IsThere(L"Software"));
    EXPECT_EQ(RunRegistryScript(true), S_OK);
    EXPECT_TRUE(IsThere(descriptionKey));
    EXPECT_EQ(RunRegistryScript(false), S_OK);
    EXPECT_FALSE(IsThere(descriptionKey));
    EXPECT_TRUE(IsThere(L"Software\\Classes\\CLSID"));
}

}  // namespace
}  // namespace reka::test
