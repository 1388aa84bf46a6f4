// SPDX-License-Identifier: MIT
// The path is the one at which the component keeps the templates; its own folders are not made here.

#include "python/native/Packages.h"

#include "persistence/WriteStoredDefinition.h"
#include "platform/Files.h"
#include "platform/ModuleFile.h"
#include "text/Utf8.h"

namespace rekapython {

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
