// SPDX-License-Identifier: MIT
// What holds for the editor's windows together: whose they are, and what becomes of them where the system refuses.

#include "editor/win/CEditorWindows.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <string>
#include <thread>

#include "EditorFixture.h"
#include "editor/win/WindowsEditor.h"
#include "platform/HostArithmetic.h"
#include "platform/win/SystemModules.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

const ExpectedBox noMemory = {u"Error:", u"out of memory", errorBox};

BOOL CALLBACK TakeUsableDialog(HWND window, LPARAM found) {
    if (!IsWindowVisible(window) || !IsWindowEnabled(window) || !IsDialogWindow(window)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

/// The topmost dialog or message box of that thread that can be used; null for none.
HWND UsableDialog(DWORD thread) {
    HWND found = nullptr;
    EnumThreadWindows(thread, TakeUsableDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

class EditorWindows : public EditorFixture {
protected:
    EditorWindows() : package(*definition) {}

    CPackageHolder package;
};

/// A window that stands for the simulator's, active as long as it lives.
class CSimulatorWindow {
public:
    CSimulatorWindow()
        : window(CreateWindowExW(0, L"STATIC", L"Simulator", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                                 nullptr, nullptr, nullptr)) {
        SetActiveWindow(window);
    }
    ~CSimulatorWindow() { DestroyWindow(window); }
    CSimulatorWindow(const CSimulatorWindow&) = delete;
    CSimulatorWindow& operator=(const CSimulatorWindow&) = delete;
    HWND Get() const { return window; }

private:
    HWND window;
};

TEST_F(EditorWindows, BelongToTheActiveWindow) {
    const CSimulatorWindow simulator;
    ASSERT_EQ(GetActiveWindow(), simulator.Get());
    CUser user([&](CUser& u) {
        const CDrivenWindow shell = u.WaitFor(u"Edit:");
        EXPECT_EQ(GetWindow(shell.Get(), GW_OWNER), simulator.Get());
        EXPECT_FALSE(IsWindowEnabled(simulator.Get()));
        OpenPage(u, shell, EditPage::Reactions).Click(IDC_REACTIONS_DELETE);
        const CDrivenWindow box = u.WaitFor(u"Delete reaction:");
        EXPECT_EQ(GetWindow(box.Get(), GW_OWNER), shell.Get());
        box.Click(IDNO);
        shell.Click(IDOK);
    });
    EXPECT_EQ(package->Edit(), S_OK);
    user.Finish();
    EXPECT_TRUE(IsWindowEnabled(simulator.Get()));
}

TEST_F(EditorWindows, NeedNoActiveWindow) {
    SetActiveWindow(nullptr);
    ASSERT_EQ(GetActiveWindow(), nullptr);
    CUser user([](CUser& u) {
        const CDrivenWindow shell = u.WaitFor(u"Edit:");
        EXPECT_EQ(GetWindow(shell.Get(), GW_OWNER), nullptr);
        shell.Click(IDCANCEL);
    });
    EXPECT_EQ(package->Edit(), S_FALSE);
}

TEST_F(EditorWindows, LeaveThePackageAsItWasAfterCancel) {
    const auto other = MakePackage({u"A", u"B", u"Cc"});
    other->name = CBstr::Make(u"Template");
    PutDefinitions({other.get()});
    const ReactionPackDefinition* const own = package->Definition();
    CUser user([](CUser& u) {
        const CDrivenWindow shell = u.WaitFor(u"Edit:");
        shell.Click(IDC_EDIT_LOAD);
        u.WaitFor(u"Load from reaction package template:").Click(IDOK);
        EXPECT_EQ(OpenPage(u, shell, EditPage::Compounds).RowCount(IDC_COMPOUNDS_LIST), 3);
        shell.Click(IDCANCEL);
    });
    EXPECT_EQ(package->Edit(), S_FALSE);
    user.Finish();
    EXPECT_EQ(package->Definition(), own);
    EXPECT_EQ(own->compounds.size(), 2U);
    EXPECT_EQ(own->reactions.size(), 1U);
}

TEST_F(EditorWindows, CanBeOpenTwiceInOneThread) {
    CUser user([&](CUser& u) {
        const CDrivenWindow first = u.WaitFor(u"Edit:");
        // A simulator may ask for another editor while one is open.
        std::thread other([&] { u.OnTestThread([&] { EXPECT_EQ(package->Edit(), S_OK); }); });
        u.WaitUntil("the second editor", [&] { return u.CountDialogs() == 2; });
        const CDrivenWindow second = u.WaitFor(u"Edit:");
        EXPECT_NE(second.Get(), first.Get());
        EXPECT_EQ(GetWindow(second.Get(), GW_OWNER), first.Get());
        second.Click(IDOK);
        other.join();
        EXPECT_EQ(u.WaitFor(u"Edit:").Get(), first.Get());
        first.Click(IDOK);
    });
    EXPECT_EQ(package->Edit(), S_OK);
}

TEST_F(EditorWindows, CanBeOpenInTwoThreads) {
    std::atomic<bool> isOtherOpen = false;
    std::atomic<bool> isOtherToEnd = false;
    std::thread other([&] {
        // Its user works by messages: the keyboard belongs to the test's thread.
        const auto mine = MakeValid(u"Other");
        std::atomic<bool> isDone = false;
        const DWORD thread = GetCurrentThreadId();
        std::thread closer([&] {
            while (!isDone) {
                const HWND dialog = UsableDialog(thread);
                if (dialog) isOtherOpen = true;
                if (dialog && isOtherToEnd) PostMessageW(dialog, WM_CLOSE, 0, 0);
                Sleep(20);
            }
        });
        EXPECT_FALSE(CEditorWindows(nullptr).EditPackage(*mine));
        isDone = true;
        closer.join();
    });
    EXPECT_TRUE(EditPackage(*definition, [&](CUser& u, const CDrivenWindow& shell) {
        u.WaitUntil("the editor of the other thread", [&] { return isOtherOpen.load(); });
        u.WaitFor(u"Edit:");  // above the other one again
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"Meanwhile");
        shell.Click(IDOK);
        shell.WaitUntilGone();
    }));
    isOtherToEnd = true;
    other.join();
    EXPECT_EQ(definition->name.View(), u"Meanwhile");
}

/// The simulator's window is destroyed while a dialog above the shell is open, or a cell is edited.
TEST_F(EditorWindows, EndWithTheWindowThatTheyBelongTo) {
    for (const bool isCell : {false, true}) {
        const HWND owner = CreateWindowExW(0, L"STATIC", L"Simulator", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100,
                                           nullptr, nullptr, nullptr, nullptr);
        CUser user([&](CUser& u) {
            const CDrivenWindow shell = u.WaitFor(u"Edit:");
            if (isCell) {
                const CDrivenWindow page = OpenPage(u, shell, EditPage::Compounds);
                page.ClickCell(IDC_COMPOUNDS_LIST, 0);
                u.Press(VK_F2);
                u.WaitUntil("the field of the name", [&] { return page.IsEditing(IDC_COMPOUNDS_LIST); });
                u.Type(u"sECOND");  // which would be refused in a box
            } else {
                OpenPage(u, shell, EditPage::Reactions).Click(IDC_REACTIONS_EDIT_RATE);
                u.WaitFor(u"Edit formula:");
                u.Type(u"5");
            }
            u.OnTestThread([owner] { DestroyWindow(owner); });
            shell.WaitUntilGone();
            u.WaitUntil("the end of all windows", [&] { return u.CountDialogs() == 0; });
        });
        EXPECT_FALSE(CEditorWindows(owner).EditPackage(*definition));
        user.Finish();
    }
    EXPECT_EQ(definition->compounds[0]->name.View(), u"First");
    EXPECT_EQ(definition->reactions[0]->rateEquation, u"2*T");
}

// Where they open

/// The manager's dialog on a screen that is smaller than it.
class CCrampedDlg : public CDialog {
public:
    CCrampedDlg() : CDialog(IDD_MANAGER) {}
    bool Run() { return RunModal(nullptr) == IDOK; }

    static constexpr RECT area = {30, 40, 330, 190};

private:
    void OnInit() override {
        SetWindowTextW(Window(), L"Cramped");
        KeepPresentSizeAsSmallest();
    }
    RECT WorkArea() const override { return area; }
};

TEST_F(EditorWindows, OpenWithinTheScreen) {
    CUser user([](CUser& u) {
        const CDrivenWindow dialog = u.WaitFor(u"Cramped");
        RECT place = PlaceOf(dialog.Get());
        EXPECT_TRUE(EqualRect(&place, &CCrampedDlg::area));
        dialog.DragCorner(-50, -50);
        place = PlaceOf(dialog.Get());
        EXPECT_TRUE(EqualRect(&place, &CCrampedDlg::area));
        u.Press(VK_RETURN);
    });
    CCrampedDlg dialog;
    EXPECT_TRUE(dialog.Run());
    user.Finish();
}

// What the system refuses

/// As long as it lives the module's resources can't be found.
class CNoResources {
public:
    CNoResources() : before(SetModuleHandle(GetModuleHandleW(L"kernel32.dll"))) {}
    ~CNoResources() { SetModuleHandle(before); }
    CNoResources(const CNoResources&) = delete;
    CNoResources& operator=(const CNoResources&) = delete;

private:
    HINSTANCE before;
};

TEST_F(EditorWindows, ThatAreRefusedChangeNothing) {
    const CNoResources refused;
    const ReactionPackDefinition* const own = package->Definition();
    EXPECT_EQ(package->Edit(), S_FALSE);
    EXPECT_EQ(package->Definition(), own);
    PutDefinitions({definition.get()});
    const auto templates = MakeManagerTemplates();
    templates->Store().LoadTemplates();
    SetLastError(ERROR_SUCCESS);
    WindowsEditor().EditTemplates(*templates);
    EXPECT_NE(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS));
    EXPECT_EQ(templates->Store().templates.size(), 1U);
    CEditorWindows windows(nullptr);
    CBstr text = CBstr::Make(u"as it was");
    EXPECT_FALSE(windows.AskForText(u"title", text));
    EXPECT_EQ(text.View(), u"as it was");
    std::u16string name = u"as it was";
    EXPECT_FALSE(windows.AskForTemplateToLoad(*templates, name));
    EXPECT_FALSE(windows.AskForTemplateToStore(*templates, name));
    EXPECT_FALSE(windows.EditExpression(*definition, u"item", u"unit", name));
    EXPECT_FALSE(windows.AskForRate(*definition->reactions[0], *definition, name));
    EXPECT_EQ(name, u"as it was");
    std::int32_t chosen = 7;
    EXPECT_FALSE(windows.AskForCompoundSource({u"one"}, chosen));
    EXPECT_EQ(chosen, 7);
    EXPECT_FALSE(windows.AddCompoundsOfFile(*definition));
    EXPECT_FALSE(windows.AddCompoundsOfMaterial({}, *definition));
    EXPECT_EQ(definition->compounds.size(), 2U);
}

/// Refuses the pages of the shell, and nothing else.
LRESULT CALLBACK RefusePages(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_CREATEWND) {
        const CREATESTRUCTW& made = *reinterpret_cast<const CBT_CREATEWNDW*>(lParam)->lpcs;
        if ((made.style & WS_CHILD) != 0 && IsDialogWindow(reinterpret_cast<HWND>(wParam))) return 1;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(EditorWindows, ThatLackAPageCanBeUsed) {
    const HHOOK hook = SetWindowsHookExW(WH_CBT, RefusePages, nullptr, GetCurrentThreadId());
    const auto other = MakeValid(u"Template");
    PutDefinitions({other.get()});
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        for (HWND child = GetWindow(shell.Get(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            EXPECT_FALSE(IsDialogWindow(child));
        }
        shell.DragCorner(40, 40);
        shell.Click(IDC_EDIT_LOAD);
        u.WaitFor(u"Load from reaction package template:").Click(IDOK);
        shell.Click(IDOK);
        u.Answer({u"Error:", u"Reaction package name cannot be empty", errorBox}, IDOK);
        shell.Click(IDCANCEL);
    }));
    UnhookWindowsHookEx(hook);
}

TEST_F(EditorWindows, EndWithTheSimulator) {
    CUser user([](CUser& u) {
        u.WaitFor(u"Edit:");
        u.OnTestThread([] { PostQuitMessage(5); });
    });
    EXPECT_EQ(package->Edit(), S_FALSE);
    user.Finish();
}

TEST_F(EditorWindows, ComputeWhateverTheSimulatorTrapsOn) {
    definition->compounds[0]->charge = std::numeric_limits<double>::quiet_NaN();
    const ArithmeticSettings before = CurrentArithmetic();
    ArithmeticSettings trapping = before;
    trapping.sse &= ~0x1F80U;  // no exception is masked
    CUser user([&](CUser& u) {
        const CDrivenWindow shell = u.WaitFor(u"Edit:");
        const CDrivenWindow reactions = OpenPage(u, shell, EditPage::Reactions);
        for (const char16_t* const text : {u"1/3", u"-1/7", u"0/3"}) {
            reactions.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 0, 0, 2);
            reactions.TypeIntoCell(IDC_REACTIONS_STOICHIOMETRY, text);
        }
        reactions.Click(IDC_REACTIONS_EQUILIBRIUM);
        shell.Click(IDCANCEL);
    });
    SetArithmetic(trapping);
    const bool isAccepted = WindowsEditor().EditPackage(*definition);
    const ArithmeticSettings after = CurrentArithmetic();
    SetArithmetic(before);
    user.Finish();
    EXPECT_FALSE(isAccepted);
    EXPECT_EQ(after.sse & 0x1F80U, 0U);
    EXPECT_EQ(definition->reactions[0]->stoichiometry[0], 0.0);
}

// Memory

TEST_F(EditorWindows, TellThatThereIsNoMemoryAndStayUsable) {
    EXPECT_TRUE(EditPackage(*definition, [&](CUser& u, const CDrivenWindow& shell) {
        const CDrivenWindow reactions = OpenPage(u, shell, EditPage::Reactions);
        reactions.Fill(IDC_REACTIONS_RATE, u"1000000000*T");
        u.OnTestThread([] { FailAllocation(1); });
        u.Type(u"+");
        u.Answer(noMemory, IDOK);
        u.Type(u"1");
        EXPECT_EQ(definition->reactions[0]->rateEquation, u"1000000000*T+1");
        u.OnTestThread([] { FailAllocation(1); });
        reactions.Click(IDC_REACTIONS_CREATE);
        u.Answer(noMemory, IDOK);
        const CDrivenWindow compounds = OpenPage(u, shell, EditPage::Compounds);
        u.OnTestThread([] { FailAllocation(1); });
        compounds.Click(IDC_COMPOUNDS_ADD);
        u.Answer(noMemory, IDOK);
        u.OnTestThread([] { FailAllocation(1); });
        shell.Click(IDC_EDIT_STORE);
        u.Answer(noMemory, IDOK);
        u.OnTestThread([] { FailAllocation(0); });
        shell.Click(IDOK);
    }));
    EXPECT_EQ(definition->reactions.size(), 1U);
    EXPECT_EQ(definition->compounds.size(), 2U);
}

/// The dialog or box that can be used now; null when `isDone`.
HWND WaitForAny(CUser& u, DWORD thread, const std::atomic<bool>& isDone) {
    HWND found = nullptr;
    u.WaitUntil("a window", [&] { return (found = UsableDialog(thread)) || isDone; });
    return found;
}

/// Each allocation of the opening fails in turn: the editor opens after a word on it, or doesn't.
TEST_F(EditorWindows, OpenWithoutMemoryOrLeaveAllAsItWas) {
    bool isReached = true;
    int opened = 0;
    for (std::size_t n = 1; isReached; n += 4) {
        const ReactionPackDefinition* const own = package->Definition();
        const DWORD thread = GetCurrentThreadId();
        std::atomic<bool> isDone = false;
        std::atomic<bool> isOpened = false;
        CUser user([&](CUser& u) {
            while (HWND window = WaitForAny(u, thread, isDone)) {
                const bool isBox = u.TextOf(window) == u"Error:";
                if (!isBox) isOpened = true;
                PostMessageW(window, isBox ? WM_COMMAND : WM_CLOSE, isBox ? IDOK : 0, 0);
                u.WaitUntil("its end", [&] { return !IsWindow(window) || !IsWindowVisible(window); });
            }
        });
        FailAllocation(n);
        const HRESULT result = package->Edit();
        isReached = !IsAllocationToFail();
        FailAllocation(0);
        isDone = true;
        user.Finish();
        if (isOpened) ++opened;
        EXPECT_TRUE(result == S_FALSE || (result == ECapeUnknownHR && !isOpened)) << n;
        EXPECT_EQ(package->Definition(), own);
    }
    EXPECT_GT(opened, 1);
}

}  // namespace
}  // namespace reka::test
