// SPDX-License-Identifier: MIT
// What keeps the module loaded.

#pragma once

#include <atomic>
#include <cstdint>

namespace reka {

/// Number of live objects, of references that clients hold on class factories, and of their locks on the server. The
/// module can go while it is 0.
inline std::atomic<std::int32_t> moduleLockCount = 0;

/// Holds one count as long as it lives. A copy holds one of its own.
class CModuleLock {
public:
    CModuleLock() { ++moduleLockCount; }
    CModuleLock(const CModuleLock&) : CModuleLock() {}
    CModuleLock& operator=(const CModuleLock&) = default;
    ~CModuleLock() { --moduleLockCount; }
};

}  // namespace reka
