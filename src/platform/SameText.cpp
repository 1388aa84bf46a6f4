// SPDX-License-Identifier: MIT
// Names come from simulators, files and users in any mix of cases, and are compared in every call: the comparison walks
// along both texts at once and allocates nothing. The hash has to agree with it, and starts from a number that differs
// from run to run, so that names which share one in all runs aren't come by; who makes names for it finds them all the
// same, which the index of texts lives with.

#include "platform/SameText.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "text/LetterCase.h"

namespace reka {

namespace {

constexpr bool SameCharacter(char16_t left, char16_t right) {
    return left == right || UpperCase(left) == UpperCase(right);
}

const char16_t* CharactersOf(const OLECHAR* text) {
    return text ? reinterpret_cast<const char16_t*>(text) : u"";
}

/// Four characters as `UpperCase` has them, all at once. A small letter is told by two sums that reach the top bit of
/// its sixteen: one does from 'a' on, the other behind 'z'.
constexpr std::uint64_t UpperCaseOfFour(std::uint64_t characters) {
    constexpr std::uint64_t each = 0x0001'0001'0001'0001;
    constexpr std::uint64_t top = 0x8000 * each;
    const std::uint64_t low = characters & ~top;
    const std::uint64_t fromA = low + (0x8000 - u'a') * each;
    const std::uint64_t behindZ = low + (0x7FFF - u'z') * each;
    const std::uint64_t isSmall = fromA & ~behindZ & ~characters & top;
    return characters ^ isSmall >> 10;  // the bit in which a small letter differs from its capital
}

constexpr std::uint64_t hashFactor = 0x9E37'79B9'7F4A'7C15;

// Takes four characters into a hash.
constexpr std::uint64_t AppendToHash(std::uint64_t hash, std::uint64_t characters) {
    const std::uint64_t product = (hash ^ UpperCaseOfFour(characters)) * hashFactor;
    return product ^ product >> 32;
}

// Tables take the lower bits, which must depend on the last character too.
constexpr std::size_t FinishHash(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash * hashFactor >> 32);
}

}  // namespace

bool SameText(std::u16string_view left, std::u16string_view right) {
    return left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(), SameCharacter);
}

// Along both at once: to measure a string takes as long as to compare it.
bool SameText(const OLECHAR* left, const OLECHAR* right) {
    if (left == right) return true;
    const char16_t* a = CharactersOf(left);
    const char16_t* b = CharactersOf(right);
    for (; SameCharacter(*a, *b); ++a, ++b) {
        if (*a == u'\0') return true;
    }
    return false;
}

bool SameText(const OLECHAR* left, std::u16string_view right) {
    const char16_t* a = CharactersOf(left);
    for (const char16_t b : right) {
        if (*a == u'\0' || !SameCharacter(*a, b)) return false;
        ++a;
    }
    return *a == u'\0';
}

std::size_t SameTextHash(std::u16string_view text, std::uint64_t seed) {
    std::uint64_t hash = seed ^ text.size();
    for (; text.size() >= 4; text.remove_prefix(4)) {
        std::uint64_t characters;
        std::memcpy(&characters, text.data(), sizeof characters);
        hash = AppendToHash(hash, characters);
    }
    std::uint64_t rest = 0;
    for (const char16_t character : text) rest = rest << 16 | character;
    return FinishHash(AppendToHash(hash, rest));
}

}  // namespace reka
