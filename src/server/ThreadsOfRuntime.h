// SPDX-License-Identifier: MIT
// What the compiler's libraries keep, and don't give back by themselves when the module goes.

#pragma once

namespace reka {

/// Has the thread library in this module let go of the calling thread, for which it may hold two handles and the record
/// of its exceptions: on x86 from the start of the module, otherwise from its first exception. It does so when a thread
/// ends, but not when the module is unloaded before that. Nothing may throw afterwards.
void LeaveThisThread() noexcept;

/// Has the C++ library in this module give back the memory that it keeps for exceptions when there is no other: 75 kB
/// on x64 and 19 kB on x86, taken when the module is loaded. Nothing may throw afterwards.
void LeaveExceptionMemory() noexcept;

}  // namespace reka
