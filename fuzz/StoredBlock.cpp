// SPDX-License-Identifier: MIT
// Any bytes as a stored block. What passes the reader is used as a package would use it, since a tree that makes no
// sense must fail where it is evaluated, not bring down what evaluates it.

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
