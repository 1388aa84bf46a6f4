// SPDX-License-Identifier: MIT
// Forms of a package that the fuzzers begin with and that nothing else writes.

#pragma once

#include <cstdint>
#include <vector>

#include "records/Definition.h"

namespace reka::fuzz {

/// The block of `definition` as version 0, 1 or 2 had it.
std::vector<std::uint8_t> OldBlock(const ReactionPackDefinition& definition, std::uint32_t version);

/// The answers of a bag into which `definition` was written, with an error log; BagAnswers.h has their form.
std::vector<std::uint8_t> BagAnswers(const ReactionPackDefinition& definition);

}  // namespace reka::fuzz
