// See SameText.h.

#include "package/SameText.h"

#include <algorithm>

namespace reka {

namespace {

constexpr char16_t Fold(char16_t character) {
    return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - u'a' + u'A') : character;
}

}  // namespace

bool SameText(std::u16string_view left, std::u16string_view right) {
    return left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(),
                                                     [](char16_t a, char16_t b) { return Fold(a) == Fold(b); });
}

}  // namespace reka
