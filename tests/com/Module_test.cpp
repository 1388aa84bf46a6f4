// SPDX-License-Identifier: MIT
// The module file: what it needs, what it holds.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "Host.h"

namespace host {
namespace {

/// The file, loaded as the data that it is.
class ModuleFile : public testing::Test {
protected:
    ModuleFile() : module(LoadLibraryExW(ModulePath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {
        std::ifstream file(std::filesystem::path(ModulePath()), std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(file), {});
    }
    ~ModuleFile() override { FreeLibrary(module); }

    template <class Record>
    Record At(std::size_t offset) const {
        Record record = {};
        if (offset + sizeof record <= bytes.size()) std::memcpy(&record, bytes.data() + offset, sizeof record);
        return record;
    }

    std::size_t HeadersOffset() const { return static_cast<std::size_t>(At<IMAGE_DOS_HEADER>(0).e_lfanew); }
    IMAGE_DATA_DIRECTORY Directory(std::size_t index) const {
        return At<IMAGE_NT_HEADERS>(HeadersOffset()).OptionalHeader.DataDirectory[index];
    }
    /// Place in the file of an address in the loaded module.
    std::size_t OffsetOf(DWORD address) const {
        const auto headers = At<IMAGE_NT_HEADERS>(HeadersOffset());
        std::size_t section = HeadersOffset() + sizeof headers;
        for (int i = 0; i < headers.FileHeader.NumberOfSections; ++i, section += sizeof(IMAGE_SECTION_HEADER)) {
            const auto header = At<IMAGE_SECTION_HEADER>(section);
            if (address >= header.VirtualAddress && address < header.VirtualAddress + header.SizeOfRawData) {
                return address - header.VirtualAddress + header.PointerToRawData;
            }
        }
        return bytes.size();
    }
    std::string TextAt(DWORD address) const {
        const std::size_t offset = OffsetOf(address);
        return offset < bytes.size() ? std::string(bytes.c_str() + offset) : std::string();
    }

    HMODULE module;
    std::string bytes;
};

TEST_F(ModuleFile, NeedsOnlyWhatEveryWindowsHas) {
    const std::set<std::string> everywhere = {"advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll",
                                              "kernel32.dll", "msvcrt.dll",   "ole32.dll",    "oleaut32.dll",
                                              "shell32.dll",  "user32.dll",   "version.dll"};
    std::size_t count = 0;
    for (std::size_t entry = OffsetOf(Directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress);;
         entry += sizeof(IMAGE_IMPORT_DESCRIPTOR), ++count) {
        const auto import = At<IMAGE_IMPORT_DESCRIPTOR>(entry);
        if (import.Name == 0) break;
        std::string name = TextAt(import.Name);
        std::transform(name.begin(), name.end(), name.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
        EXPECT_EQ(everywhere.count(name), 1U) << name;
    }
    EXPECT_GT(count, 3U);
}

TEST_F(ModuleFile, ExportsFourNamesUndecorated) {
    const auto exports = At<IMAGE_EXPORT_DIRECTORY>(OffsetOf(Directory(IMAGE_DIRECTORY_ENTRY_EXPORT).VirtualAddress));
    std::vector<std::string> names;
    for (DWORD i = 0; i < exports.NumberOfNames; ++i) {
        names.push_back(TextAt(At<DWORD>(OffsetOf(exports.AddressOfNames) + i * sizeof(DWORD))));
    }
    EXPECT_EQ(names, (std::vector<std::string>{"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer",
                                               "DllUnregisterServer"}));
    EXPECT_EQ(exports.NumberOfFunctions, 4U);
}

TEST_F(ModuleFile, HasItsVersionBlock) {
    const std::wstring path = ModulePath();
    DWORD ignored = 0;
    std::vector<char> block(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    ASSERT_TRUE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    void* found = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", &found, &size));
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    EXPECT_EQ(fixed->dwFileVersionMS, 0x10000U);
    EXPECT_EQ(fixed->dwFileVersionLS, 0U);
    EXPECT_EQ(fixed->dwProductVersionMS, 0x10000U);
    const std::pair<const wchar_t*, const wchar_t*> texts[] = {
        {L"\\StringFileInfo\\040904B0\\FileDescription", L"REKA - CAPE-OPEN Reaction Numerics"},
        {L"\\StringFileInfo\\040904B0\\InternalName", L"REKA"},
        {L"\\StringFileInfo\\040904B0\\FileVersion", L"1.0.0.0"},
        {L"\\StringFileInfo\\040904B0\\ProductVersion", L"1.0.0.0"}};
    for (const auto& [name, text] : texts) {
        ASSERT_TRUE(VerQueryValueW(block.data(), name, &found, &size)) << name;
        EXPECT_STREQ(static_cast<const wchar_t*>(found), text);
    }
}

TEST_F(ModuleFile, HasItsResources) {
    wchar_t name[64] = {};
    EXPECT_EQ(LoadStringW(module, 100, name, 64), 9);
    EXPECT_STREQ(name, L"NAVO_REKA");
    const HRSRC script = FindResourceW(module, MAKEINTRESOURCEW(101), L"REGISTRY");
    ASSERT_TRUE(script);
    const auto* text = static_cast<const char*>(LockResource(LoadResource(module, script)));
    const std::string read(text, SizeofResource(module, script));
    EXPECT_NE(read.find("%MODULE%"), std::string::npos);
    EXPECT_NE(read.find("%DLLVERSION%"), std::string::npos);
    EXPECT_TRUE(FindResourceW(module, MAKEINTRESOURCEW(1), L"TYPELIB"));
}

TEST_F(ModuleFile, HasItsIconsInFourSizes) {
    for (const int number : {201, 205, 206}) {
        const HRSRC group = FindResourceW(module, MAKEINTRESOURCEW(number), RT_GROUP_ICON);
        ASSERT_TRUE(group) << number;
        const auto* directory = static_cast<const unsigned char*>(LockResource(LoadResource(module, group)));
        const std::size_t count = directory[4];  // after two reserved words
        std::set<int> widths;
        for (std::size_t i = 0; i < count; ++i) widths.insert(directory[6 + 14 * i]);
        for (const int width : {16, 24, 32, 48}) {
            EXPECT_EQ(widths.count(width), 1U) << number << " in " << width;
            const HANDLE icon = LoadImageW(module, MAKEINTRESOURCEW(number), IMAGE_ICON, width, width, LR_DEFAULTCOLOR);
            EXPECT_TRUE(icon) << number << " in " << width;
            DestroyIcon(static_cast<HICON>(icon));
        }
    }
}

TEST_F(ModuleFile, HasTheTypeLibrary) {
    CRef<ITypeLib> library;
    ASSERT_EQ(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library.Receive()), S_OK);
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    constexpr GUID libraryId = {0x6F471C15, 0xE012, 0x496B, {0x95, 0x63, 0x5E, 0xFD, 0x98, 0xC2, 0x58, 0x62}};
    EXPECT_EQ(attributes->guid, libraryId);
    EXPECT_EQ(attributes->wMajorVerNum, 1);
    library->ReleaseTLibAttr(attributes);
    CText name;
    CText help;
    ASSERT_EQ(library->GetDocumentation(-1, name.Receive(), help.Receive(), nullptr, nullptr), S_OK);
    EXPECT_EQ(name.Read(), L"SIMPLEREACTIONPACKLib");
    EXPECT_EQ(help.Read(), L"NAVO REKA 1.0 Type Library");
    std::set<std::wstring> classTexts;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        TYPEKIND kind = TKIND_MAX;
        library->GetTypeInfoType(i, &kind);
        if (kind != TKIND_COCLASS) continue;
        library->GetDocumentation(static_cast<int>(i), name.Receive(), help.Receive(), nullptr, nullptr);
        classTexts.insert(name.Read() + L": " + help.Read());
    }
    EXPECT_EQ(classTexts, (std::set<std::wstring>{L"ReactionPackManager: ReactionPackManager Class",
                                                  L"ReactionPack: ReactionPack Class"}));
}

}  // namespace
}  // namespace host
