// SPDX-License-Identifier: MIT
// The two dialogs that ask for the name of a template: of one to load, and of one to store under.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "manager/TemplateSource.h"
#include "platform/UserMessages.h"

namespace reka {

enum class TemplateNamePurpose { Load, Store };

/// One of the dialogs. Its list sorts the names as it shows them; each is told by its position in `Names`.
class CTemplateNames {
public:
    /// `name` is the suggestion. `asked` outlives this.
    CTemplateNames(TemplateNamePurpose use, std::u16string name, IUserMessages& asked);

    /// Opening: reads the names of the templates. Where they can't be had the list is empty, and the user is told only
    /// if what came for a list isn't one.
    void Fill(ITemplateSource& templates);

    /// In the order of the templates.
    const std::vector<std::u16string>& Names() const { return names; }

    /// The position of the suggestion among the names, by letters of any case. -1 if it isn't there: the dialog to load
    /// selects the first row of its sorted list then. The dialog to store shows the suggestion itself in its field.
    std::int32_t SuggestedPosition() const { return suggestedPosition; }

    /// OK, with the text of the field. True: the dialog ends, and `TemplateName` is that text. False for an empty text,
    /// of which the user has been told; the dialog stays open.
    bool Accept(std::u16string_view text);

    /// The suggestion at first, then the answer.
    const std::u16string& TemplateName() const { return templateName; }

private:
    TemplateNamePurpose purpose;
    std::u16string templateName;
    IUserMessages& ui;
    std::vector<std::u16string> names;
    std::int32_t suggestedPosition = -1;
};

}  // namespace reka
