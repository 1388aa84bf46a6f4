// SPDX-License-Identifier: MIT
// The expression editor: what a person types and sees.

#include <chrono>
#include <cstdio>

#include "FormulaFixture.h"
#include "expression/parse/ParseExpression.h"
#include "support/AllocationCounter.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

TEST_F(FormulaDialog, SaysNothingOfAnEmptyField) {
    expression = u"foo";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_TRUE(dialog.HasFocus(IDC_EXPRESSION_TEXT));
        EXPECT_NE(dialog.Text(IDC_EXPRESSION_STATUS), u"");
        for (int i = 0; i < 3; ++i) u.Press(VK_BACK);
        EXPECT_EQ(Text(u, dialog), u"");
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), u"");
        EXPECT_EQ(Painted(u, dialog), "");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"");
}

/// As where it couldn't be loaded when the module started.
TEST_F(FormulaDialog, LoadsItsControlIfNeedBe) {
    for (const wchar_t* const library : {L"riched32.dll", L"riched20.dll"}) {
        for (int i = 0; i < 100000 && GetModuleHandleW(library); ++i) FreeLibrary(GetModuleHandleW(library));
        ASSERT_FALSE(GetModuleHandleW(library));
    }
    expression = u"T";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_EQ(Text(u, dialog), u"T");
        dialog.Click(IDOK);
    }));
}

TEST_F(FormulaDialog, TakesAValidExpression) {
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.Type(u"2*C(Water)*\"n-butane\"");
        for (int i = 0; i < 11; ++i) u.Press(VK_BACK);
        EXPECT_EQ(Text(u, dialog), u"2*C(Water)");
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), u"");
        EXPECT_EQ(Painted(u, dialog), "...B.....B");  // the caret is right behind a closing bracket
        u.Press(VK_RETURN);
    }));
    EXPECT_EQ(expression, u"2*C(Water)");
}

TEST_F(FormulaDialog, ShowsABracketWithoutPartnerBold) {
    expression = u"((T)";
    EXPECT_FALSE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.Press(VK_HOME);
        EXPECT_EQ(Painted(u, dialog).front(), 'B');
        EXPECT_EQ(Painted(u, dialog).find('B', 1), std::string::npos);
        u.Press(VK_RIGHT);
        EXPECT_EQ(Painted(u, dialog).substr(0, 4), ".B.B");
        u.Press(VK_ESCAPE);
    }));
    EXPECT_EQ(expression, u"((T)");
}

TEST_F(FormulaDialog, ShowsNothingBoldWithSeveralSelected) {
    expression = u"(T)*2";
    EXPECT_FALSE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.Press(VK_HOME);
        EXPECT_EQ(Painted(u, dialog), "B.B..");
        u.Press(VK_RIGHT, {VK_SHIFT});
        EXPECT_EQ(Painted(u, dialog), "B.B..");
        u.Press(VK_RIGHT, {VK_SHIFT});
        EXPECT_EQ(Selection(u, dialog), (TextRange{0, 2}));
        EXPECT_EQ(Painted(u, dialog), ".....");
        u.Press(VK_ESCAPE);
    }));
}

/// Colouring between the keys leaves the moving end of the selection where it is.
TEST_F(FormulaDialog, ExtendsASelectionBackwards) {
    expression = u"2*(T+1)";
    EXPECT_FALSE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        for (std::int32_t first = 6; first >= 2; --first) {
            u.Press(VK_LEFT, {VK_SHIFT});
            EXPECT_EQ(Selection(u, dialog), (TextRange{first, 7}));
        }
        u.Press(VK_RIGHT, {VK_SHIFT});
        EXPECT_EQ(Selection(u, dialog), (TextRange{3, 7}));
        u.Press(VK_ESCAPE);
    }));
}

TEST_F(FormulaDialog, ShowsTheMessageAndTheRestInRedAndTakesItAllTheSame) {
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.Type(u"2*C(Ether)+1");
        std::u16string message;
        std::int32_t position = -1;
        EXPECT_EQ(ParseExpression(*definition, u"2*C(Ether)+1", message, &position), nullptr);
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), message);
        ASSERT_GT(position, 0);
        const auto good = static_cast<std::size_t>(position);
        EXPECT_EQ(Painted(u, dialog), std::string(good, '.') + std::string(12 - good, 'r'));
        dialog.TakePicture("ExpressionWithAnError");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"2*C(Ether)+1");
}

/// What is typed over a selection takes the look of what was there, which may not be its own.
TEST_F(FormulaDialog, ShowsWhatIsTypedOverASelectionAsItIs) {
    expression = u"2*(T+1)*P";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        Select(u, dialog, {2, 3});
        EXPECT_EQ(Painted(u, dialog), "..B...B..");
        u.Type(u"P");
        EXPECT_EQ(Text(u, dialog), u"2*PT+1)*P");
        EXPECT_EQ(Painted(u, dialog).substr(0, 3), "...");
        EXPECT_EQ(Painted(u, dialog).back(), 'r');
        u.Press('Z', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"2*(T+1)*P");
        EXPECT_EQ(Painted(u, dialog), "..B...B..");
        Select(u, dialog, {0, 9});
        u.Type(u"T");
        EXPECT_EQ(Painted(u, dialog), ".");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"T");
}

TEST_F(FormulaDialog, TakesCharactersOfEveryScript) {
    expression = u"C(\"\u03B1-pinene\")";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), u"");
        EXPECT_EQ(Text(u, dialog), u"C(\"\u03B1-pinene\")");
        u.Type(u"*C(\"\u03B1-pinene\")");
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), u"");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"C(\"\u03B1-pinene\")*C(\"\u03B1-pinene\")");
}

TEST_F(FormulaDialog, TakesTypingBackAndNeverColours) {
    expression = u"1+";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.Type(u"(T");
        u.Type(u" foo");
        const std::string painted = Painted(u, dialog);
        u.Press('Z', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"1+(T ");
        u.Press('Z', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"1+");
        EXPECT_EQ(Selection(u, dialog), (TextRange{2, 2}));
        u.Press('Z', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"1+");  // what was there at first
        u.Press('Y', {VK_CONTROL});
        u.Press('Z', {VK_CONTROL, VK_SHIFT});
        EXPECT_EQ(Text(u, dialog), u"1+(T foo");
        EXPECT_EQ(Painted(u, dialog), painted);
        u.Press(VK_BACK, {VK_MENU});
        EXPECT_EQ(Text(u, dialog), u"1+(T ");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"1+(T ");
}

TEST_F(FormulaDialog, PastesPlainTextAndTakesItBack) {
    expression = u"2*T";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.OnTestThread([] { PutOnClipboard(u"*C(\"\u03B1-pinene\")"); });
        u.Press('V', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"2*T*C(\"\u03B1-pinene\")");
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), u"");
        u.Press('Z', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"2*T");
        u.Press('A', {VK_CONTROL});
        u.Press(VK_INSERT, {VK_SHIFT});
        EXPECT_EQ(Text(u, dialog), u"*C(\"\u03B1-pinene\")");
        u.Press('Z', {VK_CONTROL});
        u.Press('A', {VK_CONTROL});
        u.Press('C', {VK_CONTROL});
        u.Press(VK_END);
        u.Press('V', {VK_CONTROL});
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"2*T2*T");
}

/// A line end is two characters of the text, and one of the field.
TEST_F(FormulaDialog, CountsLineEndsAsTheTextHasThem) {
    expression = u"1+\r\n(T)\r\n";
    const std::u16string before = expression;
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_EQ(Text(u, dialog), before);
        std::u16string message;
        std::int32_t position = -1;
        EXPECT_EQ(ParseExpression(*definition, before, message, &position), nullptr);
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), message);
        EXPECT_EQ(position, 3);  // no line end is part of an expression
        // The line ends themselves have no look.
        EXPECT_EQ(Painted(u, dialog, 0, 2), "..");
        EXPECT_EQ(Painted(u, dialog, 3, 3), "rrr");
        u.Press(VK_UP);
        u.Press(VK_END);
        EXPECT_EQ(Selection(u, dialog), (TextRange{6, 6}));
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, before);
}

TEST_F(FormulaDialog, LeavesTheExpressionOnCancel) {
    expression = u"T";
    EXPECT_FALSE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.Type(u"+1");
        dialog.Click(IDCANCEL);
    }));
    EXPECT_EQ(expression, u"T");
}

TEST_F(FormulaDialog, IsWorkedByTheKeyboardAlone) {
    expression = u"T";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.Press(VK_TAB);
        EXPECT_TRUE(dialog.HasFocus(IDOK));
        u.Press(VK_TAB, {VK_SHIFT});
        EXPECT_TRUE(dialog.HasFocus(IDC_EXPRESSION_TEXT));
        u.Press(VK_TAB, {VK_SHIFT});
        EXPECT_TRUE(dialog.HasFocus(IDC_EXPRESSION_UNIT));
        u.Press(VK_RETURN);
    }));
    EXPECT_EQ(expression, u"T");
}

/// A text of 64 KiB: nothing jumps while brackets far apart are coloured, and all comes back. How long a key takes is
/// told, and asserted by nobody.
TEST_F(FormulaDialog, WorksOnALongText) {
    expression = u"(1";
    while (expression.size() < 65536) expression += u" + (C(Water)*2)";
    expression += u")";
    const std::u16string before = expression;
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        const HWND field = dialog.Item(IDC_EXPRESSION_TEXT);
        const auto firstLine = [&] { return u.Send(field, EM_GETFIRSTVISIBLELINE); };
        EXPECT_EQ(Text(u, dialog), before);
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), u"");
        u.Press(VK_HOME, {VK_CONTROL});
        EXPECT_EQ(firstLine(), 0);  // its partner at the other end is bold now
        u.Press(VK_END, {VK_CONTROL});
        const LRESULT last = firstLine();
        EXPECT_GT(last, 100);
        u.Press(VK_LEFT);
        EXPECT_EQ(firstLine(), last);
        // In the middle, with what is scrolled to a few lines off the caret.
        const auto middle = static_cast<std::int32_t>(before.find(u"*2)", before.size() / 2)) + 1;
        Select(u, dialog, {middle, middle});
        u.Send(field, EM_SCROLLCARET);
        const LRESULT line = firstLine();
        constexpr int keys = 20;
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < keys; ++i) u.Type(u"2");
        const auto typed = std::chrono::steady_clock::now();
        EXPECT_EQ(firstLine(), line);
        EXPECT_EQ(Selection(u, dialog), (TextRange{middle + keys, middle + keys}));
        for (int i = 0; i < keys; ++i) u.Press(VK_LEFT);
        const auto moved = std::chrono::steady_clock::now();
        EXPECT_EQ(firstLine(), line);
        const auto tell = [](const char* what, std::chrono::steady_clock::duration time) {
            const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(time).count();
            RecordProperty(what, static_cast<int>(microseconds));
            std::printf("%s: %d\n", what, static_cast<int>(microseconds));
        };
        tell("MicrosecondsPerCharacter", (typed - start) / keys);
        tell("MicrosecondsPerMove", (moved - typed) / keys);
        u.Press('Z', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), before);
        // An error in the middle, which makes all behind it red and goes again.
        const auto faulty = std::chrono::steady_clock::now();
        u.Type(u"?");
        tell("MicrosecondsOfAnError", std::chrono::steady_clock::now() - faulty);
        EXPECT_EQ(firstLine(), line);
        EXPECT_EQ(Selection(u, dialog), (TextRange{middle + 1, middle + 1}));
        EXPECT_NE(dialog.Text(IDC_EXPRESSION_STATUS), u"");
        const auto at = static_cast<std::size_t>(middle);
        EXPECT_EQ(Painted(u, dialog, at, 20).back(), 'r');
        EXPECT_EQ(Painted(u, dialog, before.size() - 20, 20), std::string(20, 'r'));
        u.Press(VK_BACK);
        EXPECT_EQ(Text(u, dialog), before);
        EXPECT_EQ(Painted(u, dialog, at, 20), std::string(20, '.'));
        EXPECT_EQ(Painted(u, dialog, before.size() - 20, 20), std::string(20, '.'));
        EXPECT_EQ(firstLine(), line);
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, before);
}

TEST_F(FormulaDialog, GoesOnAfterAWantOfMemory) {
    expression = u"T";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.OnTestThread([] { FailAllocation(1); });
        u.Type(u"+");
        u.Answer({u"Error:", u"out of memory", MB_OK | MB_ICONERROR}, IDOK);
        u.Type(u"1*(P)");
        EXPECT_EQ(Text(u, dialog), u"T+1*(P)");
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), u"");
        EXPECT_EQ(Painted(u, dialog), "....B.B");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"T+1*(P)");
}

}  // namespace
}  // namespace reka::test
