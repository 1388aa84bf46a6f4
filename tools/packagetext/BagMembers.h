// SPDX-License-Identifier: MIT
// The property bag of a package as members of a document.

#pragma once

#include <string>

#include "packagetext/Document.h"
#include "packagetext/PropertyBag.h"

namespace packagetext {

/// A note for the reader of a document, which may stand in each of its objects.
constexpr const char* commentMember = "comment";

/// Puts the members of `package` into the bag: a text as a string, a list as an array of strings or of doubles, with
/// null for an absent string; an empty list as an empty value. A comment isn't put in. False with the member's name and
/// the reason in `errorText`.
bool FillBag(const Json& package, CPropertyBag& bag, std::string& errorText);

/// The way back. A value of a type that no package writes becomes null.
Json MembersFromBag(const CPropertyBag& bag);

}  // namespace packagetext
