// SPDX-License-Identifier: MIT
// What the fuzzers share.

#pragma once

#include "records/Definition.h"

namespace reka::fuzz {

/// Messages go nowhere from here on, and questions are answered yes.
void SilenceMessages();

/// Uses a definition that was read, whatever is in it: copies it, computes its trees, and stores it. Aborts unless both
/// evaluators come to the same result, what was stored reads back to the same bytes, and what a property bag led to
/// is written to the next one the same.
void UseDefinition(ReactionPackDefinition& definition);

}  // namespace reka::fuzz
