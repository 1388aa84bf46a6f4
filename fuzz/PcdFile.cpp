// Any bytes as a compound file.

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
