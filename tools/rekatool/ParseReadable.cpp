// SPDX-License-Identifier: MIT
// The text is walked through once for its shape, and only then made a value: a member that stands twice is what a merge
// of two branches leaves, and what copies a value walks it by recursion. Whether bytes are such a text at all is seen
// from what stored packages never are.

#include "ParseReadable.h"

#include <algorithm>
#include <string_view>

#include "packagetext/DocumentShape.h"

namespace rekatool {

namespace {

// The form itself nests 7 deep and has objects of up to 13 members.
constexpr packagetext::ShapeLimits limits = {16, 32};

}  // namespace

bool IsReadable(std::span<const std::uint8_t> bytes) {
    constexpr std::uint8_t byteOrderMark[] = {0xEF, 0xBB, 0xBF};
    if (bytes.size() >= 3 && std::equal(std::begin(byteOrderMark), std::end(byteOrderMark), bytes.begin())) {
        bytes = bytes.subspan(3);
    }
    const auto isBlank = [](std::uint8_t byte) { return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n'; };
    const auto first = std::find_if_not(bytes.begin(), bytes.end(), isBlank);
    return first != bytes.end() && *first == '{' && std::find(first, bytes.end(), 0) == bytes.end();
}

bool ParseReadable(std::span<const std::uint8_t> bytes, Json& content, std::string& errorText) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return packagetext::ParseJson(text, limits, content, errorText);
}

}  // namespace rekatool
