// SPDX-License-Identifier: MIT
// Paths that are longer than what the system takes as they are.

#pragma once

#include <string>

namespace rekadoctor {

/// `path`, which is whole and may have slashes either way, in the form in which the system takes 260 characters and
/// more. A shorter one, one that isn't whole, and one that has that form already come back as they are.
std::string LongPath(const std::string& path);

}  // namespace rekadoctor
