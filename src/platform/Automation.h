// SPDX-License-Identifier: MIT
// The platform's automation types: `HRESULT`, `BSTR`, `VARIANT`, `SAFEARRAY`, `IUnknown`, `IDispatch` and the
// persistence interfaces. On Windows these are the system's own; elsewhere a stand-in declares the same names with the
// same meaning. This is the only header that asks for the platform.

#pragma once

#ifdef _WIN32
#include "platform/win/WindowsAutomation.h"
#else
#include "platform/posix/AutomationStandIn.h"
#endif
