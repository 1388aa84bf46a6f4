// SPDX-License-Identifier: MIT
// Windows-1252, which stands for the thread's code page. Its five unassigned bytes are the control characters of the
// same number, so every byte comes back as it was.

#include "platform/CodePage.h"

#include <algorithm>
#include <iterator>

namespace reka {

namespace {

/// The characters of the bytes 0x80 to 0x9F; all other bytes are the character of the same number.
constexpr char16_t upperControls[] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
static_assert(std::size(upperControls) == 32);

char NarrowCharacter(char16_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
    const auto found = std::find(std::begin(upperControls), std::end(upperControls), character);
    if (found == std::end(upperControls)) return '?';
    return static_cast<char>(0x80 + (found - std::begin(upperControls)));
}

}  // namespace

std::string NarrowText(std::u16string_view text) {
    std::string bytes(text.size(), '\0');
    std::transform(text.begin(), text.end(), bytes.begin(), NarrowCharacter);
    return bytes;
}

std::u16string WideText(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto number = static_cast<unsigned char>(byte);
        text += number >= 0x80 && number < 0xA0 ? upperControls[number - 0x80] : static_cast<char16_t>(number);
    }
    return text;
}

}  // namespace reka
