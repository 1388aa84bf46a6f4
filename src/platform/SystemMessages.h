// SPDX-License-Identifier: MIT
// The platform's own texts for its result codes.

#pragma once

#include <string>

#include "platform/Automation.h"

namespace reka {

/// Puts the system's text for `code` in the user's language into `text`, just as the system gives it, with its line
/// end. False where the system has none; `text` is then empty. A text is cut at 1023 characters.
bool FindSystemMessage(HRESULT code, std::u16string& text);

}  // namespace reka
