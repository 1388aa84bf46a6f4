// SPDX-License-Identifier: MIT
// Which mutexes this process takes.

#include "platform/NamedMutex.h"

#include "platform/Seam.h"

namespace reka {

namespace {

CSeam<INamedMutexes> seam;

}  // namespace

INamedMutexes& NamedMutexes() {
    return seam.Or(SystemMutexes());
}

INamedMutexes* ReplaceNamedMutexes(INamedMutexes* other) {
    return seam.Replace(other);
}

}  // namespace reka
