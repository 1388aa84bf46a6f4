// SPDX-License-Identifier: MIT
// The 8-bit text of stored data and compound files: the code page of the running thread, Windows-1252 where threads
// have none. ASCII stands for itself in each.

#pragma once

#include <string>
#include <string_view>

namespace reka {

/// `text` in the code page. What the code page doesn't have is replaced as the platform does, by '?' off Windows. May
/// throw std::bad_alloc.
std::string NarrowText(std::u16string_view text);

/// `bytes` as wide text, zeros included. Bytes that mean nothing become what the platform makes of them. May throw
/// std::bad_alloc.
std::u16string WideText(std::string_view bytes);

}  // namespace reka
