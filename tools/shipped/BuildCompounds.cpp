// SPDX-License-Identifier: MIT
// Builds the compound file that ships beside the module out of the table of compounds:
//     build_compounds OUTPUT TABLE
// The layout is that of compounds/LoadPcdFile.h, with records of 1024 bytes; what the reader passes over is zero.

#include <bit>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "packagetext/ReplaceFile.h"

namespace {

constexpr std::size_t recordLength = 1024;
constexpr std::size_t fieldSize = 50;

using Record = std::vector<std::uint8_t>;

/// A length byte and the characters, filled up with blanks. False if they don't fit.
bool PutField(Record& record, std::size_t offset, std::string_view text) {
    if (text.empty() || text.size() > fieldSize) return false;
    record[offset] = static_cast<std::uint8_t>(text.size());
    for (std::size_t i = 0; i < fieldSize; ++i) {
        record[offset + 1 + i] = static_cast<std::uint8_t>(i < text.size() ? text[i] : ' ');
    }
    return true;
}

bool PutWeight(Record& record, std::string_view text) {
    float weight = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), weight);
    if (error != std::errc() || end != text.data() + text.size() || !(weight > 0)) return false;
    const auto bits = std::bit_cast<std::uint32_t>(weight);
    for (std::size_t i = 0; i < 4; ++i) record[138 + i] = static_cast<std::uint8_t>(bits >> 8 * i);
    return true;
}

std::vector<std::string_view> SplitAtTabs(std::string_view line) {
    std::vector<std::string_view> parts;
    for (std::size_t tab = line.find('\t'); tab != std::string_view::npos; tab = line.find('\t')) {
        parts.push_back(line.substr(0, tab));
        line.remove_prefix(tab + 1);
    }
    parts.push_back(line);
    return parts;
}

/// Appends the record of one line of the table.
bool AddCompound(std::string_view line, std::vector<std::uint8_t>& file) {
    const auto parts = SplitAtTabs(line);
    Record record(recordLength);
    if (parts.size() != 4 || !PutField(record, 3, parts[0]) || !PutField(record, 54, parts[1]) ||
        !PutWeight(record, parts[2]) || !PutField(record, 839, parts[3])) {
        return false;
    }
    file.insert(file.end(), record.begin(), record.end());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("build_compounds OUTPUT TABLE\n", stderr);
        return 2;
    }
    std::ifstream table(argv[2], std::ios::binary);
    std::string line;
    if (!std::getline(table, line)) {  // the headings
        std::fprintf(stderr, "%s can't be read\n", argv[2]);
        return 1;
    }
    std::vector<std::uint8_t> file(recordLength);
    file[0] = recordLength & 0xFF;
    file[1] = recordLength >> 8;
    while (std::getline(table, line)) {
        if (AddCompound(line, file)) continue;
        std::fprintf(stderr, "%s: not a compound: %s\n", argv[2], line.c_str());
        return 1;
    }
    std::string reason;
    if (packagetext::ReplaceFile(reka::SystemFiles(), argv[1], file, reason)) return 0;
    std::fprintf(stderr, "%s\n", reason.c_str());
    return 1;
}
