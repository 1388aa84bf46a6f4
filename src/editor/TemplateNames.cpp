// SPDX-License-Identifier: MIT
// The names come as the manager object gives them to a simulator, in an array, which is read as every array is that
// comes from an object: by its type and its bounds, and with a message where they won't do.

#include "editor/TemplateNames.h"

#include <utility>

#include "capeopen/ArrayHelpers.h"
#include "platform/SameText.h"

namespace reka {

CTemplateNames::CTemplateNames(TemplateNamePurpose use, std::u16string name, IUserMessages& asked)
    : purpose(use), templateName(std::move(name)), ui(asked) {}

void CTemplateNames::Fill(ITemplateSource& templates) {
    names.clear();
    suggestedPosition = -1;
    CVariant list;
    if (FAILED(templates.GetListOfReactionsPackages(&list.Get()))) return;
    std::u16string errorText;
    const std::int32_t count = CheckArrayVariant(list.Get(), VT_BSTR, errorText);
    if (count < 0) {
        ui.ShowError(errorText);
        return;
    }
    if (count == 0) return;  // no array at all
    ReadStringArray(names, list.Get());
    for (std::size_t i = 0; i < names.size() && suggestedPosition < 0; ++i) {
        if (SameText(names[i], templateName)) suggestedPosition = static_cast<std::int32_t>(i);
    }
}

bool CTemplateNames::Accept(std::u16string_view text) {
    if (text.empty()) {
        ui.ShowError(purpose == TemplateNamePurpose::Load ? u"No reaction package template name selected."
                                                          : u"A template name must be specified.");
        return false;
    }
    templateName = text;
    return true;
}

}  // namespace reka
