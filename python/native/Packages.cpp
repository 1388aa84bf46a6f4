// SPDX-License-Identifier: MIT
// The form of a file shows in its first bytes: a document begins with a brace, which no count and no size does that a
// file could hold. What a document says wrongly is refused whole, as rekasim does, since a package passes over it and
// calculates with the rest.

#include "python/native/Packages.h"

#include <algorithm>
#include <utility>

#include "packagetext/BagMembers.h"
#include "packagetext/DocumentShape.h"
#include "packagetext/LoadFaults.h"
#include "packagetext/ReadWhole.h"
#include "persistence/ReadBag.h"
#include "persistence/ReadStoredDefinition.h"
#include "persistence/WriteStoredDefinition.h"
#include "platform/Files.h"
#include "platform/ModuleFile.h"
#include "platform/UserMessages.h"
#include "rekatool/PackageFile.h"
#include "text/Utf8.h"

namespace rekapython {

namespace {

using Bytes = std::vector<std::uint8_t>;

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
    if (!file) throw PackageError(path + ": " + reka::Utf8FromUtf16(reka::Files().LastErrorText()));
    Bytes bytes = packagetext::ReadWhole(*file);
    if (file->HasFailed()) throw PackageError(path + ": " + reka::Utf8FromUtf16(reka::Files().LastErrorText()));
    return bytes;
}

bool IsDocument(const Bytes& bytes) {
    const auto first = std::find_if(bytes.begin(), bytes.end(), [](std::uint8_t byte) {
        return byte != ' ' && byte != '\t' && byte != '\r' && byte != '\n';
    });
    return first != bytes.end() && *first == '{';
}

std::unique_ptr<reka::ReactionPackDefinition> ReadDocumentPackage(const std::string& path) {
    packagetext::Json content;
    std::string text;
    std::string errorText;
    if (!packagetext::ReadDocument(path, content, text, errorText)) throw PackageError(errorText);
    const auto refuse = [&](const std::string& sentence) {
        throw PackageError(path + ": " + packagetext::AtLine(text, sentence));
    };
    const auto package = content.find("package");
    if (package == content.end() || !package->is_object()) refuse("package: the member is missing or no object");
    const auto bag = packagetext::MakeObject<packagetext::CPropertyBag>();
    const auto log = packagetext::MakeObject<packagetext::CErrorLog>();
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

}  // namespace

std::unique_ptr<reka::ReactionPackDefinition> ReadBlock(std::span<const std::uint8_t> block,
                                                        std::vector<std::string>& notes) {
    const CNotes messages(notes);
    auto definition = std::make_unique<reka::ReactionPackDefinition>(nullptr);
    std::u16string errorText;
    if (reka::ReadStoredDefinition(*definition, block, errorText)) return definition;
    while (errorText.ends_with(u'\r') || errorText.ends_with(u'\n')) errorText.pop_back();
    throw PackageError(reka::Utf8FromUtf16(errorText));
}

Definitions ReadPackages(const std::string& path, std::vector<std::string>& notes) {
    Definitions definitions;
    const Bytes bytes = ReadBytes(path);
    if (IsDocument(bytes)) {
        definitions.push_back(ReadDocumentPackage(path));
        return definitions;
    }
    rekatool::PackageFile file;
    if (!rekatool::ReadPackageFile(bytes, file)) {
        throw PackageError(path + ": neither a file of templates nor a stored package nor a document");
    }
    for (const Bytes& block : file.blocks) {
        try {
            definitions.push_back(ReadBlock(block, notes));
        } catch (const PackageError& error) {
            throw PackageError(path + ": package " + std::to_string(definitions.size() + 1) + ": " + error.what());
        }
    }
    return definitions;
}

std::vector<std::uint8_t> WriteBlock(const reka::ReactionPackDefinition& definition) {
    std::vector<std::uint8_t> block;
    std::u16string errorText;
    if (!reka::WriteStoredDefinition(definition, block, errorText)) throw PackageError(reka::Utf8FromUtf16(errorText));
    return block;
}

std::string UserTemplatesPath() {
    std::u16string path;
    if (!reka::Files().FindUserFolder(path)) return {};
    if (!path.ends_with(reka::pathSeparator)) path += reka::pathSeparator;
    for (const char16_t* const name : {u"NAVO", u"data"}) (path += name) += reka::pathSeparator;
    return reka::Utf8FromUtf16(path + u"REKAConfig.dat");
}

}  // namespace rekapython
