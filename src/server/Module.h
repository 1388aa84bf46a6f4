// SPDX-License-Identifier: MIT
// The loaded module: what it says of itself, and what its parts share.

#pragma once

#include <string>

#include <windows.h>

namespace reka {

/// Has no destructor: other modules may still call while the process detaches.
struct Module {
    char16_t version[128] = {};  // four parts; what %DLLVERSION% stands for in the registry script
    GUID typeLibraryId = {};     // of the type library that is a resource of the module
    bool isPerUser = false;      // registration goes to the current user instead of the machine
    bool hasStarted = false;
    CRITICAL_SECTION lists = {};  // held while a class factory is made
};

/// The one module.
Module& TheModule();

/// Makes the module ready as the process attaches: version, lists, the common controls and the rich edit control.
/// Nothing of it fails but for want of resources, which leaves `hasStarted` false.
void StartModule(HINSTANCE instance) noexcept;

/// Ends the module as the process detaches. A module that is unloaded gives back what it holds. A process that ends has
/// stopped its other threads, perhaps while they held a lock, and may have unloaded other modules: nothing is waited
/// for and nobody called then, since the memory goes with the process.
void EndModule(bool isProcessEnding) noexcept;

/// The version out of a module's version block: four parts, "<unknown>" without the fixed record, empty if the block
/// can't be read.
std::u16string ReadFileVersion(const wchar_t* path);

/// Holds the module's critical section.
class CModuleListsLock {
public:
    CModuleListsLock() { EnterCriticalSection(&TheModule().lists); }
    ~CModuleListsLock() { LeaveCriticalSection(&TheModule().lists); }
    CModuleListsLock(const CModuleListsLock&) = delete;
    CModuleListsLock& operator=(const CModuleListsLock&) = delete;
};

}  // namespace reka
