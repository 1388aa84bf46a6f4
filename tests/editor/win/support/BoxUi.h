// SPDX-License-Identifier: MIT
// The editor's questions to its user with real message boxes; every other dialog is answered as the test has said.

#pragma once

#include "editor/win/support/Driver.h"
#include "support/FakeEditorUi.h"

namespace reka::test {

class CBoxUi : public CFakeEditorUi {
public:
    MessageAnswer Show(const UserMessage& message) noexcept override { return SystemMessageBoxes().Show(message); }
};

/// The box of an input that won't do.
inline ExpectedBox ErrorBox(const std::u16string& text) {
    return {u"Error:", text, messagestyle::ok | messagestyle::iconError};
}

}  // namespace reka::test
