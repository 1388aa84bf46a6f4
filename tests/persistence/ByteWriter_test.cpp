// SPDX-License-Identifier: MIT
// How many bytes a text takes in its stored form, whatever the code page makes of it.

#include "persistence/ByteWriter.h"

#include <gtest/gtest.h>

#include "persistence/ByteReader.h"
#include "support/StoredBytes.h"

namespace reka::test {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct WidthCase {
    const char* name;
    std::size_t length;      // in wide characters
    std::string_view bytes;  // of the whole text in the code page, without a terminator
    std::string_view stored;
    const char16_t* read;
};

/// Two Japanese characters, say, are four bytes in their code page. They are cut behind the third, and the terminator
/// is lost with the rest.
const WidthCase widthCases[] = {
    {"None", 0, "", "", u""},
    {"AsManyBytes", 2, "ab", {"ab\0", 3}, u"ab"},
    {"OneByteMore", 2, "abc", "abc", u"abc"},
    {"MoreBytes", 2, "abcd", "abc", u"abc"},
    {"ManyMoreBytes", 1, "abcdefgh", "ab", u"ab"},
    {"OneByteLess", 3, "ab", {"ab\0\0", 4}, u"ab"},
    {"NoBytes", 2, "", {"\0\0\0", 3}, u""},
};
void PrintTo(const WidthCase& row, std::ostream* stream) {
    *stream << row.name;
}

class NarrowWidths : public testing::TestWithParam<WidthCase> {};

TEST_P(NarrowWidths, TakeOneByteForEachCharacterAndOneMore) {
    const WidthCase& row = GetParam();
    Bytes block;
    CByteWriter(block).WriteNarrowBytes(row.length, row.bytes);
    Bytes expected = CStoredBytes().U32(static_cast<std::uint32_t>(row.length)).bytes;
    expected.insert(expected.end(), row.stored.begin(), row.stored.end());
    EXPECT_EQ(block, expected);

    CByteWriter(block).WriteU8(7);  // the reader goes on right behind
    CByteReader reader(block);
    std::u16string text;
    ASSERT_TRUE(reader.ReadNarrowText(text));
    EXPECT_EQ(text, row.read);
    EXPECT_EQ(reader.Remaining(), 1U);
}
INSTANTIATE_TEST_SUITE_P(Table, NarrowWidths, testing::ValuesIn(widthCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ByteWriter, KeepsToTheCapacityForTextsOfAnyWidth) {
    for (const std::string_view bytes : {"", "a", "ab", "abc", "abcdefgh"}) {
        Bytes block;
        CByteCounter counter;
        counter.WriteNarrowText(u"xy");
        block.reserve(static_cast<std::size_t>(counter.Size()));
        const std::uint8_t* const start = block.data();
        CByteWriter(block).WriteNarrowBytes(2, bytes);
        EXPECT_EQ(block.size(), 7U);
        EXPECT_EQ(block.data(), start);
    }
}

TEST(ByteWriter, WritesANarrowTextUpToItsFirstZero) {
    Bytes block;
    CByteWriter(block).WriteNarrowText(std::u16string_view(u"ab\0c", 4));
    EXPECT_EQ(block, CStoredBytes().Narrow("ab").bytes);
}

}  // namespace
}  // namespace reka::test
