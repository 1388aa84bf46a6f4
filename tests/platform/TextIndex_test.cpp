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

}  // namespace
}  // namespace reka::test
