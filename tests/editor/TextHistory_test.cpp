// SPDX-License-Identifier: MIT
// The history of a text field, and what of it must be formatted.

#include "editor/TextHistory.h"

#include <gtest/gtest.h>

#include <new>

#include "support/AllocationCounter.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

struct ChangeCase {
    const char* name;
    const char16_t* before;
    const char16_t* after;
    std::int32_t caret;
    TextChange change;
};
const ChangeCase changeCases[] = {
    {"Nothing", u"abc", u"abc", 2, {2, u"", u""}},
    {"TypedAtTheEnd", u"ab", u"abc", 3, {2, u"", u"c"}},
    {"TypedAmongEqualsInFront", u"aa", u"aaa", 1, {0, u"", u"a"}},
    {"TypedAmongEqualsBehind", u"aa", u"aaa", 3, {2, u"", u"a"}},
    {"DeletedAmongEquals", u"aaa", u"aa", 1, {1, u"a", u""}},
    {"Replaced", u"2*T+1", u"2*P+1", 3, {2, u"T", u"P"}},
    {"AllGone", u"abc", u"", 0, {0, u"abc", u""}},
    {"FromNothing", u"", u"abc", 3, {0, u"", u"abc"}},
    {"CaretInFrontOfTheChange", u"abc", u"abXc", 0, {2, u"", u"X"}},
    {"CaretUnknown", u"abc", u"aXc", -1, {1, u"b", u"X"}},
    {"CaretBeyond", u"abc", u"aXc", 99, {1, u"b", u"X"}},
    // Characters of two units that share the first one, or the second one.
    {"OtherSecondHalf", u"a\xD83D\xDE00z", u"a\xD83D\xDE01z", 3, {1, u"\xD83D\xDE00", u"\xD83D\xDE01"}},
    {"OtherFirstHalf", u"a\xD83D\xDE00z", u"a\xD83C\xDE00z", 3, {1, u"\xD83D\xDE00", u"\xD83C\xDE00"}},
    {"PairAmongPairs",
     u"\xD83D\xDE00\xD83D\xDE00",
     u"\xD83D\xDE00\xD83D\xDE01\xD83D\xDE00",
     4,
     {2, u"", u"\xD83D\xDE01"}},
    {"SecondHalfComes", u"x\xD83D", u"x\xD83D\xDE00", 3, {1, u"\xD83D", u"\xD83D\xDE00"}},
    {"FirstHalfComes", u"\xDE00x", u"\xD83D\xDE00x", 1, {0, u"\xDE00", u"\xD83D\xDE00"}},
    {"SecondHalfGone", u"x\xD83D\xDE00", u"x\xD83D", 2, {1, u"\xD83D\xDE00", u"\xD83D"}},
    {"FirstHalfGone", u"\xD83D\xDE00x", u"\xDE00x", 0, {0, u"\xD83D\xDE00", u"\xDE00"}},
    {"PairGone", u"\xD83D\xDE00\xD83D\xDE01", u"\xD83D\xDE01", 0, {0, u"\xD83D\xDE00", u""}},
};
class TextChanges : public testing::TestWithParam<ChangeCase> {};
TEST_P(TextChanges, AreTheSmallestThatEndAtTheCaret) {
    const auto& row = GetParam();
    const TextChange change = ChangeBetween(row.before, row.after, row.caret);
    if (row.change.IsNone()) {
        EXPECT_TRUE(change.IsNone());
    } else {
        EXPECT_EQ(change, row.change);
    }
}
INSTANTIATE_TEST_SUITE_P(Table, TextChanges, testing::ValuesIn(changeCases),
                         [](const auto& row) { return std::string(row.param.name); });

/// A field that types and takes back.
class TextHistory : public testing::Test {
protected:
    TextHistory() { history.Start(u""); }

    void Type(std::u16string_view characters) {
        for (const char16_t character : characters) Insert({&character, 1});
    }
    void Insert(std::u16string_view characters) {
        text.insert(caret, characters);
        caret += characters.size();
        Report();
    }
    void Delete(std::size_t first, std::size_t count) {
        text.erase(first, count);
        caret = first;
        Report();
    }
    void Report() {
        history.Change(text, static_cast<std::int32_t>(caret));
        EXPECT_EQ(history.Text(), text);
    }
    bool Apply(const std::optional<TextReplacement>& replacement) {
        if (!replacement) return false;
        text.replace(static_cast<std::size_t>(replacement->range.first),
                     static_cast<std::size_t>(replacement->range.end - replacement->range.first), replacement->text);
        EXPECT_EQ(replacement->selection.first, replacement->selection.end);
        caret = static_cast<std::size_t>(replacement->selection.end);
        Report();  // as a field does
        return true;
    }
    bool Undo() { return Apply(history.Undo()); }
    bool Redo() { return Apply(history.Redo()); }
    std::string Text() const { return Utf8FromUtf16(text); }

    CTextHistory history;
    std::u16string text;
    std::size_t caret = 0;
};

TEST_F(TextHistory, BeginsWithNothingToUndo) {
    EXPECT_FALSE(history.CanUndo());
    EXPECT_FALSE(history.CanRedo());
    EXPECT_FALSE(Undo());
    EXPECT_FALSE(Redo());
    history.Start(u"left");
    EXPECT_FALSE(history.CanUndo());
}

TEST_F(TextHistory, TakesTypingBackWordByWord) {
    Type(u"2*T + 1");
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "2*T + ");
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "2*T ");
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "");
    EXPECT_FALSE(Undo());
    while (Redo()) {
    }
    EXPECT_EQ(Text(), "2*T + 1");
    EXPECT_EQ(caret, 7U);
}

TEST_F(TextHistory, TakesBackAtOtherPlacesSeparately) {
    Type(u"abc");
    caret = 0;
    Type(u"x");
    EXPECT_EQ(Text(), "xabc");
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "abc");
    EXPECT_EQ(caret, 0U);
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "");
}

TEST_F(TextHistory, JoinsDeletedCharacters) {
    Insert(u"abcdef");
    Delete(5, 1);  // the key that deletes backwards
    Delete(4, 1);
    Delete(1, 1);  // the one that deletes forwards
    Delete(1, 1);
    EXPECT_EQ(Text(), "ad");
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "abcd");
    EXPECT_EQ(caret, 3U);
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "abcdef");
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "");
    EXPECT_FALSE(Undo());
}

TEST_F(TextHistory, TakesACharacterOfTwoUnitsForOne) {
    for (const std::u16string_view character : {u"x", u"\xD83D\xDE00", u"\xD83D\xDE01"}) Insert(character);
    for (const std::size_t last : {std::size_t{3}, std::size_t{1}}) Delete(last, 2);
    EXPECT_TRUE(Undo());
    EXPECT_EQ(text, u"x\xD83D\xDE00\xD83D\xDE01");
    EXPECT_TRUE(Undo());
    EXPECT_FALSE(history.CanUndo());
}

TEST_F(TextHistory, TakesAPasteBackAsOne) {
    Type(u"T");
    Insert(u"*(P+1)");
    Type(u"!");
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "T*(P+1)");
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "T");
    EXPECT_TRUE(Redo());
    EXPECT_EQ(Text(), "T*(P+1)");
}

TEST_F(TextHistory, ForgetsWhatWasTakenBackAtTheNextChange) {
    Type(u"abc");
    EXPECT_TRUE(Undo());
    Type(u"x");
    EXPECT_FALSE(history.CanRedo());
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "");
    EXPECT_FALSE(history.CanUndo());
}

TEST_F(TextHistory, ReplacesAndTakesBack) {
    Insert(u"2*Water");
    text.replace(2, 5, u"T");
    caret = 3;
    Report();
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Text(), "2*Water");
    EXPECT_EQ(caret, 7U);
    EXPECT_TRUE(Redo());
    EXPECT_EQ(Text(), "2*T");
}

TEST(LimitedTextHistory, ForgetsTheOldest) {
    CTextHistory history(5);
    history.Start(u"");
    history.Change(u"abc", 3);
    history.Change(u"", 0);
    EXPECT_EQ(history.Undo()->text, u"abc");
    EXPECT_FALSE(history.CanUndo());
}

/// Without memory nothing has happened, and the next report tells all.
TEST_F(TextHistory, IsAsItWasWithoutMemory) {
    Type(u"a longer text than a string holds by itself");
    const std::u16string before = text;
    int failures = 0;
    for (std::size_t n = 1;; ++n) {
        text = before + u"; and a longer addition than a string holds";
        const std::u16string whole = text;
        FailAllocation(n);
        try {
            history.Change(whole, static_cast<std::int32_t>(whole.size()));
            FailAllocation(0);
            break;
        } catch (const std::bad_alloc&) {
            FailAllocation(0);
            ++failures;
            EXPECT_EQ(history.Text(), before);
        }
    }
    EXPECT_GT(failures, 0);
    EXPECT_TRUE(Undo());
    EXPECT_EQ(text, before);
}

TEST(TextHistoryWithoutMemory, KeepsWhatWasTakenBack) {
    const std::u16string step = u"a step of thirty characters...";
    int failures = 0;
    for (std::size_t n = 1;; ++n) {
        CTextHistory history(100);
        history.Start(u"");
        history.Change(step, 30);
        history.Change(step + step, 60);
        history.Undo();
        const std::u16string next = step + u"another one that is just as long";
        FailAllocation(n);
        try {
            history.Change(next, 62);
            FailAllocation(0);
            EXPECT_FALSE(history.CanRedo());
            break;
        } catch (const std::bad_alloc&) {
            FailAllocation(0);
            ++failures;
        }
        EXPECT_EQ(history.Redo(), (TextReplacement{{30, 30}, step, {60, 60}}));
        // No more is held than before: the oldest step is still there.
        history.Change(step + step + u"and a third of thirty characte", 90);
        for (int i = 0; i < 3; ++i) EXPECT_TRUE(history.Undo());
        EXPECT_EQ(history.Text(), u"");
    }
    EXPECT_GT(failures, 1);
}

/// A step can't be held: those that come after it don't push the oldest out too early.
TEST(TextHistoryWithoutMemory, CountsWhatItHoldsAlone) {
    const std::u16string step = u"a step of thirty characters...";
    for (std::size_t n = 1; n < 6; ++n) {
        CTextHistory history(70);
        history.Start(u"");
        history.Change(step, 30);
        for (int i = 0; i < 3; ++i) {
            FailAllocation(n);
            try {
                history.Change(step + step, 60);
            } catch (const std::bad_alloc&) {
            }
            FailAllocation(0);
        }
        history.Change(step + step, 60);
        EXPECT_TRUE(history.Undo());
        EXPECT_TRUE(history.Undo()) << n;
    }
}

/// What a field shows, a letter for each character: "." plain, "B" bold, "r" red, "?" unknown.
class ShownFormat : public testing::Test {
protected:
    void Start(std::u16string_view text) {
        format.Start(text);
        shownText = text;
        letters.assign(text.size(), '.');
    }

    /// The user has changed the text; gives the number of characters formatted.
    int Show(std::u16string_view text, std::size_t caret, TextRange selection, std::int32_t errorPosition) {
        const TextChange change = ChangeBetween(shownText, text, static_cast<std::int32_t>(caret));
        const auto position = static_cast<std::size_t>(change.position);
        // As a field does it.
        const std::size_t model = change.removed.empty() ? position - 1 : position;
        const bool isAtStart = change.removed.empty() && (position == 0 || shownText[model] == u'\n');
        const char look = isAtStart || model >= letters.size() ? '?' : letters[model];
        letters.replace(position, change.removed.size(), std::string(change.inserted.size(), look));
        shownText = text;
        const std::vector<ExpressionRun> wanted = ColourExpression(text, selection, errorPosition);
        int formatted = 0;
        for (const ExpressionRun& run : format.Change(text, static_cast<std::int32_t>(caret), wanted)) {
            for (std::int32_t i = run.range.first; i < run.range.end; ++i) {
                letters.at(static_cast<std::size_t>(i)) = Letter(run);
                ++formatted;
            }
        }
        std::string all;
        for (const ExpressionRun& run : wanted) {
            all += std::string(static_cast<std::size_t>(run.range.end - run.range.first), Letter(run));
        }
        EXPECT_EQ(letters, all);
        return formatted;
    }
    static char Letter(const ExpressionRun& run) { return run.isBold ? 'B' : run.colour ? 'r' : '.'; }

    CShownFormat format;
    std::u16string shownText;
    std::string letters;
};

TEST_F(ShownFormat, FormatsOnlyWhatDiffers) {
    Start(u"2*(T+1)");
    EXPECT_EQ(Show(u"2*(T+1)", 0, {0, 0}, -1), 0);
    EXPECT_EQ(Show(u"2*(T+1)", 7, {7, 7}, -1), 2);    // the brackets
    EXPECT_EQ(Show(u"2*(T+1)", 7, {7, 7}, -1), 0);    // nothing new
    EXPECT_EQ(Show(u"2*(T+1)*", 8, {8, 8}, 8), 3);    // the brackets again, and what was typed behind a bold one
    EXPECT_EQ(Show(u"2*(T+1)*P", 9, {9, 9}, -1), 0);  // typed in the right look
    EXPECT_EQ(Show(u"2*(T1)*P", 4, {4, 4}, 4), 4);    // red from there on
    EXPECT_EQ(Show(u"2*(T1)*PP", 9, {9, 9}, 4), 0);   // typed in red
    EXPECT_EQ(Show(u"2*(T+1)*PP", 5, {5, 5}, -1), 5);
    EXPECT_EQ(Show(u"", 0, {0, 0}, -1), 0);
    EXPECT_EQ(Show(u"T", 1, {1, 1}, -1), 1);  // nothing in front
}

TEST_F(ShownFormat, KnowsWhatWasPasted) {
    Start(u"(T)");
    EXPECT_EQ(Show(u"(T)", 0, {0, 0}, -1), 2);
    EXPECT_EQ(Show(u"(T+P+1)", 6, {6, 6}, -1), 0);
    EXPECT_EQ(Show(u"(P+1)", 2, {2, 2}, 4), 2);   // part of the text deleted
    EXPECT_EQ(Show(u"(P+1TT", 6, {6, 6}, 4), 0);  // the bracket replaced, in its red
}

TEST_F(ShownFormat, IsNotSureAtTheStartOfALine) {
    Start(u"T\r\n");
    EXPECT_EQ(Show(u"T\r\nP", 4, {4, 4}, -1), 1);
}

TEST_F(ShownFormat, FormatsAllAfterAFailure) {
    Start(u"T+1");
    format.Forget();
    shownText.clear();
    letters.clear();
    EXPECT_EQ(Show(u"T+1", 0, {0, 0}, -1), 3);
}

}  // namespace
}  // namespace reka::test
