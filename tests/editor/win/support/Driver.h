// SPDX-License-Identifier: MIT
// Works windows as a person does, from a thread of its own, while the test's thread is inside the call that shows them:
// real keys and real mouse clicks, and every wait with a limit.

#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace reka::test {

/// For calls of the system.
inline const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

/// The rectangle of a window on the screen.
RECT PlaceOf(HWND window);
POINT MiddleOf(const RECT& place);

/// A message box as it must be: buttons, default button and icon are those of `style`, a sum of `messagestyle`.
struct ExpectedBox {
    std::u16string title;
    std::u16string text;
    std::uint32_t style;
};

class CDrivenWindow;

/// The user. Made just before the call that shows a window; what goes wrong fails the test, leaves a picture of the
/// screen, and closes the windows that are open, so that the test goes on.
class CUser {
public:
    /// `work` runs on a thread of its own. It may use EXPECT; what it waits for in vain ends it.
    explicit CUser(std::function<void(CUser&)> work);
    ~CUser();
    CUser(const CUser&) = delete;
    CUser& operator=(const CUser&) = delete;

    /// Waits for the end of the work, after the call that showed the windows.
    void Finish();

    // All of the following is for the work alone.

    /// Waits for a dialog of this process with that title, until it can be used.
    CDrivenWindow WaitFor(const std::u16string& title);
    /// Waits for a message box, checks it and presses one of its buttons.
    void Answer(const ExpectedBox& expected, int button);
    /// Waits until `condition` holds; ends the work if it never does.
    void WaitUntil(const char* what, const std::function<bool()>& condition);
    /// Waits until the test's thread has dealt with all that it was sent and typed, and is idle in some window's loop.
    void Settle();
    /// Runs `action` on the test's thread.
    void OnTestThread(const std::function<void()>& action);

    /// Presses a key while others are held down, such as VK_CONTROL.
    void Press(WORD key, std::initializer_list<WORD> held = {});
    void Type(std::u16string_view text);
    /// Clicks there on the screen, `count` times in a row.
    void ClickAt(POINT place, int count = 1, std::initializer_list<WORD> held = {});
    /// Clicks with the right button, at once: what it opens may keep the messages to itself.
    void RightClickAt(POINT place);
    void Drag(POINT from, POINT to);

    /// A message to a window of the test's thread; ends the work if it isn't answered in time.
    LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    std::u16string TextOf(HWND window);
    /// The window that has the keyboard in the test's thread.
    HWND Focus() const;
    /// The window of that class that the test's thread shows, such as a menu or a tip; null for none.
    HWND ShownWindow(std::u16string_view className) const;
    /// Dialogs and message boxes now open in the test's thread, the topmost first.
    int CountDialogs() const;
    /// The topmost of them that can be used now; null for none.
    HWND TopDialog() const;

    /// Ends the work as failed.
    [[noreturn]] void GiveUp(const std::string& why);

private:
    void BringForward();
    void Run();
    void CloseEverything();
    HWND FindDialog(const std::u16string& title) const;
    HWND WaitForForeground(const std::u16string& title);

    std::function<void(CUser&)> work;
    const DWORD testThread;
    HWND bell;  // of the test's thread; rings when that has nothing else to do
    HANDLE rung;
    HANDLE finished;
    POINT lastClick = {-100, -100};
    std::atomic<bool> isOver{false};
    std::thread thread;  // at the end, since it uses what stands above
};

/// A dialog that is open, and its controls by their numbers.
class CDrivenWindow {
public:
    CDrivenWindow(CUser& driver, HWND driven) : user(driver), window(driven) {}

    HWND Get() const { return window; }
    /// The control of that number, also of a page inside; ends the work if there is none.
    HWND Item(int control) const;
    std::u16string Title() const { return user.TextOf(window); }
    std::u16string Text(int control) const { return user.TextOf(Item(control)); }
    bool IsEnabled(int control) const { return IsWindowEnabled(Item(control)) != FALSE; }
    bool IsVisible(int control) const { return IsWindowVisible(Item(control)) != FALSE; }
    bool IsChecked(int control) const { return user.Send(Item(control), BM_GETCHECK) == BST_CHECKED; }
    bool HasFocus(int control) const;
    /// Whether the window is there no more.
    bool IsGone() const { return !IsWindow(window); }
    void WaitUntilGone() const;

    void Click(int control, int count = 1) const;
    /// Selects all of the field, and types over it.
    void Fill(int control, std::u16string_view text) const;
    /// Gives the control the keyboard, by a click.
    void FocusOn(int control) const;

    // Combo boxes and list boxes.
    std::u16string ListText(int control, int item) const;
    int ListCount(int control) const;
    int ListSelection(int control) const;
    void ClickListItem(int control, int item, int count = 1) const;
    /// Chooses an item of a combo box by the arrow keys.
    void ChooseComboItem(int control, int item) const;

    // List views.
    int RowCount(int control) const;
    std::u16string Cell(int control, int row, int column) const;
    int ColumnCount(int control) const;
    std::u16string ColumnTitle(int control, int column) const;
    int ColumnWidth(int control, int column) const;
    std::vector<int> SelectedRows(int control) const;
    bool IsTicked(int control, int row) const;
    void ClickCell(int control, int row, int column = 0, int count = 1, std::initializer_list<WORD> held = {}) const;
    void ClickTick(int control, int row) const;
    void ClickHeader(int control, int column) const;
    /// Types into the cell's field, which must be open, and ends by that key.
    void TypeIntoCell(int control, std::u16string_view text, WORD endKey = VK_RETURN) const;
    /// Whether the field of a cell is open.
    bool IsEditing(int control) const;

    /// Drags the right lower corner by that many pixels.
    void DragCorner(int right, int down) const;
    /// Keeps the window's picture in the folder "pictures" of the build folder.
    void TakePicture(const std::string& name) const;

private:
    RECT CellPlace(int control, int row, int column) const;

    CUser& user;
    HWND window;
};

/// Writes a part of the screen to "pictures/<name>-<dots per inch>.bmp".
bool SavePicture(const std::string& name, const RECT& place);

/// From here on a test that fails leaves a picture of the screen, "failure-<suite>.<test>" with a dash for each slash.
void TakePicturesOfFailures();

/// Dots per inch of the screen as this process sees it.
int ScreenDpi();

}  // namespace reka::test
