// SPDX-License-Identifier: MIT
// The version of the controls in the dialogs, whatever program they open in: this test runs in one with a manifest and
// in one without.

#include "editor/win/ControlsContext.h"

#include <gtest/gtest.h>

#include "EditorFixture.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

HANDLE CurrentContext() {
    HANDLE context = nullptr;
    GetCurrentActCtx(&context);
    if (context) ReleaseActCtx(context);
    return context;
}

/// The name under which the system keeps a class that has versions: "6.0.2600.2982!Button" for version 6.
std::wstring VersionedName(const wchar_t* className) {
    ACTCTX_SECTION_KEYED_DATA found = {};
    found.cbSize = sizeof found;
    if (!FindActCtxSectionStringW(0, nullptr, ACTIVATION_CONTEXT_SECTION_WINDOW_CLASS_REDIRECTION, className, &found))
        return className;
    struct Redirection {  // as the system documents it
        ULONG size;
        DWORD flags;
        ULONG nameLength;
        DWORD nameOffset;
    };
    const auto* const data = static_cast<const Redirection*>(found.lpData);
    const auto* const name =
        reinterpret_cast<const wchar_t*>(static_cast<const char*>(found.lpData) + data->nameOffset);
    return std::wstring(name, data->nameLength / sizeof(wchar_t));
}

/// The module that has the procedure of a window's class.
std::wstring ModuleOf(HWND window) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(GetClassLongPtrW(window, GCLP_WNDPROC)), &module);
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(module, path, MAX_PATH);
    CharLowerW(path);
    return path;
}

class ControlsContext : public EditorFixture {};

TEST_F(ControlsContext, GivesDialogsVersion6) {
    const HANDLE before = CurrentContext();
    OnPage(EditPage::Compounds, [](CUser& u, const CDrivenWindow& page) {
        u.OnTestThread([&] {
            for (const wchar_t* const name : {WC_LISTVIEWW, WC_TABCONTROLW, L"Button"}) {
                EXPECT_EQ(VersionedName(name).substr(0, 2), L"6.") << "where windows are made meanwhile";
            }
        });
        for (const int control : {IDC_COMPOUNDS_LIST, IDC_COMPOUNDS_ADD}) {
            const std::wstring module = ModuleOf(page.Item(control));
            EXPECT_NE(module.find(L"\\comctl32.dll"), std::wstring::npos)
                << control << " is of " << Utf8FromUtf16(reinterpret_cast<const char16_t*>(module.c_str()));
        }
    });
    EXPECT_EQ(CurrentContext(), before);
}

TEST_F(ControlsContext, IsLeftWhereAMessageBoxIsAnswered) {
    const HANDLE before = CurrentContext();
    definition->compounds.clear();
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        shell.Click(IDOK);
        u.Press(VK_RETURN);
        shell.Click(IDCANCEL);
    }));
    EXPECT_EQ(CurrentContext(), before);
}

TEST(ControlsContextWithoutAManifest, LeavesWindowsAsTheProgramHasThem) {
    const CControlsContext missing(9999);
    EXPECT_FALSE(missing.IsThere());
    const HANDLE before = CurrentContext();
    const std::wstring name = VersionedName(WC_LISTVIEWW);
    {
        const CControlsScope scope(&missing);
        const CControlsScope none(nullptr);
        EXPECT_EQ(CurrentContext(), before);
        EXPECT_EQ(VersionedName(WC_LISTVIEWW), name);
    }
    EXPECT_EQ(CurrentContext(), before);
}

TEST(ControlsContextScope, EndsInOrder) {
    const CControlsContext newest(IDM_CONTROLS);
    ASSERT_TRUE(newest.IsThere());
    const HANDLE before = CurrentContext();
    {
        const CControlsScope outer(&newest);
        EXPECT_EQ(CurrentContext(), newest.Get());
        { const CControlsScope inner(&newest); }
        EXPECT_EQ(CurrentContext(), newest.Get());
    }
    EXPECT_EQ(CurrentContext(), before);
}

}  // namespace
}  // namespace reka::test
