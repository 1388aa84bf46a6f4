// SPDX-License-Identifier: MIT
// Late-bound calls where there are no type libraries: a table of members stands for the library, and calls them.
// Whoever is linked to it gets it in the place of the platform's own routines (platform/TypeLibrary.h), which find
// nothing.

#pragma once

#include "platform/Automation.h"

namespace reka::test {

// The platform's names and values.
constexpr WORD callMethod = 1;
constexpr WORD getProperty = 2;
constexpr WORD putProperty = 4;
constexpr DISPID propertyPut = -3;  // the name of the value that a property gets
constexpr HRESULT typeMismatch = static_cast<HRESULT>(0x80020005U);
constexpr HRESULT badParameterCount = static_cast<HRESULT>(0x8002000EU);

}  // namespace reka::test
