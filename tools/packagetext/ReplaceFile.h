// SPDX-License-Identifier: MIT
// How the programs beside the component write their files.

#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "platform/Files.h"

namespace packagetext {

/// Puts a file with `content` in the place of what lies at `path`, which is UTF-8: at once, so that whoever reads
/// meanwhile finds the old one or the new one, and for good. False: the old one is there as it was, and `errorText`
/// says which file can't be written, and why.
bool ReplaceFile(reka::IFileSystem& files, const std::string& path, std::span<const std::uint8_t> content,
                 std::string& errorText);
bool ReplaceFile(reka::IFileSystem& files, const std::string& path, const std::string& content, std::string& errorText);

}  // namespace packagetext
