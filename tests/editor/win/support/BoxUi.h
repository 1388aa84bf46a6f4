// The editor's questions to its user with real message boxes; every other dialog is answered as the test has said.

#pragma once

#include "editor/win/support/Driver.h"
#include "support/FakeEditorUi.h"

namespace reka::test {

class CBoxUi : public CFakeEditorUi {
public:
    MessageAnswer ShowMessage(const std::u16string& message, const std::u16string& title,
                              std::uint32_t style) override {
        return SystemMessageBoxes().Show({message, title, style, MessageOwner::ActiveWindow});
    }
};

/// The box of an input that won't do.
inline ExpectedBox ErrorBox(const std::u16string& text) {
    return {u"Error:", text, messagestyle::ok | messagestyle::iconError};
}

}  // namespace reka::test
