// SPDX-License-Identifier: MIT
// What stands in the registry, as lines that can be compared.

#pragma once

#include <set>
#include <string>

namespace host {

/// Keys by their paths, such as "HKLM\Classes\CLSID", and values as "path | name (type) = text".
using Entries = std::set<std::wstring>;

/// The software of the machine and of the user, under Wine; on Windows, where other programs write meanwhile, what the
/// component writes alone. Of other classes than the component's only the keys right below
/// the machine's classes are told, unless it is to be thorough: they are many, and slow to read.
Entries ReadRegistry(bool isThorough = false);

/// What `more` has and `fewer` hasn't.
Entries Difference(const Entries& more, const Entries& fewer);

}  // namespace host
