// SPDX-License-Identifier: MIT
// The expression editor as the tests drive and read it.

#pragma once

#include <functional>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <windows.h>

#include <richedit.h>
#include <richole.h>
#include <tom.h>

#include "Driver.h"
#include "editor/win/CEditFormulaDlg.h"
#include "editor/win/resource.h"
#include "support/Builders.h"

namespace reka::test {

constexpr GUID textDocumentId = {0x8CC497C0, 0xA1DF, 0x11CE, {0x80, 0x98, 0x00, 0xAA, 0x00, 0x47, 0xBE, 0x5D}};

/// Puts a text on the clipboard as plain text.
inline void PutOnClipboard(const std::u16string& text) {
    const std::size_t size = (text.size() + 1) * sizeof(char16_t);
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
    memcpy(GlobalLock(block), text.c_str(), size);
    GlobalUnlock(block);
    OpenClipboard(nullptr);
    EmptyClipboard();
    SetClipboardData(CF_UNICODETEXT, block);
    CloseClipboard();
}

/// How the field shows a character: "." black, "B" bold, "r" red, "R" red and bold, "?" something else.
inline char LookOf(ITextDocument& document, long position) {
    CComRef<ITextRange> range;
    CComRef<ITextFont> font;
    document.Range(position, position + 1, range.Receive());
    range->GetFont(font.Receive());
    long isBold = 0;
    long colour = 0;
    font->GetBold(&isBold);
    font->GetForeColor(&colour);
    const bool isBlack = colour == tomAutoColor || colour == static_cast<long>(GetSysColor(COLOR_WINDOWTEXT));
    if (isBold == tomTrue) return isBlack ? 'B' : colour == 255 ? 'R' : '?';
    return isBold == tomFalse ? (isBlack ? '.' : colour == 255 ? 'r' : '?') : '?';
}

/// The characters of the field, as `LookOf` tells them.
inline std::string PaintedIn(CUser& user, HWND field, std::size_t first, std::size_t length) {
    std::string painted;
    user.OnTestThread([&] {
        CComRef<IUnknown> model;
        SendMessageW(field, EM_GETOLEINTERFACE, 0, reinterpret_cast<LPARAM>(model.Receive()));
        CComRef<ITextDocument> document;
        model->QueryInterface(textDocumentId, reinterpret_cast<void**>(document.Receive()));
        for (std::size_t i = first; i < first + length; ++i) painted += LookOf(*document, static_cast<long>(i));
    });
    return painted;
}

class FormulaDialog : public testing::Test {
protected:
    using Work = std::function<void(CUser&, const CDrivenWindow&)>;

    bool Edit(const Work& work) {
        CUser user([&](CUser& u) {
            const CDrivenWindow dialog = u.WaitFor(u"Edit formula:");
            work(u, dialog);
            dialog.WaitUntilGone();
        });
        return CEditFormulaDlg(*definition, u"Rate", u"mol/s", expression).Run(nullptr);
    }

    /// Each character of the field, as `LookOf` tells it.
    static std::string Painted(CUser& user, const CDrivenWindow& dialog) {
        return Painted(user, dialog, 0, Text(user, dialog).size());
    }
    static std::string Painted(CUser& user, const CDrivenWindow& dialog, std::size_t first, std::size_t length) {
        return PaintedIn(user, dialog.Item(IDC_EXPRESSION_TEXT), first, length);
    }

    /// The text in Unicode, with two characters for each line end. Positions of the field count one.
    static std::u16string Text(CUser& user, const CDrivenWindow& dialog) {
        std::u16string text(200000, u'\0');
        GETTEXTEX how = {};
        how.cb = static_cast<DWORD>(text.size() * sizeof(char16_t));
        how.flags = GT_USECRLF;
        how.codepage = 1200;
        text.resize(
            static_cast<std::size_t>(user.Send(dialog.Item(IDC_EXPRESSION_TEXT), EM_GETTEXTEX,
                                               reinterpret_cast<WPARAM>(&how), reinterpret_cast<LPARAM>(text.data()))));
        return text;
    }
    static TextRange Selection(CUser& user, const CDrivenWindow& dialog) {
        CHARRANGE range = {};
        user.Send(dialog.Item(IDC_EXPRESSION_TEXT), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
        return {range.cpMin, range.cpMax};
    }
    static void Select(CUser& user, const CDrivenWindow& dialog, TextRange selection) {
        CHARRANGE range = {selection.first, selection.end};
        user.Send(dialog.Item(IDC_EXPRESSION_TEXT), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
        user.Settle();
    }

    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({u"Water", u"n-butane", u"\u03B1-pinene"});
    std::u16string expression;
};

}  // namespace reka::test
