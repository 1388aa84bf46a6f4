// SPDX-License-Identifier: MIT
// The picture of a profile, as a file.

#pragma once

#include <string>

#include "reactor/ReactorProfile.h"

namespace rekasim {

/// Draws the profile into the file at `path` (UTF-8, ends in .svg or .png), in whose place the picture comes at once
/// when it is whole. Throws ReactorFailure; then what lay at `path` is there as it was, and nothing beside it.
void DrawProfile(const ReactorProfile& profile, const std::string& title, const std::string& path);

}  // namespace rekasim
