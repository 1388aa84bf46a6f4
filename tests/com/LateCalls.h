// SPDX-License-Identifier: MIT
// Calls by name and by identifier, as late-bound clients make them.

#pragma once

#include <string>
#include <vector>

#include "Host.h"

namespace host {

struct CallResult {
    HRESULT code = S_OK;
    CValue value;
    SCODE failure = S_OK;  // of the method, where the code is DISP_E_EXCEPTION
    std::wstring source;   // and its words
    std::wstring description;
    UINT badArgument = 99;
};

HRESULT FindMember(IDispatch* object, const wchar_t* name, DISPID& member);

/// Calls with arguments in the order of the declaration.
CallResult CallId(IDispatch* object, DISPID member, WORD flags, std::vector<VARIANT> arguments = {},
                  std::vector<DISPID> names = {});
CallResult Call(IDispatch* object, const wchar_t* name, WORD flags, std::vector<VARIANT> arguments = {},
                std::vector<DISPID> names = {});

/// The variable as a script passes it.
VARIANT Reference(CValue& variable);

/// The text that came back; empty if it is none.
std::wstring TextOf(const CallResult& result);

}  // namespace host
