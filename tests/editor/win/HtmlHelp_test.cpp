// SPDX-License-Identifier: MIT
// Help: the control library that is looked for in the registry, and the button of the shell.

#include "editor/win/HtmlHelp.h"

#include <gtest/gtest.h>

#include <string>

#include "EditorFixture.h"
#include "editor/win/HelpPages.h"
#include "editor/win/resource.h"

namespace reka::test {
namespace {

constexpr const wchar_t* helpKey = L"CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";

/// The classes root of this process is a key of the test's own, as long as it lives.
class CTestClasses {
public:
    CTestClasses() {
        RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\REKA tests", 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                        nullptr, &root, nullptr);
        RegOverridePredefKey(HKEY_CLASSES_ROOT, root);
    }
    ~CTestClasses() {
        RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        RegCloseKey(root);
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\REKA tests");
    }
    CTestClasses(const CTestClasses&) = delete;
    CTestClasses& operator=(const CTestClasses&) = delete;

    void SetHelpLibrary(const std::u16string& path, DWORD type = REG_SZ) {
        HKEY key = nullptr;
        RegCreateKeyExW(root, helpKey, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &key, nullptr);
        RegSetValueExW(key, nullptr, 0, type, reinterpret_cast<const BYTE*>(path.c_str()),
                       static_cast<DWORD>((path.size() + 1) * sizeof(char16_t)));
        RegCloseKey(key);
    }

private:
    HKEY root = nullptr;
};

/// The library that stands in for that of HTML Help.
struct FakeHelp {
    FakeHelp() : library(LoadLibraryW(Wide(Path()))) { EXPECT_TRUE(library); }
    ~FakeHelp() { FreeLibrary(library); }
    FakeHelp(const FakeHelp&) = delete;
    FakeHelp& operator=(const FakeHelp&) = delete;

    static std::u16string Path() { return ComponentFolder() + u"FakeHelp.dll"; }
    template <class Function>
    Function Find(const char* name) const {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    }
    std::u16string LastCall() const {
        return reinterpret_cast<const char16_t*>(Find<const wchar_t* (*)()>("LastHelpCall")());
    }
    int CallCount() const { return Find<int (*)()>("HelpCallCount")(); }
    HWND LastCaller() const { return Find<HWND (*)()>("LastHelpCaller")(); }
    void SetAnswer(HWND window) const { Find<void (*)(HWND)>("SetHelpAnswer")(window); }

    HMODULE library;
};

TEST(HtmlHelp, FindsItsLibraryInTheClasses) {
    CTestClasses classes;
    EXPECT_EQ(FindHelpLibrary(), u"");
    classes.SetHelpLibrary(u"C:\\%REKA_TEST_FOLDER%\\help.ocx");
    EXPECT_EQ(FindHelpLibrary(), u"C:\\%REKA_TEST_FOLDER%\\help.ocx");
    SetEnvironmentVariableW(L"REKA_TEST_FOLDER", L"some folder");
    classes.SetHelpLibrary(u"C:\\%REKA_TEST_FOLDER%\\help.ocx", REG_EXPAND_SZ);
    EXPECT_EQ(FindHelpLibrary(), u"C:\\some folder\\help.ocx");
    SetEnvironmentVariableW(L"REKA_TEST_FOLDER", std::wstring(260, L'x').c_str());
    EXPECT_EQ(FindHelpLibrary(), u"");  // longer than a path
    SetEnvironmentVariableW(L"REKA_TEST_FOLDER", nullptr);
    classes.SetHelpLibrary(std::u16string(260, u'x'));
    EXPECT_EQ(FindHelpLibrary(), u"");
    classes.SetHelpLibrary(std::u16string(259, u'x'));
    EXPECT_EQ(FindHelpLibrary().size(), 259U);
    classes.SetHelpLibrary(u"help.ocx", REG_BINARY);
    EXPECT_EQ(FindHelpLibrary(), u"");
}

TEST(HtmlHelp, ShowsATopicOfAFile) {
    CTestClasses classes;
    classes.SetHelpLibrary(FakeHelp::Path());
    const FakeHelp library;
    CHtmlHelp help;
    const HWND owner = GetDesktopWindow();
    library.SetAnswer(nullptr);
    EXPECT_FALSE(help.Show(owner, u"C:\\folder\\NAVO.chm", u"REKA/reka.htm"));
    EXPECT_EQ(library.LastCall(), u"0|C:\\folder\\NAVO.chm|REKA/reka.htm");
    EXPECT_EQ(library.LastCaller(), owner);
    library.SetAnswer(owner);
    EXPECT_TRUE(help.Show(owner, u"other", u"topic"));
    EXPECT_EQ(library.LastCall(), u"0|other|topic");
}

TEST(HtmlHelp, LooksForItsLibraryOnce) {
    CTestClasses classes;
    const FakeHelp library;
    library.SetAnswer(GetDesktopWindow());
    CHtmlHelp help;
    classes.SetHelpLibrary(ComponentFolder() + u"reka_editor_tests.exe");  // loads, and has no such entry
    const int calls = library.CallCount();
    EXPECT_FALSE(help.Show(nullptr, u"file", u"topic"));
    classes.SetHelpLibrary(FakeHelp::Path());  // too late
    EXPECT_FALSE(help.Show(nullptr, u"file", u"topic"));
    EXPECT_EQ(library.CallCount(), calls);
    CHtmlHelp another;
    EXPECT_TRUE(another.Show(nullptr, u"file", u"topic"));
    classes.SetHelpLibrary(u"no such file");
    EXPECT_TRUE(another.Show(nullptr, u"file", u"topic"));
    EXPECT_EQ(library.CallCount(), calls + 2);
}

class EditShellHelp : public EditorFixture {};

TEST_F(EditShellHelp, IsShownOrTheUserIsToldThatItCanNotBe) {
    CTestClasses classes;
    classes.SetHelpLibrary(FakeHelp::Path());
    const FakeHelp library;
    EXPECT_FALSE(EditPackage(*definition, [&](CUser& u, const CDrivenWindow& shell) {
        const std::u16string file = ComponentFolder() + u"NAVO.chm";
        library.SetAnswer(shell.Get());
        shell.Click(IDC_EDIT_HELP);
        EXPECT_EQ(u.CountDialogs(), 1);
        EXPECT_EQ(library.LastCall(), u"0|" + file + u"|REKA/reka.htm");
        EXPECT_EQ(library.LastCaller(), shell.Get());
        library.SetAnswer(nullptr);
        u.Press('H', {VK_MENU});
        u.Answer({u"Error starting Help:", u"Failed to load HTML Help file " + file, errorBox}, IDOK);
        shell.Click(IDCANCEL);
    }));
}

/// F1 in each page of the shell and in the dialogs above it.
TEST_F(EditShellHelp, IsShownForTheDialogThatF1IsPressedIn) {
    CTestClasses classes;
    classes.SetHelpLibrary(FakeHelp::Path());
    const FakeHelp library;
    EXPECT_FALSE(EditPackage(*definition, [&](CUser& u, const CDrivenWindow& shell) {
        library.SetAnswer(shell.Get());
        const auto expectPage = [&](const char16_t* page) {
            const int calls = library.CallCount();
            u.Press(VK_F1);
            EXPECT_EQ(library.CallCount(), calls + 1);
            EXPECT_EQ(library.LastCall(), u"0|" + ComponentFolder() + u"NAVO.chm|REKA/" + page);
        };
        expectPage(u"general-page.htm");
        OpenPage(u, shell, EditPage::Compounds).FocusOn(IDC_COMPOUNDS_LIST);
        expectPage(u"compounds-page.htm");
        const CDrivenWindow reactions = OpenPage(u, shell, EditPage::Reactions);
        reactions.FocusOn(IDC_REACTIONS_RATE);
        expectPage(u"reactions-page.htm");
        reactions.Click(IDC_REACTIONS_RATE_WIZARD);
        const CDrivenWindow wizard = u.WaitFor(u"Reaction rate wizard:");
        expectPage(u"rate-wizard.htm");
        EXPECT_EQ(library.LastCaller(), wizard.Get());
        wizard.Click(IDCANCEL);
        wizard.WaitUntilGone();
        reactions.Click(IDC_REACTIONS_EDIT_RATE);
        const CDrivenWindow expression = u.WaitFor(u"Edit formula:");
        expectPage(u"expression-editor.htm");
        expression.Click(IDCANCEL);
        expression.WaitUntilGone();
        shell.FocusOn(IDC_EDIT_HELP);
        expectPage(u"editor.htm");
        library.SetAnswer(nullptr);
        messages.shown.clear();
        u.Press(VK_F1);
        const std::u16string text = u"Failed to load HTML Help file " + ComponentFolder() + u"NAVO.chm";
        EXPECT_EQ(messages.shown,
                  (std::vector<UserMessage>{{text, u"Error starting Help:", errorBox, MessageOwner::ActiveWindow}}));
        shell.Click(IDCANCEL);
    }));
}

TEST(HelpPages, AreThereForEveryDialog) {
    for (const int dialog : {IDD_EDIT, IDD_GENERAL, IDD_COMPOUNDS, IDD_REACTIONS, IDD_MANAGER, IDD_ADD_COMPOUNDS,
                             IDD_RATE_WIZARD, IDD_COMPOUND_SOURCE, IDD_MATERIAL_COMPOUNDS, IDD_EXPRESSION, IDD_INPUT,
                             IDD_LOAD_TEMPLATE, IDD_STORE_TEMPLATE}) {
        EXPECT_NE(HelpPageOf(dialog), nullptr) << dialog;
    }
    EXPECT_EQ(HelpPageOf(1), nullptr);
}

}  // namespace
}  // namespace reka::test
