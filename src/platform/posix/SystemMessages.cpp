// There is no message table here, so no code has a text.

#include "platform/SystemMessages.h"

namespace reka {

bool FindSystemMessage(HRESULT, std::u16string& text) {
    text.clear();
    return false;
}

}  // namespace reka
