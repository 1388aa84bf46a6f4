// SPDX-License-Identifier: MIT
// The thread library listens to the system by the module's list of thread callbacks, the one road to it that is open:
// it is told what it would be told at the end of the thread. The C++ library has a routine for those who look for
// leaks, which gives back its reserve. Without this a host that loads and unloads the module again and again, on one
// thread, could lose two handles and the reserve each time.

#include "server/ThreadsOfRuntime.h"

#include <windows.h>

extern "C" const IMAGE_TLS_DIRECTORY _tls_used;  // part of the compiler's start code

namespace __gnu_cxx {
void __freeres() noexcept;  // part of the compiler's C++ library, which declares it nowhere
}

namespace reka {

void LeaveThisThread() noexcept {
    const auto* callback = reinterpret_cast<const PIMAGE_TLS_CALLBACK*>(_tls_used.AddressOfCallBacks);
    for (; *callback; ++callback) (*callback)(nullptr, DLL_THREAD_DETACH, nullptr);
}

void LeaveExceptionMemory() noexcept {
    __gnu_cxx::__freeres();
}

}  // namespace reka
