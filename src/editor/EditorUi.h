// SPDX-License-Identifier: MIT
// What the editor asks its user: the seam of package/Edit.h with all that one dialog opens above another. The windows
// fulfil it by dialogs, and a test answers and records.

#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "compounds/MaterialCompounds.h"
#include "manager/TemplateSource.h"
#include "package/Edit.h"
#include "platform/Holders.h"
#include "platform/HostArithmetic.h"
#include "platform/UserMessages.h"
#include "records/Definition.h"

namespace reka {

/// What the dialog that opens a file offers. The file must exist.
struct FileFilter {
    const char16_t* label;
    const char16_t* pattern;
};
struct OpenFileRequest {
    const char16_t* title;
    std::span<const FileFilter> filters;
    const char16_t* defaultExtension;
    std::size_t longestPath;  // in characters, without a terminator
};
enum class OpenFileAnswer { Chosen, Cancelled, NoMemory };

/// The dialogs that belong upon those of IEditor, and the messages over them. Every dialog is modal: its call returns
/// when the user has ended it.
class IEditorUi : public IEditor, public IUserMessages {
public:
    /// The settings under which calls to objects of the simulator run: those of its call that has opened the editor.
    virtual const COwnArithmetic& Arithmetic() const = 0;

    /// Asks for one line of text, `inputText` to begin with. True for OK, with the text of the field, absent if it is
    /// empty; on anything else `inputText` stays as it was. Whether the text will do is for the caller to say.
    virtual bool AskForText(const std::u16string& title, CBstr& inputText) = 0;

    /// Opens the expression editor on `expression`, with `item` and `unit` shown beside it. True for OK, with the text
    /// of the field, faulty or not; on anything else `expression` stays as it was.
    virtual bool EditExpression(const ReactionPackDefinition& definition, const std::u16string& item,
                                const std::u16string& unit, std::u16string& expression) = 0;

    /// Opens the rate wizard for a reaction of `definition`. True for OK, with its text in `rateText`; on anything else
    /// `rateText` stays as it was.
    virtual bool AskForRate(const ReactionDefinition& reaction, const ReactionPackDefinition& definition,
                            std::u16string& rateText) = 0;

    /// Asks whether compounds come from the compound file or from one of the simulator's material templates. True for
    /// OK, with the index of the template, -1 for the file, in `selectedTemplate`.
    virtual bool AskForCompoundSource(const std::vector<std::u16string>& templateNames,
                                      std::int32_t& selectedTemplate) = 0;

    /// Offers the compounds of a material. True for OK, with the chosen ones added to `definition`.
    virtual bool AddCompoundsOfMaterial(const MaterialCompounds& compounds, ReactionPackDefinition& definition) = 0;

    /// Offers the compounds of the file `pcdFile` of `definition`, or of another one that the user chooses, which
    /// `pcdFile` then names whatever the answer. True for OK, with the chosen ones added to `definition`.
    virtual bool AddCompoundsOfFile(ReactionPackDefinition& definition) = 0;

    /// Asks for a file, `path` to begin with, which may be empty. `path` changes for a chosen one alone.
    virtual OpenFileAnswer AskForFile(const OpenFileRequest& request, std::u16string& path) = 0;

    /// Opens the edit shell on a template. True for OK: `definition` has passed its check.
    virtual bool EditTemplate(ReactionPackDefinition& definition, ITemplateSource& templates) = 0;

    /// Asks for the name of a template, `templateName` to begin with: of one that there is, or any name to store under.
    /// True for OK, with a name that isn't empty.
    virtual bool AskForTemplateToLoad(ITemplateSource& templates, std::u16string& templateName) = 0;
    virtual bool AskForTemplateToStore(ITemplateSource& templates, std::u16string& templateName) = 0;

    /// Opens a help file at one of its topics, without waiting for its end. False if it can't be shown.
    virtual bool ShowHelp(const std::u16string& path, const std::u16string& topic) = 0;
};

}  // namespace reka
