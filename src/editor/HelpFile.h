// SPDX-License-Identifier: MIT
// The help file, which lies beside the module.

#pragma once

#include <string>

#include "platform/UserMessages.h"

namespace reka {

/// Where its contents begin.
constexpr const char16_t* firstHelpTopic = u"REKA/reka.htm";

std::u16string HelpFilePath();

/// Tells the user that the help can't be shown.
void TellHelpIsMissing(IUserMessages& messages);

}  // namespace reka
