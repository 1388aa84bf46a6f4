// SPDX-License-Identifier: MIT
// What the compiler's thread library keeps, and doesn't give back by itself when the module goes.

#pragma once

namespace reka {

/// Has the thread library in this module let go of the calling thread, for which it may hold two handles and the record
/// of its exceptions: on x86 from the start of the module, otherwise from its first exception. It does so when a thread
/// ends, but not when the module is unloaded before that. Nothing may throw afterwards.
void LeaveThisThread() noexcept;

}  // namespace reka
