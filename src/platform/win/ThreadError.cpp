// See ThreadError.h.

#include "platform/ThreadError.h"

#include <windows.h>

namespace reka {

unsigned long ThreadError() {
    return GetLastError();
}

void SetThreadError(unsigned long error) {
    SetLastError(error);
}

}  // namespace reka
