// SPDX-License-Identifier: MIT
// The text of the expression editor: what is put into it comes out as it was, and nothing changes its look.

#include <thread>

#include "FormulaFixture.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

void EmptyTheClipboard() {
    OpenClipboard(nullptr);
    EmptyClipboard();
    CloseClipboard();
}

/// The clipboard holds what is no text.
void PutBytesOnClipboard() {
    const UINT format = RegisterClipboardFormatW(L"Reka test bytes");
    OpenClipboard(nullptr);
    EmptyClipboard();
    SetClipboardData(format, GlobalAlloc(GMEM_MOVEABLE, 16));
    CloseClipboard();
}

TEST_F(FormulaDialog, KeepsTheSelectionWhereThereIsNothingToPaste) {
    expression = u"2*T";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        const auto pasteOverAll = [&] {
            u.Press('A', {VK_CONTROL});
            u.Press('V', {VK_CONTROL});
            EXPECT_EQ(Text(u, dialog), u"2*T");
            u.Press(VK_INSERT, {VK_SHIFT});
            EXPECT_EQ(Text(u, dialog), u"2*T");
            EXPECT_EQ(Selection(u, dialog).first, 0);
        };
        u.OnTestThread(EmptyTheClipboard);
        pasteOverAll();
        u.OnTestThread(PutBytesOnClipboard);
        pasteOverAll();
        u.OnTestThread([] { PutOnClipboard(u""); });
        pasteOverAll();
        u.OnTestThread([] { PutOnClipboard(u"P"); });
        EXPECT_NE(OpenClipboard(dialog.Item(IDOK)), FALSE);  // this thread holds it
        pasteOverAll();
        CloseClipboard();
        u.Press('V', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"P");
        u.Press('Z', {VK_CONTROL});
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"2*T");
}

/// Texts that begin as formatted ones do, by their characters or by the bytes of these.
const std::u16string formattedTexts[] = {
    u"{\\rtf1\\b T}",        u"{urtf1 T}",           u"{\\urtf1 T}", u"{\\rtf", u"{{\\rtf1 T}", u"\u5C7B\u7472\u3166 T",
    u"\u757B\u7472\u3166 T", u"\u5C7B\u7275\u6674 T"};

TEST_F(FormulaDialog, TakesNoTextForAFormattedOne) {
    for (const std::u16string& text : formattedTexts) {
        expression = text;
        EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
            EXPECT_EQ(Text(u, dialog), text);
            const auto end = static_cast<std::int32_t>(text.size());
            EXPECT_EQ(Selection(u, dialog), (TextRange{end, end}));
            u.OnTestThread([&] { PutOnClipboard(text); });
            u.Press('V', {VK_CONTROL});
            EXPECT_EQ(Text(u, dialog), text + text);
            u.Press('Z', {VK_CONTROL});  // in one step
            EXPECT_EQ(Text(u, dialog), text);
            u.Press('A', {VK_CONTROL});
            u.Press(VK_DELETE);
            u.Press('Z', {VK_CONTROL});
            EXPECT_EQ(Text(u, dialog), text);
            u.Press('Y', {VK_CONTROL});
            u.Press('V', {VK_CONTROL});
            dialog.Click(IDOK);
        }));
        EXPECT_EQ(expression, text);
    }
}

TEST_F(FormulaDialog, HasNoKeysThatFormat) {
    expression = u"2*T";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.Press('A', {VK_CONTROL});
        for (const WORD key : {'B', 'D', 'E', 'I', 'J', 'K', 'L', 'M', 'N', 'R', 'U', 'W', '1', '2', '5'}) {
            u.Press(key, {VK_CONTROL});
            EXPECT_EQ(Text(u, dialog), u"2*T") << key;
            EXPECT_EQ(Painted(u, dialog), "...") << key;
        }
        u.Press(VK_HOME);
        for (const WORD key : {WORD{'A'}, WORD{'L'}, WORD{VK_OEM_PLUS}, WORD{VK_OEM_PERIOD}, WORD{VK_OEM_COMMA}}) {
            u.Press(key, {VK_CONTROL, VK_SHIFT});  // capitals, bullets, raised, and sizes
            EXPECT_EQ(Selection(u, dialog), (TextRange{0, 0})) << key;
            EXPECT_EQ(Text(u, dialog), u"2*T") << key;
        }
        u.Press(VK_END, {VK_CONTROL});
        u.Press(VK_LEFT, {VK_CONTROL, VK_SHIFT});
        u.Press('X', {VK_CONTROL});
        EXPECT_LT(Text(u, dialog).size(), 3U);
        u.Press('V', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"2*T");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"2*T");
}

/// The step to undo is told against the text that the field has, whatever there was no memory for.
TEST_F(FormulaDialog, TakesBackWhatThereWasNoMemoryToNote) {
    expression = u"T+1.2345678";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        // The reports of the selection and of the change both fail.
        const auto typeUnnoted = [&](const char16_t* text) {
            u.OnTestThread([] { FailAllocation(1, 2); });
            u.Type(text);
            for (int i = 0; i < 2; ++i) u.Answer({u"Error:", u"out of memory", MB_OK | MB_ICONERROR}, IDOK);
        };
        u.Type(u"*P+1");
        u.Press(VK_HOME);
        typeUnnoted(u"2");
        EXPECT_EQ(Text(u, dialog), u"2T+1.2345678*P+1");
        u.Press('Z', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"T+1.2345678*P+1");
        u.Press('Y', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"2T+1.2345678*P+1");
        u.Press('Z', {VK_CONTROL});
        u.Press('Z', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"T+1.2345678");
        u.Press(VK_HOME);
        typeUnnoted(u"2");
        u.Press('Y', {VK_CONTROL});  // what was typed since has ended it
        EXPECT_EQ(Text(u, dialog), u"2T+1.2345678");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"2T+1.2345678");
}

}  // namespace
}  // namespace reka::test
