// SPDX-License-Identifier: MIT
// Files of sizes around that of a part, and one whose end can't be read.

#include "packagetext/ReadWhole.h"

#include <gtest/gtest.h>

#include "support/FakeFiles.h"

namespace packagetext {

namespace {

constexpr std::size_t part = std::size_t{1} << 20;

std::vector<std::uint8_t> BytesOf(std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i * 31 + i / 256);
    return bytes;
}

TEST(ReadWhole, GivesAllBytes) {
    reka::test::CFakeFiles files;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, part - 1, part, part + 1, 2 * part, 2 * part + 7}) {
        files.entries[u"a"].bytes = BytesOf(size);
        const auto file = files.OpenForReading(u"a");
        ASSERT_TRUE(file);
        EXPECT_TRUE(ReadWhole(*file) == BytesOf(size)) << size;
    }
}

TEST(ReadWhole, StartsWhereTheFileStands) {
    reka::test::CFakeFiles files;
    files.entries[u"a"].bytes = {'a', 'b', 'c', 'd'};
    const auto file = files.OpenForReading(u"a");
    ASSERT_TRUE(file && file->Seek(2));
    EXPECT_EQ(ReadWhole(*file), (std::vector<std::uint8_t>{'c', 'd'}));
}

TEST(ReadWhole, EndsWhereReadingFails) {
    reka::test::CFakeFiles files;
    files.entries[u"a"].bytes = BytesOf(2 * part);
    files.failAt = 3;  // it is opened and read once; of what is read then half comes
    const auto file = files.OpenForReading(u"a");
    ASSERT_TRUE(file);
    EXPECT_TRUE(ReadWhole(*file) == BytesOf(part + part / 2));
}

}  // namespace

}  // namespace packagetext
