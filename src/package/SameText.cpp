// See SameText.h.

#include "package/SameText.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace reka {

namespace {

constexpr char16_t Fold(char16_t character) {
    return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - u'a' + u'A') : character;
}

constexpr bool SameCharacter(char16_t left, char16_t right) {
    return left == right || Fold(left) == Fold(right);
}

const char16_t* CharactersOf(const OLECHAR* text) {
    return text ? reinterpret_cast<const char16_t*>(text) : u"";
}

// FNV-1a over the folded characters.
constexpr std::uint32_t hashStart = 2166136261U;

constexpr std::uint32_t AppendToHash(std::uint32_t hash, char16_t character) {
    return (hash ^ Fold(character)) * 16777619U;
}

constexpr std::size_t FinishHash(std::uint32_t hash) {
    return hash ^ hash >> 15;  // tables take the lower bits
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

bool SameUsualText(BSTR left, std::u16string_view right) {
    const std::size_t size = right.size();
    if (size != 0 && SysStringLen(left) == size && std::memcmp(left, right.data(), size * sizeof(OLECHAR)) == 0) {
        return true;
    }
    return SameText(left, right);
}

bool SameUsualText(BSTR left, BSTR right) {
    const std::size_t size = SysStringLen(right);
    if (size != 0 && SysStringLen(left) == size && std::memcmp(left, right, size * sizeof(OLECHAR)) == 0) return true;
    return SameText(left, right);
}

std::size_t SameTextHash(const OLECHAR* text) {
    std::uint32_t hash = hashStart;
    for (const char16_t* c = CharactersOf(text); *c != u'\0'; ++c) hash = AppendToHash(hash, *c);
    return FinishHash(hash);
}

std::size_t SameTextHash(std::u16string_view text) {
    std::uint32_t hash = hashStart;
    for (const char16_t character : text) hash = AppendToHash(hash, character);
    return FinishHash(hash);
}

}  // namespace reka
