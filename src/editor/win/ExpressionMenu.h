// SPDX-License-Identifier: MIT
// The menu of the expression editor: what all text fields have there, and what can be put into the text.

#pragma once

#include <vector>

#include <windows.h>

#include "editor/ExpressionOffers.h"

namespace reka {

/// The commands of a text field, as the menu numbers them.
enum class TextCommand : int { None, Undo, Redo, Cut, Copy, Paste, Delete, SelectAll };

/// Which of them can be used now.
struct TextCommandsEnabled {
    bool undo = false;
    bool redo = false;
    bool selection = false;  // cut, copy and delete
    bool paste = false;
    bool all = false;
};

/// What was chosen: a command, or an offer of a group, or nothing.
struct MenuChoice {
    TextCommand command = TextCommand::None;
    const ExpressionOffer* offer = nullptr;
};

/// Shows the menu at that place of the screen until the user has chosen or given up. Without `enabled` it has the
/// offers alone. The choice refers to `groups`.
MenuChoice ShowExpressionMenu(HWND owner, POINT place, const TextCommandsEnabled* enabled,
                              const std::vector<OfferGroup>& groups);

}  // namespace reka
