// SPDX-License-Identifier: MIT
// The button of the shell and F1 in every dialog open the same file, and say the same where that fails.

#include "editor/HelpFile.h"

#include "records/Definition.h"

namespace reka {

std::u16string HelpFilePath() {
    return ComponentFolder() + u"NAVO.chm";
}

void TellHelpIsMissing(IUserMessages& messages) {
    messages.ShowMessage(u"Failed to load HTML Help file " + HelpFilePath(), u"Error starting Help:",
                         messagestyle::ok | messagestyle::iconError);
}

}  // namespace reka
