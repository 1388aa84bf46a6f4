// SPDX-License-Identifier: MIT
// A definition that passes every check, and a user who answers their questions.

#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "manager/ValidateDefinition.h"
#include "support/Builders.h"
#include "text/Utf8.h"

namespace reka::test {

using Lines = std::vector<std::string>;

class CFakeCheckUi : public IUserMessages {
public:
    MessageAnswer Show(const UserMessage& message) noexcept override {
        EXPECT_EQ(message.owner, MessageOwner::ActiveWindow);
        const bool isQuestion = (message.style & messagestyle::buttons) == messagestyle::okCancel;
        EXPECT_EQ(message.style & ~messagestyle::buttons, messagestyle::iconExclamation);
        shown.push_back((isQuestion ? "question " : "warning ") + Utf8FromUtf16(message.title) + " " +
                        Utf8FromUtf16(message.text));
        return !isQuestion || answersLeft-- > 0 ? MessageAnswer::Ok : MessageAnswer::Cancel;
    }
    Lines shown;
    int answersLeft = 1000;  // questions that are answered OK; those after them are cancelled
};

/// Two of the first make one of the second compound, both of C and H and balanced.
class Validation : public testing::Test {
protected:
    Validation() {
        definition = MakePackage({u"First", u"Second"});
        SetCompound(0, u"CH2", 14.0);
        SetCompound(1, u"C2H4", 28.0);
        reaction = &AddKinetic(*definition, u"R1", u"2*T");
        reaction->stoichiometry = {-2.0, 1.0};
    }

    void SetCompound(std::size_t index, const char16_t* formula, double weight) {
        definition->compounds[index]->formula = formula ? CBstr::Make(formula) : CBstr();
        definition->compounds[index]->molecularWeight = weight;
    }

    /// Empty if the definition is accepted, otherwise the reason.
    std::string Validate(const char16_t* name = u"Package", bool storeAllowed = false, std::int32_t version = 0) {
        std::u16string errorText = u"left from before";
        const bool isValid =
            ValidateDefinition(*definition, &store, storeAllowed, name, u"About it", version, errorText, ui);
        return isValid ? "" : Utf8FromUtf16(errorText);
    }

    std::unique_ptr<ReactionPackDefinition> definition;
    ReactionDefinition* reaction = nullptr;
    TemplateStore store;
    CFakeCheckUi ui;
};

}  // namespace reka::test
