// See ThreadError.h.

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
