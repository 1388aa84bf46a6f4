// SPDX-License-Identifier: MIT
// Any bytes as the file of templates of a user. They aren't lost, whatever they are: the file stays, or lies there as a
// backup. What was read is used, and stored over it.

#include "QuietMessages.h"
#include "manager/TemplateStore.h"
#include "support/FakeFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reka::fuzz::SilenceMessages();
    reka::test::CFakeFiles files;
    std::u16string path;
    reka::TemplateStore::GetConfigFilePath(path, false);
    files.entries[path] = {{data, data + size}, 1};
    reka::TemplateStore store;
    store.LoadTemplates();
    const bool isKept = files.entries.contains(path) || files.entries.contains(path + u".backup");
    if (!isKept || files.openFiles != 0) std::abort();
    for (const auto& definition : store.templates) reka::fuzz::UseDefinition(*definition);
    store.StoreTemplates();
    return 0;
}
