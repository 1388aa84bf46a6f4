// SPDX-License-Identifier: MIT
// The version of the system's controls that dialogs are made of. Version 5.82 or 6 comes with the program that loads
// the module, by its manifest; the dialogs have 6 in any program, by a manifest of the module's own.

#pragma once

#include <windows.h>

namespace reka {

/// Names the controls of version 6. Where the system has none, or no manifest is among the module's resources, it
/// names nothing, and windows are made as the program has them.
class CControlsContext {
public:
    explicit CControlsContext(int manifestResource);
    ~CControlsContext();
    CControlsContext(const CControlsContext&) = delete;
    CControlsContext& operator=(const CControlsContext&) = delete;

    HANDLE Get() const { return context; }
    bool IsThere() const { return context != INVALID_HANDLE_VALUE; }

private:
    HANDLE context;
};

/// As long as it lives, windows made on this thread have the controls that the context names; null for none.
class CControlsScope {
public:
    explicit CControlsScope(const CControlsContext* context);
    ~CControlsScope();
    CControlsScope(const CControlsScope&) = delete;
    CControlsScope& operator=(const CControlsScope&) = delete;

private:
    ULONG_PTR cookie = 0;
    bool isActive = false;
};

}  // namespace reka
