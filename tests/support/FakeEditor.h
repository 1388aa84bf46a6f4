// SPDX-License-Identifier: MIT
// The editor's windows as a test replaces them: what the user does in a dialog is a function.

#pragma once

#include <functional>

#include "package/Edit.h"

namespace reka::test {

/// In the place of the windows as long as it lives. Without a function the user cancels, or closes, at once.
class CFakeEditor final : public IEditor {
public:
    CFakeEditor() : before(ReplaceEditor(this)) {}
    ~CFakeEditor() override { ReplaceEditor(before); }
    CFakeEditor(const CFakeEditor&) = delete;
    CFakeEditor& operator=(const CFakeEditor&) = delete;

    std::function<bool(ReactionPackDefinition& definition)> inPackage;
    std::function<void(ITemplateSource& templates)> inTemplates;
    int timesOpened = 0;

    bool EditPackage(ReactionPackDefinition& definition) noexcept override {
        ++timesOpened;
        return inPackage && inPackage(definition);
    }
    void EditTemplates(ITemplateSource& templates) noexcept override {
        ++timesOpened;
        if (inTemplates) inTemplates(templates);
    }

private:
    IEditor* before;
};

}  // namespace reka::test
