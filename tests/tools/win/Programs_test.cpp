// SPDX-License-Identifier: MIT
// What Windows reads of the companion programs' files: their manifest, their version and their icon.

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "support/TestFiles.h"

namespace {

struct Program {
    const char* name;
    const char* built;
    const wchar_t* description;
};

const Program programs[] = {
    {"rekadoctor", REKADOCTOR_FILE, L"Tells whether REKA is registered and loads"},
    {"rekasim", REKASIM_FILE, L"A small simulator that uses REKA packages"},
    {"rekatool", REKATOOL_FILE, L"Keeps REKA packages as texts"},
};

/// A path that is whole, as the system wants one.
std::wstring WholePath(const std::string& path) {
    std::wstring whole(32768, L'\0');
    const std::wstring wide(path.begin(), path.end());
    whole.resize(GetFullPathNameW(wide.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
    return whole;
}

class Programs : public testing::TestWithParam<Program> {
protected:
    Programs()
        : path(WholePath(reka::test::TestFile(GetParam().built))),
          file(LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {
        EXPECT_TRUE(file);
    }
    ~Programs() override { FreeLibrary(file); }

    const std::wstring path;
    const HMODULE file;
};

TEST_P(Programs, TellHowTheyAreToBeRun) {
    const HRSRC found = FindResourceW(file, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));  // a manifest of a program
    ASSERT_TRUE(found);
    const std::string manifest(static_cast<const char*>(LockResource(LoadResource(file, found))),
                               SizeofResource(file, found));
    for (const char* part : {"<requestedExecutionLevel level=\"asInvoker\" uiAccess=\"false\"/>",
                             "{35138b9a-5d96-4fbd-8e2d-a2440225f93a}",  // Windows 7
                             "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}",  // Windows 10 and 11
                             "SMI/2016/WindowsSettings\">true</longPathAware>"}) {
        EXPECT_NE(manifest.find(part), std::string::npos) << part;
    }
}

TEST_P(Programs, TellTheirVersion) {
    DWORD ignored = 0;
    std::vector<char> block(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    ASSERT_TRUE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    const auto text = [&](const std::wstring& name) {
        void* value = nullptr;
        UINT length = 0;
        return VerQueryValueW(block.data(), (L"\\StringFileInfo\\040904B0\\" + name).c_str(), &value, &length)
                   ? std::wstring(static_cast<const wchar_t*>(value))
                   : std::wstring(L"none");
    };
    EXPECT_EQ(text(L"FileDescription"), GetParam().description);
    EXPECT_EQ(text(L"ProductName"), L"REKA");
    EXPECT_EQ(text(L"FileVersion"), L"" REKA_VERSION ".0");
    const std::string name = GetParam().name;
    EXPECT_EQ(text(L"OriginalFilename"), std::wstring(name.begin(), name.end()) + L".exe");
}

TEST_P(Programs, HaveAnIcon) {
    EXPECT_TRUE(FindResourceW(file, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(14)));
}

INSTANTIATE_TEST_SUITE_P(Companions, Programs, testing::ValuesIn(programs),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
