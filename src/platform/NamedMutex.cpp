// Which mutexes this process takes.

#include "platform/NamedMutex.h"

#include <utility>

namespace reka {

namespace {

INamedMutexes* replacement = nullptr;

}  // namespace

INamedMutexes& NamedMutexes() {
    return replacement ? *replacement : SystemMutexes();
}

INamedMutexes* ReplaceNamedMutexes(INamedMutexes* other) {
    return std::exchange(replacement, other);
}

}  // namespace reka
