// SPDX-License-Identifier: MIT
// The rich edit control that an expression is written in, of the library riched20.dll: it counts a text's UTF-16 units,
// whatever the code page, and a line end as one, a carriage return, which is how it hands out its text.
//
// The control's own list of what can be undone would be filled by colouring, so it has none: the keys to undo are
// passed on. What the control reports of changes that others make in it differs from system to system: so it reports
// nothing of ours, and the field does, once for each.

#pragma once

#include <string>
#include <vector>

#include <windows.h>

#include "editor/TextHistory.h"
#include "platform/Holders.h"

struct ITextDocument;

namespace reka {

/// What the field reports to its dialog besides its change, as a notification of WM_COMMAND.
enum class FieldRequest { Undo = 0x1000, Redo = 0x1001, Paste = 0x1002, Menu = 0x1003, Offer = 0x1004 };

/// Makes the control known to the system, where it isn't yet. What could not be loaded at one time may load at another,
/// so this is done when the module starts, and again before a dialog with the control opens.
void LoadExpressionControl() noexcept;

class CExpressionField {
public:
    CExpressionField();
    ~CExpressionField();
    CExpressionField(const CExpressionField&) = delete;
    CExpressionField& operator=(const CExpressionField&) = delete;

    /// Takes the control into use, which reports changes of text and selection from now on. `shownHistory` tells
    /// whether there is anything to undo; it outlives the control.
    void Attach(HWND richEdit, const CTextHistory& shownHistory);

    /// As the control has it, with a carriage return for each line end. Ranges count its characters.
    std::u16string Text() const;
    /// Reported by nobody.
    void SetText(const std::u16string& text);
    TextRange Selection() const;
    void Select(TextRange range) const;

    /// The commands that the control itself has: WM_CUT, WM_COPY, WM_CLEAR.
    void Do(UINT command) const { SendMessageW(field, command, 0, 0); }
    /// Where the menu is to be shown that was asked for: by the mouse there, and by a key beneath the caret. On the
    /// screen. What is asked for from now on is another menu.
    POINT TakeMenuPlace();
    POINT PlaceOfCaret() const;

    /// Puts the text in place of what is selected, which is reported as a change.
    void Insert(const std::u16string& text) const;
    void Replace(const TextReplacement& replacement) const;

    /// Formats these parts. Neither the selection nor what is scrolled to moves. False if the field can't.
    bool Format(const std::vector<ExpressionRun>& runs);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool Handle(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    void AskForMenu(LPARAM place);
    bool TakeHalf(char16_t unit);
    void ReportChange() const;
    bool FormatAsSelected(const ExpressionRun& run) const;
    bool FormatRun(const ExpressionRun& run) const;

    HWND field = nullptr;
    WNDPROC ownProcedure = nullptr;  // that of the control's class
    const CTextHistory* history = nullptr;
    POINT menuPlace = {};
    bool isMenuAsked = false;  // with a place, and not shown as yet
    char16_t firstHalf = 0;    // of a character of two units, which is typed as two
    CComRef<ITextDocument> document;
};

/// The text on the clipboard; empty if there is none.
std::u16string ClipboardText(HWND window);

}  // namespace reka
