// SPDX-License-Identifier: MIT
// Owners of what the platform hands out. They share their operations: `Get` lends, `Receive` takes an output argument,
// `Detach` gives away, `Reset` frees and takes over.

#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/Automation.h"

namespace reka {

/// The characters of a string up to its first zero; nothing for an absent one.
std::u16string_view TextOf(const OLECHAR* text);

/// Sole owner of a BSTR, which may be absent (null). Absent and empty differ here; SameText treats them alike.
class CBstr {
public:
    CBstr() = default;
    explicit CBstr(BSTR owned) : text(owned) {}  // takes over, does not copy
    CBstr(CBstr&& other) noexcept : text(other.Detach()) {}
    CBstr& operator=(CBstr&& other) noexcept {
        if (this != &other) Reset(other.Detach());
        return *this;
    }
    CBstr(const CBstr&) = delete;
    CBstr& operator=(const CBstr&) = delete;
    ~CBstr() {
        if (text) SysFreeString(text);
    }

    /// A string of just these characters: an empty text gives an empty string, not an absent one. Throws
    /// std::bad_alloc.
    static CBstr Make(std::u16string_view characters);
    /// A string of the characters of `other` up to its first zero; absent for an absent one. Throws std::bad_alloc.
    static CBstr CopyOf(const OLECHAR* other) { return other ? Make(TextOf(other)) : CBstr(); }
    /// Like `Make`, but absent without memory.
    static CBstr TryMake(std::u16string_view characters) noexcept;

    BSTR Get() const { return text; }                          // lends
    std::u16string_view View() const { return TextOf(text); }  // lends
    /// A fresh string for the caller to free; null for an absent one and without memory.
    BSTR Copy() const { return text ? TryMake(View()).Detach() : nullptr; }
    bool IsAbsent() const { return text == nullptr; }
    BSTR* Receive() {  // for an output argument; frees the old string first
        Reset();
        return &text;
    }
    BSTR Detach() { return std::exchange(text, nullptr); }  // gives away
    void Reset(BSTR owned = nullptr) { SysFreeString(std::exchange(text, owned)); }

private:
    BSTR text = nullptr;
};

/// An absent string gives an empty text.
std::u16string StringFromBstr(BSTR text);
/// An empty text gives an absent string.
CBstr BstrFromString(std::u16string_view text);
/// A copy by the same rule: an empty string becomes absent.
CBstr BstrFromString(BSTR text);

/// Sole owner of a VARIANT and what it holds.
class CVariant {
public:
    CVariant() : variant() {}  // every byte of it zero, as VariantInit would leave it
    ~CVariant() {
        if (variant.vt != VT_EMPTY) VariantClear(&variant);
    }
    CVariant(CVariant&& other) noexcept : variant(other.Detach()) {}
    CVariant& operator=(CVariant&& other) noexcept {
        if (this != &other) Reset(other.Detach());
        return *this;
    }
    CVariant(const CVariant&) = delete;
    CVariant& operator=(const CVariant&) = delete;

    const VARIANT& Get() const { return variant; }
    VARIANT& Get() { return variant; }
    VARIANT* Receive() {
        Reset();
        return &variant;
    }
    VARIANT Detach() {
        const VARIANT detached = variant;
        VariantInit(&variant);
        return detached;
    }
    void Reset() { VariantClear(&variant); }
    void Reset(const VARIANT& owned) {
        VariantClear(&variant);
        variant = owned;
    }

private:
    VARIANT variant;
};

/// A counted reference on an interface of somebody's object, which may be null.
template <class Interface>
class CComRef {
public:
    CComRef() = default;
    explicit CComRef(Interface* shared) : object(shared) {  // takes a count of its own
        if (object) object->AddRef();
    }
    CComRef(const CComRef& other) : CComRef(other.object) {}
    CComRef(CComRef&& other) noexcept : object(other.Detach()) {}
    CComRef& operator=(const CComRef& other) {
        CComRef copy(other);
        std::swap(object, copy.object);
        return *this;
    }
    CComRef& operator=(CComRef&& other) noexcept {
        CComRef taken(std::move(other));
        std::swap(object, taken.object);
        return *this;
    }
    ~CComRef() {
        if (object) object->Release();
    }

    Interface* Get() const { return object; }
    Interface* operator->() const { return object; }
    Interface& operator*() const { return *object; }
    explicit operator bool() const { return object != nullptr; }
    Interface** Receive() {
        Reset();
        return &object;
    }
    Interface* Detach() { return std::exchange(object, nullptr); }
    /// Releases the object and takes over the count of `owned`. The pointer is cleared before the release, which may
    /// run code of the object's owner.
    void Reset(Interface* owned = nullptr) {
        Interface* released = std::exchange(object, owned);
        if (released) released->Release();
    }

private:
    Interface* object = nullptr;
};

}  // namespace reka
