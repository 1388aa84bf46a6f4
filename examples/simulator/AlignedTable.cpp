// SPDX-License-Identifier: MIT
// The widths of all columns come first, so rows are gathered before the first is written. Widths are counted in
// characters, not in bytes: a formula or a name may have letters beyond ASCII. Blanks at the end of a line are taken
// off, as they would show in every comparison of outputs.

#include "AlignedTable.h"

#include <algorithm>
#include <ostream>

namespace rekasim {

namespace {

/// Characters of UTF-8 text: the bytes that don't continue one.
std::size_t Length(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

std::vector<std::size_t> ColumnWidths(const std::vector<TableRow>& rows) {
    std::vector<std::size_t> widths;
    for (const TableRow& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], Length(row[i]));
    }
    return widths;
}

}  // namespace

void WriteAligned(std::ostream& out, const std::vector<TableRow>& rows, std::size_t textColumns, std::size_t indent) {
    const std::vector<std::size_t> widths = ColumnWidths(rows);
    for (const TableRow& row : rows) {
        std::string line(indent, ' ');
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const std::string cell = row.empty() ? std::string(widths[i], '-') : i < row.size() ? row[i] : "";
            const std::string padding(widths[i] - Length(cell), ' ');
            if (i > 0) line += "  ";
            line += i < textColumns ? cell + padding : padding + cell;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << "\n";
    }
}

}  // namespace rekasim
