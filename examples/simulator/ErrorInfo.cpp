// SPDX-License-Identifier: MIT
// The last failure, told by the object itself when the package asks. Objects of rekasim live on one thread and are
// asked right after the call, so plain fields are enough, and nothing forgets them between calls.

#include "ErrorInfo.h"

namespace rekasim {

HRESULT GiveText(std::u16string_view text, BSTR* output) {
    if (!output) return E_POINTER;
    *output = reka::CBstr::Make(text).Detach();
    return S_OK;
}

HRESULT GiveVariant(reka::CVariant value, VARIANT* output) {
    if (!output) return E_POINTER;
    *output = value.Detach();
    return S_OK;
}

HRESULT ReplaceVariant(reka::CVariant value, VARIANT* output) {
    if (!output) return E_POINTER;
    VariantClear(output);
    *output = value.Detach();
    return S_OK;
}

HRESULT CErrorInfo::Fail(HRESULT code, std::u16string_view description, std::u16string_view scope,
                         std::u16string_view interfaceName) {
    lastCode = code;
    lastDescription = description;
    lastScope = scope;
    lastInterfaceName = interfaceName;
    return code;
}

HRESULT CErrorInfo::FailNotOffered(std::u16string_view scope, std::u16string_view interfaceName) {
    return Fail(reka::ECapeNoImplHR, std::u16string(scope) + u" is not offered by rekasim", scope, interfaceName);
}

HRESULT STDMETHODCALLTYPE CErrorInfo::get_name(BSTR* name) {
    return GiveText(lastDescription, name);
}

HRESULT STDMETHODCALLTYPE CErrorInfo::get_code(LONG* code) {
    if (!code) return E_POINTER;
    *code = lastCode;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CErrorInfo::get_description(BSTR* description) {
    return GiveText(lastDescription, description);
}

HRESULT STDMETHODCALLTYPE CErrorInfo::get_scope(BSTR* scope) {
    return GiveText(lastScope, scope);
}

HRESULT STDMETHODCALLTYPE CErrorInfo::get_interfaceName(BSTR* interfaceName) {
    return GiveText(lastInterfaceName, interfaceName);
}

HRESULT STDMETHODCALLTYPE CErrorInfo::get_operation(BSTR* operation) {
    return GiveText(lastScope, operation);
}

HRESULT STDMETHODCALLTYPE CErrorInfo::get_moreInfo(BSTR* moreInfo) {
    return GiveText({}, moreInfo);
}

}  // namespace rekasim
