// SPDX-License-Identifier: MIT
// The library listens to the system by the module's list of thread callbacks, the one road to it that is open: it is
// told what it would be told at the end of the thread. Without this a host that loads and unloads the module again and
// again, on one thread, could lose two handles each time.

#include "server/ThreadsOfRuntime.h"

#include <windows.h>

extern "C" const IMAGE_TLS_DIRECTORY _tls_used;  // part of the compiler's start code

namespace reka {

void LeaveThisThread() noexcept {
    const auto* callback = reinterpret_cast<const PIMAGE_TLS_CALLBACK*>(_tls_used.AddressOfCallBacks);
    for (; *callback; ++callback) (*callback)(nullptr, DLL_THREAD_DETACH, nullptr);
}

}  // namespace reka
