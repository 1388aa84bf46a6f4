// SPDX-License-Identifier: MIT
// What a host of the component has of its own: holders, calls by name, and the way to the component through the
// registry. The tests here know the component by its published interfaces alone.

#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "capeopen/CapeOpenInterfaces.h"

namespace host {

/// A counted reference.
template <class Interface>
class CRef {
public:
    CRef() = default;
    explicit CRef(Interface* owned) : object(owned) {}
    CRef(CRef&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    CRef& operator=(CRef&& other) noexcept {
        std::swap(object, other.object);
        return *this;
    }
    ~CRef() {
        if (object) object->Release();
    }
    Interface* Get() const { return object; }
    Interface* operator->() const { return object; }
    explicit operator bool() const { return object != nullptr; }
    Interface** Receive() {
        Reset();
        return &object;
    }
    void Reset() {
        if (Interface* released = std::exchange(object, nullptr)) released->Release();
    }

    /// The object's interface of another kind; empty if it hasn't got it.
    template <class Other>
    CRef<Other> As() const {
        void* found = nullptr;
        if (!object || FAILED(object->QueryInterface(reka::InterfaceId<Other>(), &found))) return {};
        return CRef<Other>(static_cast<Other*>(found));
    }

private:
    Interface* object = nullptr;
};

/// A string of the system.
class CText {
public:
    CText() = default;
    explicit CText(std::wstring_view from) : text(SysAllocStringLen(from.data(), static_cast<UINT>(from.size()))) {}
    CText(const CText&) = delete;
    CText& operator=(const CText&) = delete;
    ~CText() { SysFreeString(text); }
    BSTR Get() const { return text; }
    BSTR* Receive() {
        SysFreeString(std::exchange(text, nullptr));
        return &text;
    }
    std::wstring Read() const { return text ? std::wstring(text, SysStringLen(text)) : std::wstring(); }

private:
    BSTR text = nullptr;
};

/// A variant.
class CValue {
public:
    CValue() { VariantInit(&value); }
    explicit CValue(std::wstring_view text) : CValue() {
        value.vt = VT_BSTR;
        value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    explicit CValue(LONG number) : CValue() {
        value.vt = VT_I4;
        value.lVal = number;
    }
    explicit CValue(IDispatch* object) : CValue() {
        value.vt = VT_DISPATCH;
        value.pdispVal = object;
        if (object) object->AddRef();
    }
    CValue(CValue&& other) noexcept : value(other.value) { VariantInit(&other.value); }
    CValue(const CValue&) = delete;
    CValue& operator=(CValue&& other) noexcept {
        std::swap(value, other.value);
        return *this;
    }
    CValue& operator=(const CValue&) = delete;
    ~CValue() { VariantClear(&value); }
    VARIANT& Get() { return value; }
    const VARIANT& Get() const { return value; }

private:
    VARIANT value;
};

CValue StringArray(const std::vector<std::wstring>& texts, LONG lowerBound = 0);
CValue NumberArray(const std::vector<double>& numbers);
/// Element by element, of an array of strings, numbers or variants.
std::vector<std::wstring> StringsOf(const VARIANT& array);
std::vector<double> NumbersOf(const VARIANT& array);

/// COM for the thread that makes it.
class CApartment {
public:
    CApartment() : result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~CApartment() {
        if (SUCCEEDED(result)) CoUninitialize();
    }
    CApartment(const CApartment&) = delete;
    CApartment& operator=(const CApartment&) = delete;

private:
    HRESULT result;
};

/// The manager as a simulator makes it: by its ProgID.
HRESULT CreateManager(REFIID iid, void** manager, IUnknown* outer = nullptr);

template <class Interface>
CRef<Interface> MakeManager() {
    void* made = nullptr;
    if (FAILED(CreateManager(reka::InterfaceId<Interface>(), &made))) return {};
    return CRef<Interface>(static_cast<Interface*>(made));
}

/// The package of that name, initialised.
CRef<reka::ICapeUtilities> ResolvePackage(std::wstring_view name);

/// Path of the registered module file.
std::wstring ModulePath();

}  // namespace host
