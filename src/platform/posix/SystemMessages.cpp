// SPDX-License-Identifier: MIT
// There is no message table here, so no code has a text. The words of the C library belong to numbers of other
// meanings, and a result code looked up there would get the words of something else.

#include "platform/SystemMessages.h"

namespace reka {

bool FindSystemMessage(HRESULT, std::u16string& text) {
    text.clear();
    return false;
}

}  // namespace reka
