// SPDX-License-Identifier: MIT
// The form of a file shows in its first bytes: a text begins with a brace, which no count and no size does that a file
// could hold. What a document says wrongly is refused whole, as rekasim does, since a package passes over it and
// calculates with the rest.

#include "LoadDefinitions.h"

#include "PackageFile.h"
#include "ParseReadable.h"
#include "packagetext/BagMembers.h"
#include "packagetext/DocumentShape.h"
#include "packagetext/LoadFaults.h"
#include "packagetext/ReadWhole.h"
#include "persistence/ReadBag.h"
#include "persistence/ReadStoredDefinition.h"
#include "platform/Files.h"
#include "platform/UserMessages.h"
#include "text/Utf8.h"

namespace rekatool {

namespace {

/// Keeps what the component tells its user, while it lives.
class CNotes : public reka::IUserMessages {
public:
    explicit CNotes(std::vector<std::string>& target) : notes(target), before(reka::ReplaceUserMessages(this)) {}
    ~CNotes() override { reka::ReplaceUserMessages(before); }
    CNotes(const CNotes&) = delete;
    CNotes& operator=(const CNotes&) = delete;

    reka::MessageAnswer Show(const reka::UserMessage& message) noexcept override {
        try {
            notes.push_back(reka::Utf8FromUtf16(message.text));
        } catch (...) {
            return reka::MessageAnswer::None;
        }
        return reka::MessageAnswer::Ok;
    }

private:
    std::vector<std::string>& notes;
    reka::IUserMessages* before;
};

Bytes ReadBytes(const std::string& path) {
    const auto file = reka::Files().OpenForReading(reka::Utf16FromUtf8(path));
    if (!file) throw CLoadError("the file can't be opened");
    Bytes bytes = packagetext::ReadWhole(*file);
    if (file->HasFailed()) throw CLoadError("the file can't be read");
    return bytes;
}

/// The package of a document whose `content` is that of `text`.
std::unique_ptr<reka::ReactionPackDefinition> PackageOfDocument(const Json& content, std::string_view text) {
    const auto refuse = [&](const std::string& sentence) { throw CLoadError(packagetext::AtLine(text, sentence)); };
    const auto package = content.find("package");
    if (package == content.end() || !package->is_object()) refuse("package: the member is missing or no object");
    const auto bag = packagetext::MakeObject<packagetext::CPropertyBag>();
    const auto log = packagetext::MakeObject<packagetext::CErrorLog>();
    std::string errorText;
    if (!packagetext::FillBag(*package, *bag, errorText)) refuse(errorText);
    auto definition = std::make_unique<reka::ReactionPackDefinition>(nullptr);
    const bool isRead = reka::ReadDefinitionFromBag(*definition, {bag.Get(), log.Get(), u"REKA"});
    const std::vector<std::string> faults = packagetext::FindLoadFaults(*package, *bag, *log);
    if (!faults.empty()) refuse(faults.front());
    if (!isRead && !bag->MissedNames().empty()) {
        refuse("package." + reka::Utf8FromUtf16(bag->MissedNames().back()) + ": the member is missing");
    }
    if (!isRead) refuse("package: can't be read");
    return definition;
}

Definitions DefinitionsOf(const PackageFile& file, std::vector<std::string>& notes) {
    Definitions definitions;
    for (const Bytes& block : file.blocks) {
        try {
            definitions.push_back(LoadDefinition(block, notes));
        } catch (const CLoadError& error) {
            throw CLoadError("package " + std::to_string(definitions.size() + 1) + ": " + error.what());
        }
    }
    return definitions;
}

/// A text is the readable form of a file, which says so, or a document.
Definitions DefinitionsOfText(const Bytes& bytes, std::vector<std::string>& notes) {
    Json content;
    std::string errorText;
    if (!ParseReadable(bytes, content, errorText)) throw CLoadError(errorText);
    if (content.contains("rekatool")) {
        PackageFile file;
        if (!FileFromJson(content, file, errorText)) throw CLoadError(errorText);
        return DefinitionsOf(file, notes);
    }
    Definitions definitions;
    definitions.push_back(PackageOfDocument(content, std::string(bytes.begin(), bytes.end())));
    return definitions;
}

Definitions DefinitionsOfBytes(const Bytes& bytes, std::vector<std::string>& notes) {
    if (IsReadable(bytes)) return DefinitionsOfText(bytes, notes);
    PackageFile file;
    if (!ReadPackageFile(bytes, file)) {
        throw CLoadError("neither a file of templates nor a stored package nor a document");
    }
    return DefinitionsOf(file, notes);
}

}  // namespace

std::unique_ptr<reka::ReactionPackDefinition> LoadDefinition(std::span<const std::uint8_t> block,
                                                             std::vector<std::string>& notes) {
    const CNotes messages(notes);
    auto definition = std::make_unique<reka::ReactionPackDefinition>(nullptr);
    std::u16string errorText;
    if (reka::ReadStoredDefinition(*definition, block, errorText)) return definition;
    while (errorText.ends_with(u'\r') || errorText.ends_with(u'\n')) errorText.pop_back();
    throw CLoadError(reka::Utf8FromUtf16(errorText));
}

Definitions LoadDefinitions(const std::string& path, std::vector<std::string>& notes) {
    try {
        return DefinitionsOfBytes(ReadBytes(path), notes);
    } catch (const CLoadError& error) {
        throw CLoadError(path + ": " + error.what());
    }
}

}  // namespace rekatool
