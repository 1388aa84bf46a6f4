// SPDX-License-Identifier: MIT
// The shape of a JSON text, and where in it a member stands.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace packagetext {

/// How large a text may be so that what is built of it can be walked by recursion, and its objects searched.
struct ShapeLimits {
    std::size_t nesting = 0;
    std::size_t members = 0;  // of one object
};

/// False with the reason in `errorText` for a text of more nesting or larger objects, and for a member that stands
/// twice in its object, of which one would be lost. True as well where the syntax has a fault, which the parser words.
/// Takes no longer than parsing and builds nothing.
bool CheckShape(std::string_view text, const ShapeLimits& limits, std::string& errorText);

/// `sentence` behind "line 3: ", where a sentence that begins with the path of a member, such as
/// "package.reactionType[1]: ...", has the line on which that member's name or that element stands, counted from 1;
/// where the text has no such member, the line of the nearest one around it. `text` is a good one.
std::string AtLine(std::string_view text, const std::string& sentence);

}  // namespace packagetext
