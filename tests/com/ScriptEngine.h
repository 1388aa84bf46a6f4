// SPDX-License-Identifier: MIT
// The system's script engine in the process of the tests, so that a script can call objects of a test.

#pragma once

#include <map>
#include <string>

#include <windows.h>

#include <activscp.h>

#include "Host.h"

namespace host {

/// Runs VBScript. The objects are known to the script by the names that they were given, and are let go at the end.
class CScriptEngine : public IActiveScriptSite {
public:
    CScriptEngine();
    CScriptEngine(const CScriptEngine&) = delete;
    CScriptEngine& operator=(const CScriptEngine&) = delete;
    ~CScriptEngine();

    void Add(const wchar_t* name, IDispatch* object);

    /// Empty when the lines ran to their end, otherwise what went wrong.
    std::wstring Run(const std::wstring& lines);

    // IActiveScriptSite, for the engine
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // lives longer than the engine
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetLCID(LCID* locale) override;
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** item, ITypeInfo** type) override;
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR* version) override;
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override;
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

private:
    CRef<IActiveScript> engine;
    std::map<std::wstring, CValue> objects;
    std::wstring failure;
};

}  // namespace host
