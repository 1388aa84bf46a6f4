// SPDX-License-Identifier: MIT
// What is still good in a damaged file of templates.

#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "PackageFile.h"

namespace rekatool {

struct Salvaged {
    PackageFile file;                  // the whole templates in their order, ready to be written
    std::vector<std::string> damages;  // a sentence for each thing that isn't whole; none for a sound file
};

/// Finds the templates of a file of templates that the component can read. A template behind a damaged one is taken
/// only where the sizes of the file lead to it and on to just the end of the file, so nothing is taken for a template
/// that was stored as part of something else. Bytes are counted from 0, templates from 1. Takes time in proportion to
/// the file. May throw std::bad_alloc.
Salvaged SalvageTemplates(std::span<const std::uint8_t> bytes);

}  // namespace rekatool
