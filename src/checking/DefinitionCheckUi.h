// What a check of a definition has to ask its user.

#pragma once

#include <string>

namespace reka {

class IDefinitionCheckUi {
public:
    virtual ~IDefinitionCheckUi() = default;
    /// Tells the user something that ends nothing.
    virtual void ShowWarning(const std::u16string& text, const std::u16string& caption) = 0;
    /// Asks for OK or Cancel; true for OK.
    virtual bool AskToContinue(const std::u16string& text, const std::u16string& caption) = 0;
};

}  // namespace reka
