// SPDX-License-Identifier: MIT
// How an object of rekasim tells why a call failed: the object itself answers the questions of `ECapeRoot` and
// `ECapeUser` after a failed call.

#pragma once

#include <string>
#include <string_view>

#include "capeopen/DualInterface.h"
#include "platform/Holders.h"

namespace rekasim {

constexpr HRESULT ECapeInvalidArgumentHR = static_cast<HRESULT>(0x80040506U);
constexpr HRESULT ECapeComputationHR = static_cast<HRESULT>(0x8004050BU);
constexpr HRESULT ECapeThrmPropertyNotAvailableHR = static_cast<HRESULT>(0x8004051AU);

class CErrorInfo : public reka::CDualInterface<reka::ECapeRoot>, public reka::CDualInterface<reka::ECapeUser> {
public:
    HRESULT STDMETHODCALLTYPE get_name(BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_code(LONG* code) override;
    HRESULT STDMETHODCALLTYPE get_description(BSTR* description) override;
    HRESULT STDMETHODCALLTYPE get_scope(BSTR* scope) override;
    HRESULT STDMETHODCALLTYPE get_interfaceName(BSTR* interfaceName) override;
    HRESULT STDMETHODCALLTYPE get_operation(BSTR* operation) override;
    HRESULT STDMETHODCALLTYPE get_moreInfo(BSTR* moreInfo) override;

protected:
    /// Keeps the reason of a failure and hands `code` back, so that a method can fail in one line.
    HRESULT Fail(HRESULT code, std::u16string_view description, std::u16string_view scope,
                 std::u16string_view interfaceName);
    /// The failure of an operation that rekasim doesn't offer.
    HRESULT FailNotOffered(std::u16string_view scope, std::u16string_view interfaceName);

private:
    HRESULT lastCode = S_OK;
    std::u16string lastDescription;
    std::u16string lastScope;
    std::u16string lastInterfaceName;
};

/// Writes a fresh copy of `text` to the output; `E_POINTER` for a null one.
HRESULT GiveText(std::u16string_view text, BSTR* output);
/// Gives `value` away to the output, which is taken as uninitialised; `E_POINTER` for a null one.
HRESULT GiveVariant(reka::CVariant value, VARIANT* output);
/// The same for an output that holds something: clears it first.
HRESULT ReplaceVariant(reka::CVariant value, VARIANT* output);

}  // namespace rekasim
