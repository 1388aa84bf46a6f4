// SPDX-License-Identifier: MIT
// The bytes of pure compound data files.

#pragma once

#include <bit>
#include <cstdint>
#include <string_view>
#include <vector>

namespace reka::test {

using PcdBytes = std::vector<std::uint8_t>;

/// Puts a field into a record: its length byte and its characters; the rest of the field is blank.
inline void PutPcdField(PcdBytes& record, std::size_t offset, std::string_view text) {
    record[offset] = static_cast<std::uint8_t>(text.size());
    for (std::size_t i = 0; i < 50; ++i) {
        record[offset + 1 + i] = static_cast<std::uint8_t>(i < text.size() ? text[i] : ' ');
    }
}

/// Appends a record of 1024 bytes; the header, if the file has none yet, comes first.
inline void AddPcdRecord(PcdBytes& file, std::string_view name, std::string_view formula, float weight,
                         std::string_view cas) {
    if (file.empty()) {
        file.resize(1024);
        file[1] = 0x04;  // the length of a record, little-endian
    }
    PcdBytes record(1024);
    PutPcdField(record, 3, name);
    PutPcdField(record, 54, formula);
    PutPcdField(record, 839, cas);
    const auto bits = std::bit_cast<std::uint32_t>(weight);
    for (std::size_t i = 0; i < 4; ++i) record[138 + i] = static_cast<std::uint8_t>(bits >> 8 * i);
    file.insert(file.end(), record.begin(), record.end());
}

}  // namespace reka::test
