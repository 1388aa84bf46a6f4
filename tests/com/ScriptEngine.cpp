// SPDX-License-Identifier: MIT
// The least that the engine needs of a site: the objects by their names, a language, and somebody to tell of an error,
// which is kept as one line with the number of the script's line.

#include "ScriptEngine.h"

namespace host {

CScriptEngine::CScriptEngine() {
    CLSID classId = {};
    if (FAILED(CLSIDFromProgID(L"VBScript", &classId))) return;
    CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript,
                     reinterpret_cast<void**>(engine.Receive()));
    if (engine) engine->SetScriptSite(this);
}

CScriptEngine::~CScriptEngine() {
    if (engine) engine->Close();
}

void CScriptEngine::Add(const wchar_t* name, IDispatch* object) {
    objects.emplace(name, CValue(object));
    if (engine) engine->AddNamedItem(name, SCRIPTITEM_ISVISIBLE);
}

std::wstring CScriptEngine::Run(const std::wstring& lines) {
    void* found = nullptr;
    if (!engine || FAILED(engine->QueryInterface(__uuidof(IActiveScriptParse), &found)))
        return L"there is no script engine";
    const CRef<IActiveScriptParse> parser(static_cast<IActiveScriptParse*>(found));
    failure.clear();
    HRESULT result = parser->InitNew();
    if (SUCCEEDED(result)) result = engine->SetScriptState(SCRIPTSTATE_STARTED);
    if (SUCCEEDED(result)) {
        result = parser->ParseScriptText(lines.c_str(), nullptr, nullptr, nullptr, 0, 0, 0, nullptr, nullptr);
    }
    if (FAILED(result) && failure.empty()) failure = L"result " + std::to_wstring(result);
    return failure;
}

HRESULT CScriptEngine::QueryInterface(REFIID iid, void** object) {
    *object = iid == IID_IUnknown || iid == IID_IActiveScriptSite ? this : nullptr;
    return *object ? S_OK : E_NOINTERFACE;
}

HRESULT CScriptEngine::GetLCID(LCID* locale) {
    *locale = GetUserDefaultLCID();
    return S_OK;
}

HRESULT CScriptEngine::GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** item, ITypeInfo**) {
    const auto found = objects.find(name);
    if (found == objects.end() || !(mask & SCRIPTINFO_IUNKNOWN)) return TYPE_E_ELEMENTNOTFOUND;
    *item = found->second.Get().pdispVal;
    (*item)->AddRef();
    return S_OK;
}

HRESULT CScriptEngine::GetDocVersionString(BSTR*) {
    return E_NOTIMPL;
}

HRESULT CScriptEngine::OnScriptError(IActiveScriptError* error) {
    EXCEPINFO told = {};
    DWORD context = 0;
    ULONG line = 0;
    LONG position = 0;
    error->GetExceptionInfo(&told);
    error->GetSourcePosition(&context, &line, &position);
    failure = L"line " + std::to_wstring(line) + L": " + (told.bstrDescription ? told.bstrDescription : L"") + L" (" +
              std::to_wstring(told.scode) + L")";
    SysFreeString(told.bstrSource);
    SysFreeString(told.bstrDescription);
    SysFreeString(told.bstrHelpFile);
    return S_OK;
}

}  // namespace host
