// SPDX-License-Identifier: MIT
// The one sentence for want of memory, which must be told without any.

#pragma once

#include <string>

namespace reka {

/// Makes `text` "out of memory", or empty if there isn't even memory for that.
inline void TellOutOfMemory(std::u16string& text) noexcept {
    try {
        text = u"out of memory";
    } catch (...) {
        text.clear();
    }
}

}  // namespace reka
