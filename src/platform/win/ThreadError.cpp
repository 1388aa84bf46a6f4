// SPDX-License-Identifier: MIT
// The system's number for the thread, passed on: where a dialog couldn't be shown, the caller of the component reads
// its reason there, and what is done in between must not lose it.

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
