// SPDX-License-Identifier: MIT
// An editor's user that a test plays: each dialog is answered as the test has said, and recorded as it was opened.

#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "editor/EditorUi.h"
#include "text/Utf8.h"

namespace reka::test {

class CFakeEditorUi : public IEditorUi {
public:
    /// The dialogs in their order, one line each: what it is, then all that it was opened with.
    std::vector<std::string> asked;

    MessageAnswer messageAnswer = MessageAnswer::Ok;
    /// What the user leaves in the field with OK; without one the user cancels.
    std::optional<std::u16string> text;
    /// The template that compounds come from, -1 for the file; without one the user cancels.
    std::optional<std::int32_t> compoundSource;
    OpenFileAnswer fileAnswer = OpenFileAnswer::Chosen;  // with the path `text`
    bool isHelpShown = true;

    // What the user does in a dialog, and whether it ends with OK; without a function the user cancels. `onMessage` is
    // what happens while a box is open.
    std::function<bool(const MaterialCompounds& compounds, ReactionPackDefinition& definition)> inCompoundsOfMaterial;
    std::function<bool(ReactionPackDefinition& definition)> inCompoundsOfFile;
    std::function<bool(ReactionPackDefinition& definition, ITemplateSource& templates)> inTemplate;
    std::function<bool(ITemplateSource& templates, std::u16string& templateName)> inTemplateNames;
    std::function<void()> onMessage;

    const COwnArithmetic& Arithmetic() const override { return arithmetic; }

    MessageAnswer Show(const UserMessage& message) noexcept override {
        EXPECT_EQ(message.owner, MessageOwner::ActiveWindow);
        try {
            Record("message", {message.title, message.text}, std::to_string(message.style));
        } catch (const std::bad_alloc&) {
            return MessageAnswer::None;
        }
        if (onMessage) onMessage();
        return messageAnswer;
    }

    bool EditPackage(ReactionPackDefinition& /*definition*/) noexcept override {
        ADD_FAILURE() << "no dialog opens the shell on a package";
        return false;
    }
    void EditTemplates(ITemplateSource& /*templates*/) noexcept override {
        ADD_FAILURE() << "no dialog opens the one of the templates";
    }

    bool AskForText(const std::u16string& title, CBstr& inputText) override {
        Record("text", {title, std::u16string(inputText.View())}, inputText.IsAbsent() ? "absent" : "");
        if (!text) return false;
        inputText = text->empty() ? CBstr() : CBstr::Make(*text);
        return true;
    }

    bool EditExpression(const ReactionPackDefinition& definition, const std::u16string& item,
                        const std::u16string& unit, std::u16string& expression) override {
        Record("expression", {std::u16string(definition.name.View()), item, unit, expression}, "");
        return TakeText(expression);
    }

    bool AskForRate(const ReactionDefinition& reaction, const ReactionPackDefinition& definition,
                    std::u16string& rateText) override {
        Record("rate", {std::u16string(definition.name.View()), std::u16string(reaction.id.View())}, "");
        return TakeText(rateText);
    }

    bool AskForCompoundSource(const std::vector<std::u16string>& templateNames,
                              std::int32_t& selectedTemplate) override {
        Record("compound source", templateNames, "");
        if (compoundSource) selectedTemplate = *compoundSource;
        return compoundSource.has_value();
    }

    bool AddCompoundsOfMaterial(const MaterialCompounds& compounds, ReactionPackDefinition& definition) override {
        Record("compounds of material", compounds.names, "");
        return inCompoundsOfMaterial && inCompoundsOfMaterial(compounds, definition);
    }

    bool AddCompoundsOfFile(ReactionPackDefinition& definition) override {
        Record("compounds of file", {definition.pcdFile}, "");
        return inCompoundsOfFile && inCompoundsOfFile(definition);
    }

    OpenFileAnswer AskForFile(const OpenFileRequest& request, std::u16string& path) override {
        std::vector<std::u16string> texts = {request.title, path, request.defaultExtension};
        for (const FileFilter& filter : request.filters) {
            texts.emplace_back(filter.label);
            texts.emplace_back(filter.pattern);
        }
        Record("file", texts, std::to_string(request.longestPath));
        if (fileAnswer == OpenFileAnswer::Chosen) TakeText(path);
        return fileAnswer;
    }

    bool EditTemplate(ReactionPackDefinition& definition, ITemplateSource& templates) override {
        Record("template", {std::u16string(definition.name.View())}, "");
        return inTemplate && inTemplate(definition, templates);
    }

    bool AskForTemplateToLoad(ITemplateSource& templates, std::u16string& templateName) override {
        Record("load", {templateName}, "");
        return inTemplateNames && inTemplateNames(templates, templateName);
    }

    bool AskForTemplateToStore(ITemplateSource& templates, std::u16string& templateName) override {
        Record("store", {templateName}, "");
        return inTemplateNames && inTemplateNames(templates, templateName);
    }

    bool ShowHelp(const std::u16string& path, const std::u16string& topic) override {
        Record("help", {path, topic}, "");
        return isHelpShown;
    }

private:
    const COwnArithmetic arithmetic;

    bool TakeText(std::u16string& target) const {
        if (text) target = *text;
        return text.has_value();
    }

    void Record(const char* kind, const std::vector<std::u16string>& texts, const std::string& note) {
        std::string line = kind;
        for (const std::u16string& part : texts) line += "|" + Utf8FromUtf16(part);
        asked.push_back(note.empty() ? line : line + "|" + note);
    }
};

}  // namespace reka::test
