// SPDX-License-Identifier: MIT
// Which messages of the source a test asserts, word for word.

#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace floors {

/// The string literals of a piece of C++, those side by side as one, without comments, characters and the names of
/// included files. Escapes stay as they are written, but for quotes.
std::vector<std::string> ReadLiterals(const std::string& code);

/// Whether a literal is meant for a person: three words at least, with a blank.
bool IsMessage(const std::string& literal);

/// The messages of the sources in `folder` that no literal of the sources in `tests` holds, each as "path: message".
std::set<std::string> FindMessagesWithoutTest(const std::filesystem::path& root, const std::string& folder,
                                              const std::string& tests);

/// The messages that a document excuses: the first column of each row such as "| \"text\" | reason |".
std::set<std::string> ReadExcusedMessages(const std::filesystem::path& document);

}  // namespace floors
