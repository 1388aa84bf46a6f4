// SPDX-License-Identifier: MIT
// The C library's error number stands for the thread's last error: it is what the calls of this system leave behind,
// and each thread has its own.

#include "platform/ThreadError.h"

#include <cerrno>

namespace reka {

unsigned long ThreadError() {
    return static_cast<unsigned long>(errno);
}

void SetThreadError(unsigned long error) {
    errno = static_cast<int>(error);
}

}  // namespace reka
