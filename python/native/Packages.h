// SPDX-License-Identifier: MIT
// Packages out of whatever holds them: files of templates, stored blocks and documents.

#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "records/Definition.h"

namespace rekapython {

/// What can't be read or calculated, in the component's words (UTF-8).
class PackageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

using Definitions = std::vector<std::unique_ptr<reka::ReactionPackDefinition>>;

/// The packages of a file: those of a file of templates in its order, else one, of a stored block, of a block behind
/// its size, or of a document with a member "package". `path` is UTF-8. `notes` gets what the component would tell its
/// user in a box. Throws a PackageError for what it refuses. One thread at a time.
Definitions ReadPackages(const std::string& path, std::vector<std::string>& notes);

/// The package of one stored block; the rest as with ReadPackages.
std::unique_ptr<reka::ReactionPackDefinition> ReadBlock(std::span<const std::uint8_t> block,
                                                        std::vector<std::string>& notes);

/// The block of a package, of the newest version. Throws a PackageError.
std::vector<std::uint8_t> WriteBlock(const reka::ReactionPackDefinition& definition);

/// Where the user's templates lie, whether or not there are any; empty if the system doesn't tell. UTF-8.
std::string UserTemplatesPath();

}  // namespace rekapython
