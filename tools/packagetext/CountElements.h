// SPDX-License-Identifier: MIT
// The elements of a compound of a document.

#pragma once

#include <map>
#include <string>
#include <string_view>

namespace packagetext {

/// The atoms of each element in `formula`, a structure formula as documents and compound files have it, by symbol.
/// False for a formula that is empty or can't be read.
bool CountElements(std::u16string_view formula, std::map<std::u16string, double>& atoms);

}  // namespace packagetext
