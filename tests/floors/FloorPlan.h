// SPDX-License-Identifier: MIT
// The floors of the source, as cmake/Floors.cmake has them, and the includes that don't keep to them.

#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace floors {

/// One row of the table: a folder, and the floors whose headers it may include.
struct Floor {
    std::string folder;
    std::vector<std::string> below;
    bool operator==(const Floor&) const = default;
};

/// The bytes of a file; none for one that can't be read.
std::string ReadText(const std::filesystem::path& file);

/// The rows of the list `name` in a file such as cmake/Floors.cmake, in their order.
std::vector<Floor> ReadTable(const std::filesystem::path& file, const std::string& name);

/// The rows of the drawing in a document: of each line such as "| `package/` | platform, records | ... |" the first two
/// columns, in the order of a table, from the ground up.
std::vector<Floor> ReadDrawing(const std::filesystem::path& document);

/// What is wrong with the includes below `root`: a line for each that leads to a floor that its own doesn't stand on,
/// with both files. Floors lie below `root`/src, the folders of `companions` below `root` itself.
std::vector<std::string> FindForbiddenIncludes(const std::filesystem::path& root, const std::vector<Floor>& table,
                                               const std::vector<Floor>& companions);

/// A line for each direction that a table allows and no include takes.
std::vector<std::string> FindUnusedDirections(const std::filesystem::path& root, const std::vector<Floor>& table,
                                              const std::vector<Floor>& companions);

/// The folders below `root`, relative to it, with the number of their own files.
std::map<std::string, std::size_t> CountFiles(const std::filesystem::path& root);

}  // namespace floors
