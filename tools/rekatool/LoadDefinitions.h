// SPDX-License-Identifier: MIT
// Packages as the component would have them in memory, out of whatever holds them.

#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "records/Definition.h"

namespace rekatool {

/// What can't be loaded, in a sentence (UTF-8).
class CLoadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

using Definitions = std::vector<std::unique_ptr<reka::ReactionPackDefinition>>;

/// The packages of a file: those of a file of templates in its order, else one, of a stored block, of a block behind
/// its size, or of a document with a member "package"; or those of the readable form of such a file. `path` is UTF-8.
/// `notes` gets what the component would tell its user in a box. Throws a CLoadError that begins with the path. Not
/// while a package or a manager is at work.
Definitions LoadDefinitions(const std::string& path, std::vector<std::string>& notes);

/// The package of one stored block; the rest as above, without a path.
std::unique_ptr<reka::ReactionPackDefinition> LoadDefinition(std::span<const std::uint8_t> block,
                                                             std::vector<std::string>& notes);

}  // namespace rekatool
