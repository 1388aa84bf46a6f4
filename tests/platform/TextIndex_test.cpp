// SPDX-License-Identifier: MIT
// The index of names against a walk along the list.

#include "platform/TextIndex.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/SameText.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

CTextIndex IndexOf(const std::vector<const char16_t*>& texts, std::vector<CBstr>& kept) {
    for (const char16_t* text : texts) kept.push_back(text ? CBstr::Make(text) : CBstr());
    CTextIndex index;
    index.Make(kept.size(), [&](std::size_t i) { return kept[i].Get(); });
    return index;
}

TEST(TextIndex, GivesThePositionsOfATextInTheirOrder) {
    std::vector<CBstr> kept;
    const CTextIndex index = IndexOf({u"Ar", u"N2", u"AR", u"O2", u"ar"}, kept);
    EXPECT_EQ(index.Find(u"aR"), 0U);
    EXPECT_EQ(index.FindNext(0), 2U);
    EXPECT_EQ(index.FindNext(2), 4U);
    EXPECT_EQ(index.FindNext(4), CTextIndex::none);
    EXPECT_EQ(index.Find(std::u16string_view(u"o2")), 3U);
    EXPECT_EQ(index.FindNext(3), CTextIndex::none);
    EXPECT_EQ(index.Find(u"He"), CTextIndex::none);
}

TEST(TextIndex, TakesAnAbsentTextForAnEmptyOne) {
    std::vector<CBstr> kept;
    const CTextIndex index = IndexOf({u"Ar", nullptr, u""}, kept);
    EXPECT_EQ(index.Find(u""), 1U);
    EXPECT_EQ(index.Find(std::u16string_view()), 1U);
    EXPECT_EQ(index.FindNext(1), 2U);
}

TEST(TextIndex, HasNothingBeforeItIsMadeAndOfAnEmptyList) {
    CTextIndex index;
    EXPECT_TRUE(index.IsEmpty());
    EXPECT_EQ(index.Find(u"Ar"), CTextIndex::none);
    index.Make(0, [](std::size_t) -> const OLECHAR* { return nullptr; });
    EXPECT_EQ(index.Find(u""), CTextIndex::none);
}

TEST(TextIndex, IsEmptyWithoutMemory) {
    std::vector<CBstr> kept;
    const CTextIndex made = IndexOf({u"Ar", u"N2"}, kept);
    for (std::size_t n = 1;; ++n) {
        CTextIndex index = made;
        ASSERT_FALSE(index.IsEmpty());
        std::vector<CBstr> more;
        for (int i = 0; i < 9; ++i) more.push_back(CBstr::Make(u"O2"));
        FailAllocation(n);
        try {
            index.Make(more.size(), [&](std::size_t i) { return more[i].Get(); });
            FailAllocation(0);
            EXPECT_GT(n, 2U);
            break;
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(index.IsEmpty());
        }
    }
}

TEST(TextIndex, FindsWhatAWalkFinds) {
    std::mt19937 random(17);
    for (int round = 0; round < 200; ++round) {
        std::vector<CBstr> texts(1 + random() % 60);
        const auto makeText = [&] {
            std::u16string text;
            for (std::size_t length = random() % 3; length > 0; --length) text += u"aAbB\u00e4"[random() % 5];
            return CBstr::Make(text);
        };
        for (CBstr& text : texts) text = makeText();
        CTextIndex index;
        index.Make(texts.size(), [&](std::size_t i) { return texts[i].Get(); });
        const CBstr wanted = makeText();
        std::size_t found = index.Find(wanted.Get());
        for (std::size_t i = 0; i < texts.size(); ++i) {
            if (!SameText(texts[i].Get(), wanted.Get())) continue;
            ASSERT_EQ(found, i);
            found = index.FindNext(found);
        }
        EXPECT_EQ(found, CTextIndex::none);
    }
}

/// The index of somebody who knows the hash and has chosen names that all share one.
class CDefeatedIndex : public CTextIndex {
public:
    CDefeatedIndex() : CTextIndex([](std::u16string_view, std::uint64_t) -> std::size_t { return 5; }) {}
};

/// Texts of which every third stands in the list three times, by another case.
std::vector<CBstr> RepeatedNames(std::size_t count) {
    std::vector<CBstr> names;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string text = (i % 2 ? "Name" : "nAME") + std::to_string(i % (count - count / 3));
        names.push_back(CBstr::Make(std::u16string(text.begin(), text.end())));
    }
    return names;
}

TEST(TextIndex, LooksAtNoMoreTextsThanAWalkWouldAndFindsTheSame) {
    for (const std::size_t count : {3U, 100U, 300U, 600U}) {
        SCOPED_TRACE(count);
        const std::vector<CBstr> names = RepeatedNames(count);
        CDefeatedIndex index;
        index.Make(names.size(), [&](std::size_t i) { return names[i].Get(); });
        EXPECT_LE(index.MostComparisons(), count);
        for (std::size_t i = 0; i < count; ++i) {
            std::size_t first = 0;
            while (!SameText(names[first].Get(), names[i].Get())) ++first;
            ASSERT_EQ(index.Find(names[i].Get()), first);
            std::size_t following = i + 1;
            while (following < count && !SameText(names[following].Get(), names[i].Get())) ++following;
            ASSERT_EQ(index.FindNext(i), following < count ? following : CTextIndex::none);
        }
        EXPECT_EQ(index.Find(u"name"), CTextIndex::none);
        EXPECT_EQ(index.Find(std::u16string_view(u"name")), CTextIndex::none);
    }
}

TEST(TextIndex, GivesUpATableInWhichAllMeet) {
    const std::vector<CBstr> names = RepeatedNames(20000);
    CDefeatedIndex defeated;
    defeated.Make(names.size(), [&](std::size_t i) { return names[i].Get(); });
    EXPECT_EQ(defeated.MostComparisons(), names.size());
    CTextIndex usual;
    usual.Make(names.size(), [&](std::size_t i) { return names[i].Get(); });
    EXPECT_EQ(usual.MostComparisons(), 256U);
    defeated.Make(2, [&](std::size_t i) { return names[i].Get(); });  // another list, another try
    EXPECT_EQ(defeated.MostComparisons(), 2U);
}

}  // namespace
}  // namespace reka::test
