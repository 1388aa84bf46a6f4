// SPDX-License-Identifier: MIT
// What is wrong with the package of a document, as its loading has shown.

#pragma once

#include <string>
#include <vector>

#include "packagetext/Document.h"
#include "packagetext/PropertyBag.h"

namespace packagetext {

/// The faults of `package`, a document's member of that name, from which `bag` was filled and a package has loaded:
/// what the package reported to `log`, members that it never asked for, coefficients that it found missing, and
/// identifiers that stand twice. Each is one line that begins with the path of the member or element:
/// "package.reactionType[1]: invalid value 'Kinetik'". A load that fails gives a part of them.
std::vector<std::string> FindLoadFaults(const Json& package, const CPropertyBag& bag, const CErrorLog& log);

}  // namespace packagetext
