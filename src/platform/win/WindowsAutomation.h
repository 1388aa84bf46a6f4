// SPDX-License-Identifier: MIT
// The system's automation types.

#pragma once

#include <windows.h>

#include <oaidl.h>
#include <objidl.h>
#include <ocidl.h>
#include <oleauto.h>
