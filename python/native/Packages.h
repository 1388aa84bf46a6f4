// SPDX-License-Identifier: MIT
// Packages on their way out, and where those of the user lie. How they come in is rekatool's LoadDefinitions.h.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "records/Definition.h"
#include "rekatool/LoadDefinitions.h"

namespace rekapython {

/// What can't be read or calculated, in the component's words (UTF-8).
using PackageError = rekatool::CLoadError;

/// The block of a package, of the newest version. Throws a PackageError.
std::vector<std::uint8_t> WriteBlock(const reka::ReactionPackDefinition& definition);

/// Where the user's templates lie, whether or not there are any; empty if the system doesn't tell. UTF-8.
std::string UserTemplatesPath();

}  // namespace rekapython
