// SPDX-License-Identifier: MIT
// Columns of text that line up.

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace rekasim {

using TableRow = std::vector<std::string>;

/// Writes the rows, each line with `indent` blanks in front and none at its end, the columns two blanks apart. Numbers
/// are told from texts by the caller: the first `textColumns` columns are flush left, the others flush right. An empty
/// row becomes a line of dashes below each column.
void WriteAligned(std::ostream& out, const std::vector<TableRow>& rows, std::size_t textColumns, std::size_t indent);

}  // namespace rekasim
