// Any bytes as a stored block.

#include <span>

#include "QuietMessages.h"
#include "persistence/ReadStoredDefinition.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reka::fuzz::SilenceMessages();
    reka::ReactionPackDefinition definition(nullptr);
    std::u16string errorText;
    if (reka::ReadStoredDefinition(definition, std::span(data, size), errorText)) {
        reka::fuzz::UseDefinition(definition);
    }
    return 0;
}
