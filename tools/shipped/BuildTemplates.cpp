// SPDX-License-Identifier: MIT
// Builds the file of templates that ships beside the module out of documents with packages:
//     build_templates OUTPUT DOCUMENT...
// A package that a user couldn't have accepted in the editor isn't shipped: the program ends with status 1.

#include <algorithm>
#include <cstdio>

#include "manager/ValidateDefinition.h"
#include "packagetext/BagMembers.h"
#include "packagetext/Document.h"
#include "packagetext/PropertyBag.h"
#include "packagetext/ReplaceFile.h"
#include "persistence/ByteWriter.h"
#include "persistence/ReadBag.h"
#include "persistence/WriteStoredDefinition.h"
#include "text/Utf8.h"

namespace {

using packagetext::Json;

/// A user who wants no formula left unread, and whose heats may depend on the temperature.
class CBuilderUi : public reka::IUserMessages {
public:
    reka::MessageAnswer Show(const reka::UserMessage& message) noexcept override {
        const bool isQuestion = (message.style & reka::messagestyle::buttons) != reka::messagestyle::ok;
        if (!isQuestion) warning = message.text;
        return reka::MessageAnswer::Ok;
    }
    std::u16string warning;
};

bool Fail(const std::string& path, const std::string& reason) {
    std::fprintf(stderr, "%s: %s\n", path.c_str(), reason.c_str());
    return false;
}

bool AddTemplate(const std::string& path, reka::TemplateStore& store) {
    packagetext::Json document;
    std::string reason;
    if (!packagetext::ReadDocument(path, document, reason)) return Fail(path, reason);
    const auto bag = packagetext::MakeObject<packagetext::CPropertyBag>();
    const auto log = packagetext::MakeObject<packagetext::CErrorLog>();
    if (!document.contains("package") || !packagetext::FillBag(document["package"], *bag, reason)) {
        return Fail(path, "no package: " + reason);
    }
    auto definition = std::make_unique<reka::ReactionPackDefinition>(nullptr);
    const bool isRead = reka::ReadDefinitionFromBag(*definition, reka::BagReader{bag.Get(), log.Get(), u"REKA"});
    if (!isRead || !log->Reports().empty()) return Fail(path, "the package doesn't load without faults");
    definition->pcdFile.clear();  // where the compound file lies shows after the installation
    CBuilderUi ui;
    std::u16string errorText;
    const std::u16string name(definition->name.View());
    const std::u16string description(definition->description.View());
    if (!reka::ValidateDefinition(*definition, &store, false, name, description,
                                  static_cast<std::int32_t>(definition->thermoVersion), errorText, ui)) {
        return Fail(path, reka::Utf8FromUtf16(errorText));
    }
    if (!ui.warning.empty()) return Fail(path, reka::Utf8FromUtf16(ui.warning));
    store.templates.push_back(std::move(definition));
    return true;
}

/// The file as TemplateStore.h describes it.
bool WriteTemplates(const reka::TemplateStore& store, const char* path) {
    std::vector<std::uint8_t> bytes;
    reka::CByteWriter writer(bytes);
    writer.WriteU32(static_cast<std::uint32_t>(store.templates.size()));
    for (const auto& definition : store.templates) {
        std::vector<std::uint8_t> block;
        std::u16string errorText;
        if (!reka::WriteStoredDefinition(*definition, block, errorText)) {
            return Fail(path, reka::Utf8FromUtf16(errorText));
        }
        writer.WriteU32(static_cast<std::uint32_t>(block.size()));
        bytes.insert(bytes.end(), block.begin(), block.end());
    }
    std::string reason;
    if (packagetext::ReplaceFile(reka::SystemFiles(), path, bytes, reason)) return true;
    std::fprintf(stderr, "%s\n", reason.c_str());
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("build_templates OUTPUT DOCUMENT...\n", stderr);
        return 2;
    }
    reka::TemplateStore store;
    std::vector<std::string> documents(argv + 2, argv + argc);
    std::sort(documents.begin(), documents.end());
    for (const std::string& document : documents) {
        if (!AddTemplate(document, store)) return 1;
    }
    return WriteTemplates(store, argv[1]) ? 0 : 1;
}
