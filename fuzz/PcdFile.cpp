// SPDX-License-Identifier: MIT
// Any bytes as a compound file. Whatever they are, the list is empty where there is a reason, no reason is told where
// there is a list, and the file is closed.

#include "compounds/LoadPcdFile.h"
#include "support/FakeFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reka::test::CFakeFiles files;
    files.entries[u"f"] = {{data, data + size}, 1};
    reka::CompoundList list;
    std::u16string errorText;
    const bool isLoaded = reka::LoadPcdFile(u"f", list, errorText);
    if (isLoaded != errorText.empty() || (!isLoaded && !list.empty()) || files.openFiles != 0) std::abort();
    return 0;
}
