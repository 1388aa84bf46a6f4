// SPDX-License-Identifier: MIT
// The expression editor with names in every script, and with line ends: all stands where it belongs, whatever bytes the
// letters have in the system's code page. Run under several of these.

#include "FormulaFixture.h"
#include "expression/parse/ParseExpression.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

/// Greek, Cyrillic, Japanese in full and in half width, and characters of two units, two of which share the first.
const std::u16string names[] = {u"\u03B1-\u03C0\u03B9\u03BD\u03AD\u03BD\u03B9\u03BF", u"\u0432\u043E\u0434\u0430",
                                u"\u6C34\u7D20\u30AC\u30B9", u"\uFF8D\uFF98\uFF73\uFF91",
                                u"\xD842\xDFB7\xD842\xDFB6\xD83E\xDDEA"};

std::u16string Concentration(const std::u16string& name) {
    return u"C(\"" + name + u"\")";
}

class FormulaScripts : public FormulaDialog {
protected:
    FormulaScripts() {
        definition =
            MakePackage({names[0].c_str(), names[1].c_str(), names[2].c_str(), names[3].c_str(), names[4].c_str()});
    }
    /// Where reading the text stops, with the message that the dialog must show.
    std::size_t ErrorIn(const std::u16string& text, const CDrivenWindow& dialog) {
        std::u16string message;
        std::int32_t position = -1;
        EXPECT_EQ(ParseExpression(*definition, text, message, &position), nullptr);
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), message);
        return static_cast<std::size_t>(position);
    }
    /// Does the work on each name in turn; `whole` is the expression before, and has to be what OK hands on.
    void ForEachName(const std::function<std::u16string(const std::u16string&)>& make,
                     const std::function<void(CUser&, const CDrivenWindow&, const std::u16string&)>& work) {
        for (const std::u16string& name : names) {
            SCOPED_TRACE(Utf8FromUtf16(name));
            const std::u16string whole = make(name);
            expression = whole;
            EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
                EXPECT_EQ(Text(u, dialog), whole);
                work(u, dialog, whole);
                dialog.Click(IDOK);
            }));
            EXPECT_EQ(expression, whole);
        }
    }
};

TEST_F(FormulaScripts, ShowsBracketsAndErrorsBehindEveryLetter) {
    ForEachName([](const std::u16string& name) { return u"(" + Concentration(name) + u"*2)"; },
                [this](CUser& u, const CDrivenWindow& dialog, const std::u16string& whole) {
                    const auto length = static_cast<std::int32_t>(whole.size());
                    EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), u"");
                    EXPECT_EQ(Selection(u, dialog), (TextRange{length, length}));
                    const std::string painted = "B" + std::string(whole.size() - 2, '.') + "B";
                    EXPECT_EQ(Painted(u, dialog), painted);
                    u.Type(u"+?T");
                    EXPECT_EQ(Text(u, dialog), whole + u"+?T");
                    const std::size_t good = ErrorIn(whole + u"+?T", dialog);
                    EXPECT_EQ(Painted(u, dialog), std::string(good, '.') + std::string(whole.size() + 3 - good, 'r'));
                    u.Press('Z', {VK_CONTROL});
                    EXPECT_EQ(Text(u, dialog), whole);
                    EXPECT_EQ(Painted(u, dialog), painted);
                });
}

TEST_F(FormulaScripts, TypesEveryLetterAndTakesItBack) {
    for (const std::u16string& name : names) {
        SCOPED_TRACE(Utf8FromUtf16(name));
        const std::u16string whole = Concentration(name);
        const auto length = static_cast<std::int32_t>(whole.size());
        expression.clear();
        EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
            u.Type(whole);
            EXPECT_EQ(Text(u, dialog), whole);
            EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), u"");
            EXPECT_EQ(Painted(u, dialog), ".B" + std::string(whole.size() - 3, '.') + "B");
            u.Press('Z', {VK_CONTROL});
            EXPECT_EQ(Text(u, dialog), u"");
            u.Press('Y', {VK_CONTROL});
            EXPECT_EQ(Text(u, dialog), whole);
            EXPECT_EQ(Selection(u, dialog), (TextRange{length, length}));
            dialog.Click(IDOK);
        }));
        EXPECT_EQ(expression, whole);
    }
}

TEST_F(FormulaScripts, ReplacesBehindEveryLetter) {
    ForEachName([](const std::u16string& name) { return Concentration(name) + u"*(T)"; },
                [this](CUser& u, const CDrivenWindow& dialog, const std::u16string& whole) {
                    const auto letter = static_cast<std::int32_t>(whole.size()) - 2;
                    const std::string painted = Painted(u, dialog);
                    Select(u, dialog, {letter, letter + 1});
                    u.Type(u"P");
                    EXPECT_EQ(Text(u, dialog), whole.substr(0, whole.size() - 2) + u"P)");
                    EXPECT_EQ(Painted(u, dialog), painted);
                    u.Press('Z', {VK_CONTROL});
                    EXPECT_EQ(Selection(u, dialog), (TextRange{letter + 1, letter + 1}));
                    u.OnTestThread([] { PutOnClipboard(names[4]); });
                    u.Press('V', {VK_CONTROL});
                    EXPECT_EQ(Text(u, dialog), whole.substr(0, whole.size() - 1) + names[4] + u")");
                    ErrorIn(Text(u, dialog), dialog);
                    u.Press('Z', {VK_CONTROL});
                    EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), u"");
                    EXPECT_EQ(Painted(u, dialog), painted);
                });
}

/// A line end is one character in the field and two in the text.
TEST_F(FormulaScripts, ReadsLinesBehindEveryLetter) {
    ForEachName([](const std::u16string& name) { return Concentration(name) + u"\r\n+(T\r\n)"; },
                [this](CUser& u, const CDrivenWindow& dialog, const std::u16string& whole) {
                    const std::size_t firstLine = whole.find(u'\r');
                    EXPECT_GE(ErrorIn(whole, dialog), firstLine);
                    EXPECT_LE(ErrorIn(whole, dialog), firstLine + 1);
                    EXPECT_EQ(Painted(u, dialog, 0, firstLine), std::string(firstLine, '.'));
                    EXPECT_EQ(Painted(u, dialog, firstLine + 1, 3), "rrr");
                    EXPECT_EQ(Painted(u, dialog, whole.size() - 3, 1), "r");  // the last bracket
                    u.Type(u"1");
                    EXPECT_EQ(Text(u, dialog), whole + u"1");
                    u.Press('Z', {VK_CONTROL});
                    EXPECT_EQ(Text(u, dialog), whole);
                    const auto end = static_cast<std::int32_t>(whole.size()) - 2;  // two line ends in front
                    EXPECT_EQ(Selection(u, dialog), (TextRange{end, end}));
                });
}

TEST_F(FormulaScripts, HandsOnWhatWasPastedWithItsLines) {
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.OnTestThread([] { PutOnClipboard(u"T\r\n+\xD842\xDFB7\r\n"); });
        u.Press('V', {VK_CONTROL});
        u.Type(u"P");
        EXPECT_EQ(Text(u, dialog), u"T\r\n+\xD842\xDFB7\r\nP");
        ErrorIn(u"T\r\n+\xD842\xDFB7\r\nP", dialog);
        u.Press(VK_HOME, {VK_CONTROL});
        u.Press('V', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"T\r\n+\xD842\xDFB7\r\nT\r\n+\xD842\xDFB7\r\nP");
        u.Press('Z', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"T\r\n+\xD842\xDFB7\r\nP");
        u.Press('Y', {VK_CONTROL});
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"T\r\n+\xD842\xDFB7\r\nT\r\n+\xD842\xDFB7\r\nP");
}

/// Of all that the control itself can select, the end of its last line is no part of the text.
TEST_F(FormulaScripts, ReplacesAll) {
    ForEachName([](const std::u16string& name) { return Concentration(name); },
                [](CUser& u, const CDrivenWindow& dialog, const std::u16string& whole) {
                    u.Press('A', {VK_CONTROL});
                    u.Type(u"(");
                    EXPECT_EQ(Text(u, dialog), u"(");
                    u.Press('A', {VK_CONTROL});
                    EXPECT_EQ(Painted(u, dialog), "B");  // one character is selected
                    u.Press('Z', {VK_CONTROL});
                    EXPECT_EQ(Text(u, dialog), whole);
                });
}

}  // namespace
}  // namespace reka::test
