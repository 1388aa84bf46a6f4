// Which way messages go in this process.

#include "platform/UserMessages.h"

#include <utility>

namespace reka {

namespace {

IUserMessages* replacement = nullptr;

}  // namespace

IUserMessages& UserMessages() {
    return replacement ? *replacement : SystemMessageBoxes();
}

IUserMessages* ReplaceUserMessages(IUserMessages* other) {
    return std::exchange(replacement, other);
}

}  // namespace reka
