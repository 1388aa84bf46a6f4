// SPDX-License-Identifier: MIT
// What comes back out of damaged files: every cut and every flipped bit of a file with templates of all kinds.

#include "Salvage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "SampleBlocks.h"
#include "packagetext/StoredBlock.h"

namespace rekatool {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// With two compounds and a reaction that has a tree.
CStoredBytes RichBlock(std::u16string_view name) {
    CStoredBytes block = Head(name, 3).U32(2);
    for (const char16_t* const compound : {u"one", u"two"}) {
        block.Wide(compound).Wide(u"").Wide(compound).Wide(u"CH4").F64(16).F64(0);
    }
    block.U32(1).Wide(u"R").Wide(u"Vapor").U32(1).U32(0).Narrow("T").Narrow("").Narrow("").F64(-1).F64(1);
    return block.Add(TemperatureTree()).U8(0).U8(0).U32(4).U32(1);
}

/// As versions up to 2 may end: without a thermo version.
CStoredBytes OldBlock(std::u16string_view name, std::uint32_t version) {
    return Head(name, version).U32(0).U32(0);
}

CStoredBytes FileOf(std::uint32_t count, const std::vector<CStoredBytes>& blocks) {
    CStoredBytes file = CStoredBytes().U32(count);
    for (const CStoredBytes& block : blocks) file.Add(Framed(block));
    return file;
}

std::vector<Bytes> BytesOf(const std::vector<CStoredBytes>& blocks) {
    std::vector<Bytes> list;
    for (const CStoredBytes& block : blocks) list.push_back(block.bytes);
    return list;
}

const std::vector<std::vector<CStoredBytes>> sampleFiles = {
    {},
    {EmptyBlock(u"A")},
    {OldBlock(u"A", 1)},
    {EmptyBlock(u"A"), RichBlock(u"B"), EmptyBlock(u"C", 1), RichBlock(u"D")},
    {OldBlock(u"A", 0), OldBlock(u"B", 1), RichBlock(u"C"), OldBlock(u"D", 2)},
    {RichBlock(u"A"), OldBlock(u"", 0), OldBlock(u"", 2), EmptyBlock(u"D"), OldBlock(u"E", 1), EmptyBlock(u"F")},
};

TEST(Salvage, GivesAWholeFileBack) {
    for (const auto& blocks : sampleFiles) {
        const CStoredBytes file = FileOf(static_cast<std::uint32_t>(blocks.size()), blocks);
        const Salvaged salvaged = SalvageTemplates(file.bytes);
        EXPECT_THAT(salvaged.damages, IsEmpty());
        EXPECT_EQ(WritePackageFile(salvaged.file), file.bytes);
    }
}

TEST(Salvage, GivesExactlyTheTemplatesBeforeACut) {
    for (const auto& blocks : sampleFiles) {
        const CStoredBytes file = FileOf(static_cast<std::uint32_t>(blocks.size()), blocks);
        std::vector<std::size_t> ends = {4};
        for (const CStoredBytes& block : blocks) ends.push_back(ends.back() + 4 + block.bytes.size());
        for (std::size_t cut = 0; cut < file.bytes.size(); ++cut) {
            const auto whole = static_cast<std::size_t>(
                std::count_if(ends.begin() + 1, ends.end(), [cut](std::size_t end) { return end <= cut; }));
            const Salvaged salvaged = SalvageTemplates(std::span(file.bytes).first(cut));
            const std::vector<CStoredBytes> expected(blocks.begin(),
                                                     blocks.begin() + static_cast<std::ptrdiff_t>(whole));
            EXPECT_EQ(salvaged.file.blocks, BytesOf(expected)) << "cut at " << cut;
            EXPECT_EQ(salvaged.file.count, static_cast<std::int32_t>(whole));
            EXPECT_FALSE(salvaged.damages.empty()) << "cut at " << cut;
        }
    }
}

/// A template with a changed byte in it may be readable all the same; it is in its place then, and as it lies there.
TEST(Salvage, InventsNothingForAFlippedBit) {
    for (const auto& blocks : sampleFiles) {
        const CStoredBytes file = FileOf(static_cast<std::uint32_t>(blocks.size()), blocks);
        for (std::size_t bit = 0; bit < 8 * file.bytes.size(); ++bit) {
            std::vector<std::uint8_t> damaged = file.bytes;
            damaged[bit / 8] = static_cast<std::uint8_t>(damaged[bit / 8] ^ 1U << bit % 8);
            const Salvaged salvaged = SalvageTemplates(damaged);
            // Each original template, as it lies in the damaged file, comes back in its order, or the one hit doesn't.
            std::vector<Bytes> expected;
            std::size_t hit = blocks.size();
            std::size_t start = 4;
            for (std::size_t i = 0; i < blocks.size(); ++i) {
                const std::size_t end = start + 4 + blocks[i].bytes.size();
                expected.emplace_back(damaged.begin() + static_cast<std::ptrdiff_t>(start + 4),
                                      damaged.begin() + static_cast<std::ptrdiff_t>(end));
                if (bit / 8 >= start && bit / 8 < end) hit = i;
                start = end;
            }
            const bool isHitReadable = hit < blocks.size() && packagetext::TryBlock(expected[hit]).isReadable;
            if (hit < blocks.size() && !isHitReadable) {
                expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(hit));
            }
            const bool isAll = salvaged.file.blocks == expected;
            // The size of a last template without a thermo version: the file could have been cut there as well.
            const bool isUndecided =
                hit + 1 == blocks.size() && blocks[hit].bytes.size() == OldBlock(u"A", 1).bytes.size();
            if (!isAll && isUndecided) {
                expected.pop_back();
                EXPECT_EQ(salvaged.file.blocks, expected) << "bit " << bit;
                EXPECT_FALSE(salvaged.damages.empty());
                continue;
            }
            EXPECT_TRUE(isAll) << "bit " << bit << " of " << blocks.size()
                               << " templates: " << testing::PrintToString(salvaged.damages);
        }
    }
}

struct DamageCase {
    const char* name;
    CStoredBytes file;
    std::vector<std::u16string_view> kept;  // names of empty blocks
    std::vector<std::string> damages;
};

CStoredBytes Flipped(CStoredBytes bytes, std::size_t place, std::uint8_t value) {
    bytes.bytes[place] = value;
    return bytes;
}

CStoredBytes Cut(CStoredBytes bytes, std::size_t size) {
    bytes.bytes.resize(size);
    return bytes;
}

/// Three frames of 40 bytes each behind the count: they begin at 4, 44 and 84.
CStoredBytes ThreeTemplates(std::uint32_t count = 3) {
    return FileOf(count, {EmptyBlock(u"A"), EmptyBlock(u"B"), EmptyBlock(u"C")});
}

const DamageCase damageCases[] = {
    {"Nothing", CStoredBytes(), {}, {"the file ends within its number of templates"}},
    {"CutInCount", Cut(ThreeTemplates(), 3), {}, {"the file ends within its number of templates"}},
    {"CutBehindCount", Cut(ThreeTemplates(), 4), {}, {"templates 1 to 3 are lost: the file ends before"}},
    {"CutBetween", Cut(ThreeTemplates(), 84), {u"A", u"B"}, {"template 3 is lost: the file ends before"}},
    {"CutInSize",
     Cut(ThreeTemplates(), 46),
     {u"A"},
     {"template 2, from byte 44 on, is lost: the file ends within its size",
      "template 3 is lost: behind template 2 nothing can be found for certain"}},
    {"CutInName",
     Cut(ThreeTemplates(), 53),
     {u"A"},
     {"template 2, from byte 44 on, is lost: its size says 36 bytes, but the file ends after 5",
      "template 3 is lost: behind template 2 nothing can be found for certain"}},
    {"CutInBlock",
     Cut(ThreeTemplates(), 110),
     {u"A", u"B"},
     {"template 3, \"C\", from byte 84 on, is lost: its size says 36 bytes, but the file ends after 22"}},
    {"BadBlock",
     Flipped(ThreeTemplates(), 56, 99),
     {u"A", u"C"},
     {"template 2, \"B\", from byte 44 on, is lost: it can't be read at byte 60: data corrupted"}},
    {"TwoBadBlocks",
     Flipped(Flipped(ThreeTemplates(), 16, 99), 56, 99),
     {u"C"},
     {"template 1, \"A\", from byte 4 on, is lost: it can't be read at byte 20: data corrupted",
      "template 2, \"B\", from byte 44 on, is lost: it can't be read at byte 60: data corrupted"}},
    {"BadSize",
     Flipped(ThreeTemplates(), 44, 200),
     {u"A", u"B", u"C"},
     {"template 2, \"B\", from byte 44 on, is whole, but its size was wrong: it is put right"}},
    {"BadSizeThatFits",
     Flipped(ThreeTemplates(), 4, 32),
     {u"A", u"B", u"C"},
     {"template 1, \"A\", from byte 4 on, is whole, but its size was wrong: it is put right"}},
    {"BadLastSize",
     Flipped(ThreeTemplates(), 84, 200),
     {u"A", u"B", u"C"},
     {"template 3, \"C\", from byte 84 on, is whole, but its size was wrong: it is put right"}},
    {"BadBlockBeforeACut",
     Cut(Flipped(ThreeTemplates(), 16, 99), 100),
     {},
     {"template 1, \"A\", from byte 4 on, is lost: it can't be read at byte 20: data corrupted",
      "templates 2 to 3 are lost: behind template 1 nothing can be found for certain"}},
    {"CountTooLow",
     ThreeTemplates(1),
     {u"A", u"B", u"C"},
     {"the number of templates is put right: the file says 1, but 2 more are there"}},
    {"CountBelowZero",
     FileOf(0xFFFFFFFF, {EmptyBlock(u"A")}),
     {u"A"},
     {"the number of templates is put right: the file says -1, but 1 more is there"}},
    {"CountTooHigh",
     ThreeTemplates(0x7FFFFFFF),
     {u"A", u"B", u"C"},
     {"templates 4 to 2147483647 are lost: the file ends before"}},
    {"BytesBehind",
     FileOf(1, {EmptyBlock(u"A")}).Add(Framed(EmptyBlock(u"B"))).U8(7),
     {u"A"},
     {"the 41 bytes from byte 44 on, behind the last template, are left out: they are no templates"}},
    {"NameThatSteersTheTerminal",
     Flipped(FileOf(1, {EmptyBlock(u"\x1B[2J")}), 22, 99),
     {},
     {"template 1, \"?[2J\", from byte 4 on, is lost: it can't be read at byte 26: data corrupted"}},
};
class DamagedFiles : public testing::TestWithParam<DamageCase> {};

TEST_P(DamagedFiles, GiveWhatIsWholeAndSayWhatIsnt) {
    const Salvaged salvaged = SalvageTemplates(GetParam().file.bytes);
    std::vector<Bytes> kept;
    for (const std::u16string_view name : GetParam().kept) kept.push_back(EmptyBlock(name).bytes);
    EXPECT_EQ(salvaged.file.blocks, kept);
    EXPECT_EQ(salvaged.damages, GetParam().damages);
}
INSTANTIATE_TEST_SUITE_P(Table, DamagedFiles, testing::ValuesIn(damageCases),
                         [](const auto& row) { return std::string(row.param.name); });

/// A wrong size that leads amid the last zeros of the next block, and over these to the end.
TEST(Salvage, IsNotMisledByZeros) {
    CStoredBytes file = FileOf(3, {OldBlock(u"A", 0), OldBlock(u"B", 1), EmptyBlock(u"C")});
    ASSERT_EQ(file.bytes[4], 24);
    file.bytes[4] = 24 + 32;
    const Salvaged salvaged = SalvageTemplates(file.bytes);
    EXPECT_EQ(salvaged.file.blocks, BytesOf({OldBlock(u"A", 0), OldBlock(u"B", 1), EmptyBlock(u"C")}));
    EXPECT_THAT(salvaged.damages,
                ElementsAre("template 1, \"A\", from byte 4 on, is whole, but its size was wrong: it is put right"));
}

/// A description that holds a framed template and a size behind it, and a size of the template itself that leads there.
TEST(Salvage, TakesNoTemplateOutOfAText) {
    const auto fileWith = [](std::uint32_t innerSize) {
        const CStoredBytes inner = Framed(EmptyBlock(u"Inner")).U32(innerSize);
        std::u16string description;
        for (std::size_t i = 0; i < inner.bytes.size(); i += 2) {
            description += static_cast<char16_t>(inner.bytes[i] | inner.bytes[i + 1] << 8);
        }
        const CStoredBytes outer = CStoredBytes().Wide(u"A").Wide(description).Narrow("").U32(0).U32(0).U32(0);
        CStoredBytes file = FileOf(3, {outer, EmptyBlock(u"B"), EmptyBlock(u"C")});
        file.bytes[4] = 12;  // up to the description's characters
        return file;
    };
    CStoredBytes file = fileWith(7);  // which leads amid the next template
    EXPECT_EQ(SalvageTemplates(file.bytes).file.blocks.size(), 3U);
    file.bytes.pop_back();  // without the end to lead to, nothing is certain
    EXPECT_THAT(SalvageTemplates(file.bytes).file.blocks, IsEmpty());
    // Behind the inner size come the end of the description, four words of the outer block and two templates.
    file = fileWith(2 + 4 * 4 + 2 * 40);
    EXPECT_THAT(SalvageTemplates(file.bytes).file.blocks, IsEmpty());
    EXPECT_THAT(SalvageTemplates(file.bytes).damages,
                ElementsAre("template 1, \"A\", from byte 4 on, is lost: it can't be read at byte 20: data corrupted",
                            "templates 2 to 3 are lost: behind template 1 nothing can be found for certain"));
}

TEST(Salvage, LosesWhatTheComponentCanNotRead) {
    CStoredBytes old = Head(u"Old", 0).U32(0).U32(1).Add(Reaction(0, CStoredBytes().U8(0)));
    const auto rate = std::find(old.bytes.begin(), old.bytes.end(), 'T');
    *rate = '*';  // the rate of an old block is parsed again
    const Salvaged salvaged = SalvageTemplates(FileOf(2, {old, EmptyBlock(u"B")}).bytes);
    EXPECT_EQ(salvaged.file.blocks, BytesOf({EmptyBlock(u"B")}));
    EXPECT_THAT(
        salvaged.damages,
        ElementsAre("template 1, \"Old\", from byte 4 on, is lost: it can't be read at byte 109: Parse error for "
                    "rate expression of old format file: syntax error, unexpected '*'"));
}

/// Files that lie about everything: frames of no bytes, old blocks that all look as if they lacked a word, and blocks
/// that read on to the end of the file.
/// Where each template were looked for behind each damaged one, these would take hours.
TEST(Salvage, EndsWithFilesThatAreMadeToBeSlow) {
    constexpr std::uint32_t manyTimes = 100'000;
    std::vector<CStoredBytes> files(3);
    for (CStoredBytes& file : files) file.U32(2 * manyTimes);
    for (std::uint32_t i = 0; i < manyTimes; ++i) {
        files[0].U32(0);
        files[1].Add(Framed(OldBlock(u"A", 1)));
        files[2].U32(16).U32(0).U32(0).U32(0).U32(0x7FFFFFFF);
    }
    EXPECT_EQ(SalvageTemplates(files[0].bytes).file.blocks.size(), 0U);
    EXPECT_EQ(SalvageTemplates(files[1].bytes).file.blocks.size(), manyTimes);
    EXPECT_EQ(SalvageTemplates(files[2].bytes).file.blocks.size(), 0U);
}

}  // namespace

}  // namespace rekatool
