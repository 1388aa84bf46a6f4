// SPDX-License-Identifier: MIT
// The editor of an expression: brackets, colours, and the line under the text.

#include "editor/ExpressionEditor.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "expression/parse/ParseExpression.h"
#include "support/Builders.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Lines = std::vector<std::string>;

struct BracketCase {
    const char* name;
    const char16_t* text;
    TextRange selection;
    std::int32_t bracket;
    std::int32_t partner;
};
const BracketCase bracketCases[] = {
    {"CaretBehindClosing", u"(a)", {3, 3}, 2, 0},
    {"CaretInFrontOfOpening", u"(a)", {0, 0}, 0, 2},
    {"CaretBehindOpening", u"(a)", {1, 1}, 0, 2},
    {"CaretInFrontOfClosing", u"(a)", {2, 2}, 2, 0},
    {"CaretBetweenBrackets", u"()()", {2, 2}, 2, 3},  // the one behind the caret is first
    {"OneSelected", u"(a)", {2, 3}, 2, 0},
    {"OneSelectedBehindABracket", u"(a)", {1, 2}, -1, -1},  // a selection doesn't look back
    {"TwoSelected", u"(a)", {0, 2}, -1, -1},
    {"AllSelected", u"(a)", {0, 3}, -1, -1},
    {"NoSelectionAtAll", u"(a)", {-1, -1}, -1, -1},
    {"AllByMinusOne", u"(a)", {0, -1}, 0, 2},
    {"NoBracketThere", u"a+b", {1, 1}, -1, -1},
    {"OpeningWithoutPartner", u"((a)", {0, 0}, 0, -1},
    {"ClosingWithoutPartner", u"(a))", {4, 4}, 3, -1},
    {"Nested", u"(a(b)(c)d)", {0, 0}, 0, 9},
    {"NestedBackwards", u"(a(b)(c)d)", {10, 10}, 9, 0},
    {"Inner", u"(a(b)(c)d)", {8, 8}, 7, 5},
    {"QuotesDoNotCount", u"(\")\"", {0, 0}, 0, 2},
    {"OtherBracketsDoNotCount", u"([)]", {0, 0}, 0, 2},
    {"CaretAtTheEnd", u"a", {1, 1}, -1, -1},
    {"Empty", u"", {0, 0}, -1, -1},
    {"BeyondTheEnd", u"(a)", {7, 7}, -1, -1},
    {"FarBeyond", u"(a)", {2147483647, 2147483647}, -1, -1},
    {"FarBack", u"(a)", {-2147483647 - 1, 2147483647}, -1, -1},
};
class Brackets : public testing::TestWithParam<BracketCase> {};
TEST_P(Brackets, AreFoundWithTheirPartners) {
    const BracketCase& row = GetParam();
    EXPECT_EQ(BracketAt(row.text, row.selection), row.bracket);
    EXPECT_EQ(PartnerOf(row.text, row.bracket), row.partner);
}
INSTANTIATE_TEST_SUITE_P(Table, Brackets, testing::ValuesIn(bracketCases),
                         [](const auto& row) { return std::string(row.param.name); });

/// The colour of each character: "." black, "B" bold, "r" red, "R" red and bold, "?" shown by no run or by two.
std::string Painted(const std::vector<ExpressionRun>& runs, std::size_t length) {
    std::string painted(length, ' ');
    for (const ExpressionRun& run : runs) {
        EXPECT_LT(run.range.first, run.range.end);
        const bool isRed = run.colour == 255;
        EXPECT_TRUE(isRed || run.colour == 0);
        for (std::int32_t i = run.range.first; i < run.range.end; ++i) {
            char& place = painted.at(static_cast<std::size_t>(i));
            place = place != ' ' ? '?' : isRed ? (run.isBold ? 'R' : 'r') : (run.isBold ? 'B' : '.');
        }
    }
    return painted;
}

struct ColourCase {
    const char* name;
    const char16_t* text;
    TextRange selection;
    std::int32_t errorPosition;
    const char* painted;
};
const ColourCase colourCases[] = {
    {"Plain", u"T+1", {0, 0}, -1, "..."},
    {"APair", u"1+(T)*2", {5, 5}, -1, "..B.B.."},
    {"ALoneBracket", u"((T)", {0, 0}, -1, "B..."},
    {"ManySelected", u"(T)", {0, 2}, -1, "..."},
    {"RedToTheEnd", u"T+foo*2", {0, 0}, 2, "..rrrrr"},
    {"AllRed", u"foo", {0, 0}, 0, "rrr"},
    {"NothingLeftToBeRed", u"T+", {0, 0}, 2, ".."},
    {"ErrorBeyondTheEnd", u"T+", {0, 0}, 9, ".."},
    {"RedIsNotBold", u"(T+foo)", {0, 0}, 3, "B..rrrr"},
    {"RedBracketAlone", u"T+foo()", {6, 6}, 2, "..rrrrr"},
    {"BracketAtTheErrorItself", u"(T))", {4, 4}, 3, "...r"},
    {"Neighbours", u"()", {1, 1}, -1, "BB"},
    {"Empty", u"", {0, 0}, -1, ""},
    {"EmptyWithAnError", u"", {0, 0}, 0, ""},
};
class Colours : public testing::TestWithParam<ColourCase> {};
TEST_P(Colours, CoverTheTextOnce) {
    const std::u16string text = GetParam().text;
    const std::vector<ExpressionRun> runs = ColourExpression(text, GetParam().selection, GetParam().errorPosition);
    EXPECT_EQ(Painted(runs, text.size()), GetParam().painted);
    for (std::size_t i = 1; i < runs.size(); ++i) EXPECT_EQ(runs[i].range.first, runs[i - 1].range.end);
}
INSTANTIATE_TEST_SUITE_P(Table, Colours, testing::ValuesIn(colourCases),
                         [](const auto& row) { return std::string(row.param.name); });

struct StopCase {
    const char* name;
    const char16_t* text;
    std::int32_t position;
    const char* told;
};
const StopCase stopCases[] = {
    {"AWord", u"2*ezp(3)", 5, "Reading stopped at column 3, \"ezp\""},
    {"AWordAndItsBlank", u"2*ezp (3)", 6, "Reading stopped at column 3, \"ezp\""},
    {"ASingleCharacter", u"2**3", 3, "Reading stopped at column 3, \"*\""},
    {"ANumber", u"T 1.5e-3 2", 9, "Reading stopped at column 3, \"1.5e-3\""},
    {"ANumberBeforeASum", u"1.5-3*(", 3, "Reading stopped at column 1, \"1.5\""},
    {"AQuotedName", u"X(\"n-butane\")+1", 12, "Reading stopped at column 3, \"n-butane\""},
    {"AQuoteThatIsNotClosed", u"X(\"n-butane)", 12, "Reading stopped at the end, column 3, \"n-butane)"},
    {"NothingIsRed", u"EXP(T", 5, "Reading stopped at the end, column 5, \"T\""},
    {"BlanksAtTheEnd", u"EXP(T  ", 7, "Reading stopped at the end, column 5, \"T\""},
    {"BlanksAlone", u"  ", 2, "Reading stopped at the end"},
    {"TheFirstCharacter", u"?T", 1, "Reading stopped at column 1, \"?\""},
    {"NothingRead", u"T", 0, "Reading stopped"},
    {"PositionBelowTheText", u"T", -1, "Reading stopped"},
    {"PositionBeyondTheText", u"T+", 9, "Reading stopped at the end, column 2, \"+\""},
    {"ALineBreak", u"1+\r\n(T)", 3, "Reading stopped at column 3, a line break"},
    {"ColumnsAreCharacters", u"X(\"\U0001D6FC\")*foo+1", 10, "Reading stopped at column 8, \"foo\""},
    {"ACharacterOfTwoUnits", u"T*\U0001D6FC+1", 3, "Reading stopped at column 3, \"\U0001D6FC\""},
};
class Stops : public testing::TestWithParam<StopCase> {};
TEST_P(Stops, AreDescribed) {
    EXPECT_EQ(Utf8FromUtf16(DescribeStop(GetParam().text, GetParam().position)), GetParam().told);
}
INSTANTIATE_TEST_SUITE_P(Table, Stops, testing::ValuesIn(stopCases),
                         [](const auto& row) { return std::string(row.param.name); });

/// A field that reports formatting as changes, as a rich edit field does.
class CFakeField : public IExpressionField {
public:
    std::u16string Text() override {
        ++timesRead;
        return text;
    }
    TextRange Selection() override { return selection; }
    void Show(const ExpressionRun& run) override {
        runs.push_back(run);
        selection = run.range;
        Report();
    }
    void Select(TextRange range) override {
        selection = range;
        ++timesSelected;
        Report();
    }
    void ShowStatus(const std::u16string& message, const std::u16string& stop) override {
        status = message;
        place = stop;
        runs.clear();
    }
    void Report() const {
        if (onChange) onChange();
    }

    std::u16string text;
    TextRange selection;
    std::vector<ExpressionRun> runs;
    std::u16string status = u"left";
    std::u16string place = u"left";
    int timesRead = 0;
    int timesSelected = 0;
    std::function<void()> onChange;
};

class ExpressionEditor : public testing::Test {
protected:
    ExpressionEditor() {
        field.onChange = [this] {
            editor.TextChanged();
            editor.SelectionChanged();
        };
    }
    /// The user has typed this, with the caret behind it.
    void Type(const char16_t* text) {
        field.text = text;
        const auto end = static_cast<std::int32_t>(field.text.size());
        field.selection = {end, end};
        editor.TextChanged();
        EXPECT_EQ(field.selection, (TextRange{end, end}));
    }
    std::string Painted() const { return test::Painted(field.runs, field.text.size()); }
    std::string Status() const { return Utf8FromUtf16(field.status); }

    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({u"Water"});
    CFakeField field;
    CExpressionEditor editor{*definition, field};
};

TEST_F(ExpressionEditor, SaysNothingOfAnEmptyText) {
    Type(u"foo");
    Type(u"");
    EXPECT_EQ(Status(), "");
    EXPECT_EQ(Painted(), "");
    EXPECT_EQ(editor.Accept(), u"");
}

TEST_F(ExpressionEditor, SaysNothingOfAGoodText) {
    Type(u"2*C(Water)");
    EXPECT_EQ(Status(), "");
    EXPECT_EQ(Painted(), "...B.....B");
    EXPECT_EQ(editor.Accept(), u"2*C(Water)");
}

TEST_F(ExpressionEditor, ShowsTheMessageAndTheRestInRed) {
    Type(u"2*C(Ether)+1");
    std::u16string message;
    std::int32_t position = -1;
    EXPECT_EQ(ParseExpression(*definition, field.text, message, &position), nullptr);
    EXPECT_GT(message.size(), 0U);
    EXPECT_EQ(Status(), Utf8FromUtf16(message));
    ASSERT_GT(position, 0);
    const std::string painted = std::string(static_cast<std::size_t>(position), '.') +
                                std::string(field.text.size() - static_cast<std::size_t>(position), 'r');
    EXPECT_EQ(Painted(), painted);
    EXPECT_EQ(editor.Accept(), u"2*C(Ether)+1");  // nothing is refused
}

TEST_F(ExpressionEditor, ForgetsAnErrorThatIsMended) {
    Type(u"T+foo");
    EXPECT_NE(Status(), "");
    Type(u"2*C(Ether)+1");
    EXPECT_NE(Painted().find('r'), std::string::npos);
    Type(u"T+1");
    EXPECT_EQ(Status(), "");
    EXPECT_EQ(Painted(), "...");
}

/// Beside the message, whose words stay, and also where nothing is red.
TEST_F(ExpressionEditor, TellsWhereTheReadingStopped) {
    Type(u"2*C(Ether)+1");
    EXPECT_EQ(field.place, u"Reading stopped at column 5, \"Ether\"");
    Type(u"EXP(T");
    EXPECT_EQ(Painted().find('r'), std::string::npos);
    EXPECT_EQ(field.place, u"Reading stopped at the end, column 5, \"T\"");
    Type(u"EXP(T,2)");  // noticed last of all
    EXPECT_NE(Status(), "");
    EXPECT_EQ(field.place, u"Reading stopped at the end, column 8, \")\"");
    Type(u"EXP(T)");
    EXPECT_EQ(field.place, u"");
    Type(u"T+");
    Type(u"");
    EXPECT_EQ(field.place, u"");
}

TEST_F(ExpressionEditor, TellsABlankText) {
    Type(u" ");
    EXPECT_EQ(Status(), "syntax error, unexpected $end\r\n");
}

TEST_F(ExpressionEditor, OnlyColoursWhenTheCaretMoves) {
    Type(u"(T)+foo*2");
    const std::string status = Status();
    field.status = u"untouched";
    field.runs.clear();
    field.selection = {1, 1};
    editor.SelectionChanged();
    EXPECT_EQ(field.status, u"untouched");
    EXPECT_NE(status, "");
    EXPECT_EQ(Painted().substr(0, 4), "B.B.");
    EXPECT_EQ(Painted().back(), 'r');  // the error stands
    EXPECT_EQ(field.selection, (TextRange{1, 1}));
}

TEST_F(ExpressionEditor, TakesItsOwnFormattingForNoEvent) {
    field.timesRead = 0;
    Type(u"(T)");
    EXPECT_EQ(field.timesRead, 2);  // to parse, and to colour
    EXPECT_EQ(field.timesSelected, 1);
    field.selection = {0, 0};
    editor.SelectionChanged();  // events count again
    EXPECT_EQ(field.timesRead, 3);
    EXPECT_EQ(field.timesSelected, 2);
}

TEST_F(ExpressionEditor, CountsEventsAgainAfterAFailure) {
    field.onChange = [] { throw std::bad_alloc(); };
    field.text = u"T";
    EXPECT_THROW(editor.TextChanged(), std::bad_alloc);
    field.onChange = nullptr;
    Type(u"foo");
    EXPECT_NE(Status(), "");
}

TEST_F(ExpressionEditor, FormatsALongTextInFewRuns) {
    std::u16string sum = u"1";
    while (sum.size() < 65536) sum += u"+(C(Water)*2)";
    std::u16string deep(20000, u'(');
    deep += u"T" + std::u16string(20000, u')');
    for (const std::u16string& text : {sum, deep}) {
        field.text = text;
        field.selection = {0, 0};
        for (int i = 0; i < 10; ++i) editor.TextChanged();
        for (std::int32_t i = 0; i < 100; ++i) {
            field.selection = {i, i};
            editor.SelectionChanged();
        }
        EXPECT_LE(field.runs.size() / 110, 5U);  // so many at most for one text
        field.runs.clear();
    }
    EXPECT_EQ(PartnerOf(deep, 0), 40000);
}

}  // namespace
}  // namespace reka::test
