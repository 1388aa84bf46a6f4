// SPDX-License-Identifier: MIT
// The base of all dialogs: it leads from the system's messages to virtual functions, and has the operations on controls
// that the dialogs share. All texts are of any length.

#pragma once

#include <array>
#include <span>
#include <string>

#include <windows.h>

#include "editor/DialogLayout.h"
#include "editor/win/ControlsContext.h"
#include "editor/win/DialogScale.h"
#include "editor/win/ListView.h"
#include "editor/win/WindowText.h"

namespace reka {

/// A dialog on a template among the module's resources: a modal one, or a page that is a child of another window.
///
/// No exception leaves it. One that a handler throws, for want of memory, ends in a box that tells the user; the dialog
/// stays open. An object serves one window at a time, on the thread that shows it.
///
/// Where a handler calls the simulator, or shows what belongs to no dialog, messages may come in meanwhile. A dialog
/// takes none of its buttons then, nor those of its pages, until the handler has returned; what is typed and chosen it
/// takes, so that it shows what is recorded. After its end it takes nothing.
class CDialog {
public:
    CDialog(const CDialog&) = delete;
    CDialog& operator=(const CDialog&) = delete;
    virtual ~CDialog();

    /// Null while the dialog isn't open.
    HWND Window() const { return window; }

    /// Makes a page of `parent` that is hidden until it is shown. False, with the reason as the thread's last error,
    /// if the system refuses. It ends with its parent, or with this object, which the parent outlives.
    bool CreateChild(CDialog& parent);

    /// The user, or the dialog itself, has ended it, or the system is about to: nothing can be asked above it any more.
    bool HasEnded() const { return hasEnded; }

protected:
    /// `dialogLayout`, a table of DialogLayouts.h, tells of a dialog that can be sized where its controls stand.
    explicit CDialog(int dialogTemplate, std::span<const LayoutRow> dialogLayout = {})
        : templateId(dialogTemplate), layout(dialogLayout) {}

    /// Shows the dialog until it has ended, with `owner` disabled meanwhile; null for no owner. What `End` was called
    /// with; `notShown` if the system has refused the dialog, or ended it with the program.
    static constexpr INT_PTR notShown = -1;
    INT_PTR RunModal(HWND owner);

    /// Ends the modal dialog with a code above 0.
    void End(int code);

    /// The controls are there; nothing of them is reported before this has returned.
    virtual void OnInit() {}
    /// Something was clicked, chosen or typed in a control, or OK or Cancel was asked for by a key. Here, these two end
    /// the dialog, and all else is left alone.
    virtual void OnCommand(int control, int notification);
    /// What a list view or another of the newer controls reports. The result is what the control is told.
    virtual LRESULT OnNotify(NMHDR& header);
    /// A key was pressed in the dialog or in one of its pages, as long as a `CKeyHook` lives; nobody has looked at it
    /// as yet. True: nobody else gets it.
    virtual bool OnKey(WPARAM /*key*/) { return false; }
    /// The controls of a dialog that can be sized have their places.
    virtual void OnLaidOut() {}
    /// The dialog is on a monitor of another scale: its controls, fonts and columns have that size by now, and had that
    /// of so many dots per inch before.
    virtual void OnScaled(int /*oldDpi*/) {}
    /// The frame's button that closes. Here, the same as Cancel.
    virtual void OnClose() { OnCommand(IDCANCEL, BN_CLICKED); }

    /// From now on the window can't be dragged to a size below the present one, which is cut to the work area first.
    void KeepPresentSizeAsSmallest();
    /// Makes the window that opens so much larger, around its middle.
    void Enlarge(const ControlSize& by);
    /// The part of the screen that the dialog opens in.
    virtual RECT WorkArea() const;
    /// Sets the large and the small icon of the frame.
    void SetIcon(int iconResource);
    /// One of the module's icons, in the dialog's scale; its owner destroys it. The metrics are the system's numbers of
    /// the size.
    HICON LoadModuleIcon(int resource, int widthMetric, int heightMetric) const;

    // The controls, by their numbers.
    HWND Item(int control) const { return GetDlgItem(window, control); }
    std::u16string Text(int control) const { return WindowText(Item(control)); }
    void SetText(int control, const std::u16string& text);
    /// Replaces the text of an edit field by one step that the field's own Ctrl+Z takes back. Shows its beginning.
    void ReplaceText(int control, const std::u16string& text);
    bool IsChecked(int control) const { return IsDlgButtonChecked(window, control) == BST_CHECKED; }
    void SetChecked(int control, bool isChecked);
    /// A control that loses the right to the keyboard's focus passes it on.
    void Enable(int control, bool isEnabled);
    void Show(int control, bool isShown) { ShowWindow(Item(control), isShown ? SW_SHOWNA : SW_HIDE); }
    /// Gives the control the keyboard's focus; from `OnInit`, that is where the dialog begins.
    void FocusOn(int control) { FocusOn(Item(control)); }
    void FocusOn(HWND control);  // also one of a page; null for none
    /// Replaces the items of a list box, which then scrolls to the end of the longest one.
    void FillListBox(int control, std::span<const std::u16string> items, int selection) const;
    /// Whether the click that is being dealt with is on the selected item of a list box, rather than below the items.
    bool IsSelectedItemClicked(int control) const;
    /// Adds to what a combo box offers. `data` leads from the item back to what it stands for, where the list is
    /// sorted.
    void AddChoice(int control, const char16_t* text, int data = 0) const;
    /// Selects the choice with those data; without one, the item of the number `otherwise`, -1 for none.
    void SelectChoice(int control, int data, int otherwise = -1) const;
    int TextWidth(int control, const std::u16string& text) const;
    ControlPlace PlaceOf(int control) const;  // in the client area
    ControlSize ClientSize() const;
    /// Gives the controls the places of the layout; nobody else moves them.
    void LayOut();
    /// The text of a control that grows in the layout takes that width now, in pixels.
    void MakeRoomForText(int control, int width);

    /// Dots per inch of the controls and their font.
    int Dpi() const { return scale.Dpi(); }
    /// So many pixels of a screen of 96 dpi.
    int Scale(int pixels) const { return ScalePixels(pixels, Dpi()); }

    /// As long as it lives, what controls report doesn't count: the dialog itself changes them.
    class CSilence {
    public:
        explicit CSilence(CDialog& silenced) : dialog(silenced) { ++dialog.silences; }
        ~CSilence() { --dialog.silences; }
        CSilence(const CSilence&) = delete;
        CSilence& operator=(const CSilence&) = delete;

    private:
        CDialog& dialog;
    };

    /// As long as it lives, the keys pressed in dialogs of this thread come to their `OnKey` first: the loop of a modal
    /// dialog, which is the system's, would deal with Tab itself and give others to the control that has the focus.
    class CKeyHook {
    public:
        CKeyHook() : hook(SetWindowsHookExW(WH_MSGFILTER, FilterKey, nullptr, GetCurrentThreadId())) {}
        ~CKeyHook() {
            if (hook) UnhookWindowsHookEx(hook);
        }
        CKeyHook(const CKeyHook&) = delete;
        CKeyHook& operator=(const CKeyHook&) = delete;

    private:
        HHOOK hook;  // null if the system has refused it: the keys mean what they mean without it
    };

private:
    static LRESULT CALLBACK FilterKey(int code, WPARAM wParam, LPARAM lParam) noexcept;
    bool TakeKey(WPARAM key) noexcept;
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);
    bool Initialise();
    void CentreOverOwner();
    CDialog& Root();
    bool IsSilent();
    void NoteHiding(UINT flags);
    void Command(WPARAM wParam, LPARAM lParam);
    void Close();
    void Notify(LPARAM lParam);
    void Size(WPARAM kind);
    void NoteDesign();
    void ScaleTo(int dpi);
    void MoveToMonitor(int dpi, const RECT& place);
    void FitToMonitor();
    void Place(int control, const ControlPlace& place);
    void DestroyIcons();
    void FitScrolling(int listBox, std::span<const std::u16string> items) const;

    int templateId;
    std::span<const LayoutRow> layout;
    ControlSize designedClient;
    std::array<DesignedControl, mostLayoutRows> designed;  // one for each row of the layout
    HWND window = nullptr;
    CDialogScale scale;
    int iconNumber = 0;
    HICON largeIcon = nullptr;
    HICON smallIcon = nullptr;
    SIZE smallest = {};                                 // of the window with its frame
    CDialog* parentDialog = nullptr;                    // of a page
    const CControlsContext* controlsContext = nullptr;  // of what runs as a dialog, meanwhile
    int endCode = 0;
    int silences = 0;
    int handlers = 0;  // now running, of the dialog or its pages
    bool hasEnded = false;
    bool isHiding = false;
    bool isInitialised = false;
    bool isFocusSet = false;
};

}  // namespace reka
