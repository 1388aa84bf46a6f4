// SPDX-License-Identifier: MIT
// UTF-8 both ways, well formed and not.

#include "text/Utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace reka::test {
namespace {

struct TextPair {
    const char* name;
    const char* bytes;
    const char16_t* text;
};
const TextPair textPairs[] = {
    {"Empty", "", u""},
    {"Ascii", "n-butane", u"n-butane"},
    {"TwoBytes", "\xC3\x84thanol \xC2\x80\xDF\xBF", u"\u00C4thanol \u0080\u07FF"},
    {"ThreeBytes", "\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBF", u"\u0800\u20AC\uFFFF"},
    {"BesideTheSurrogates", "\xED\x9F\xBF\xEE\x80\x80", u"\uD7FF\uE000"},
    {"FourBytes", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF"},
};
class Utf8Pairs : public testing::TestWithParam<TextPair> {};

TEST_P(Utf8Pairs, GoBothWays) {
    EXPECT_EQ(Utf16FromUtf8(GetParam().bytes), GetParam().text);
    EXPECT_EQ(Utf8FromUtf16(GetParam().text), GetParam().bytes);
}
INSTANTIATE_TEST_SUITE_P(Table, Utf8Pairs, testing::ValuesIn(textPairs),
                         [](const auto& row) { return std::string(row.param.name); });

const TextPair malformedBytes[] = {
    {"LoneTrailingByte", "a\x80z", u"a\uFFFDz"},
    {"CutShort", "a\xE2\x82", u"a\uFFFD\uFFFD"},
    {"Overlong", "\xC0\x80", u"\uFFFD\uFFFD"},
    {"OverlongThree", "\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"},
    {"Surrogate", "\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},
    {"BeyondUnicode", "\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
    {"NotALead", "\xFFz", u"\uFFFDz"},
};
class MalformedUtf8 : public testing::TestWithParam<TextPair> {};

TEST_P(MalformedUtf8, BecomesTheReplacementCharacter) {
    EXPECT_EQ(Utf16FromUtf8(GetParam().bytes), GetParam().text);
}
INSTANTIATE_TEST_SUITE_P(Table, MalformedUtf8, testing::ValuesIn(malformedBytes),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Utf8FromUtf16, ReplacesLoneSurrogates) {
    const char16_t text[] = {0xD800, u'a', 0xDC00, u'b', 0xD801, 0};
    EXPECT_EQ(Utf8FromUtf16(text),
              "\xEF\xBF\xBD"
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD");
}

TEST(WriteUtf8, FillsABufferThatIsLargeEnough) {
    const std::u16string_view text = u"a\u00E9\u4E2D\U0001F600";  // of one to four bytes
    const std::string bytes = Utf8FromUtf16(text);
    ASSERT_EQ(bytes.size(), 10U);
    char buffer[12];
    std::fill(std::begin(buffer), std::end(buffer), '#');
    EXPECT_EQ(WriteUtf8(text, std::span(buffer, 11)), 10U);
    EXPECT_EQ(std::string(buffer, 12), bytes + std::string("\0#", 2));
    for (std::size_t room = 0; room <= 10; ++room) {  // without room for the zero at least
        std::fill(std::begin(buffer), std::end(buffer), '#');
        EXPECT_EQ(WriteUtf8(text, std::span(buffer, room)), room);
        EXPECT_EQ(std::string(buffer + room, 12 - room), std::string(12 - room, '#'));
    }
    EXPECT_EQ(WriteUtf8(u"", std::span(buffer, 1)), 0U);
    EXPECT_EQ(buffer[0], '\0');
    const char16_t lone[] = {0xD800, 0};
    EXPECT_EQ(WriteUtf8(lone, buffer), utf8BytesPerUnit);
    EXPECT_STREQ(buffer, "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace reka::test
