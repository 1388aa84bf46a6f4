// SPDX-License-Identifier: MIT
// Documents: JSON files with a package ("package", the keys of its property bag), a material ("material")
// and, for the reader, a title, the source and what else one wants to note.

#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "packagetext/DocumentShape.h"

namespace packagetext {

/// Keeps the members in their order, so that what is saved reads like what was loaded.
using Json = nlohmann::ordered_json;

/// Paths are UTF-8. False leaves `content` empty and gives the path and the reason in `errorText`, for malformed JSON
/// with line and column. Refused is also what nests deeper than 64 or has an object of more than a million members, and
/// a member that stands twice in its object. `text` gets the file as it is, for AtLine.
bool ReadDocument(const std::string& path, Json& content, std::string& errorText);
bool ReadDocument(const std::string& path, Json& content, std::string& text, std::string& errorText);
/// The same for the text of a document, which has no path.
bool ParseDocument(std::string_view text, Json& content, std::string& errorText);
/// Parses any JSON text within `most`. False with the reason in `errorText`, for a fault of the syntax with line and
/// column in front; `content` is null then.
bool ParseJson(std::string_view text, const ShapeLimits& most, Json& content, std::string& errorText);
/// The text of a document: members on lines of their own, lists of plain values on one line. Recurses along the
/// nesting of `content`.
std::string TextOfDocument(const Json& content);
/// Replaces the file by the text of the document, as ReplaceFile.h has it.
bool WriteDocument(const std::string& path, const Json& content, std::string& errorText);

}  // namespace packagetext
