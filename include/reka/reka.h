// SPDX-License-Identifier: MIT
// REKA in a program of one's own: the interfaces of its objects, the types that go through them, and the one function
// that makes the first object. On Windows a simulator finds the component in the registry instead, and needs the
// interfaces alone.
//
// Names are those of the CAPE-OPEN standard and, for strings, arrays and variants, of the automation library of
// Windows; elsewhere the library has the same functions itself, with the same rules of ownership. An object and all
// that was made by it belong to one thread at a time; different managers may be used by different threads. What a user
// has to be told goes to standard error, and a question gets the cautious answer.

#pragma once

#include "capeopen/CapeOpenInterfaces.h"        // the interfaces, each with its identifier as `iid`
#include "capeopen/ClassIds.h"                  // the classes, as stored packages name them
#include "manager/CreateReactionPackManager.h"  // reka::CreateReactionPackManager
#include "platform/Automation.h"                // HRESULT, BSTR, VARIANT, SAFEARRAY, IUnknown, IDispatch, IStream
