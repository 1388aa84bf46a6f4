// SPDX-License-Identifier: MIT
// The texts of outside failures. The object that failed knows best, so it is asked first, but only for the codes of the
// standard: after any other one its words may be those of an earlier failure. It may be as broken as its call; whatever
// goes wrong while it is asked counts as silence, and there is always a text in the end, if only the digits of the
// code.

#include "capeopen/ErrorTexts.h"

#include <cstdint>
#include <iterator>
#include <new>

#include "capeopen/CapeOpenInterfaces.h"
#include "platform/Holders.h"
#include "platform/SystemMessages.h"

namespace reka {

namespace {

constexpr std::uint32_t firstCapeCode = 0x80040501;
constexpr std::uint32_t lastCapeCode = 0x8004051A;

/// By code, from `firstCapeCode` on; null for a code without a text of its own.
constexpr const char16_t* capeErrorTexts[] = {
    nullptr,
    u"invalid data",
    nullptr,
    u"Bad Cape-Open parameter",
    u"Bad argument",
    u"Invalid argument",
    u"index out of bounds",
    u"current implementation related error",
    u"not implemented",
    u"implementation is limited",
    u"computation error",
    u"out of resources",
    u"out of memory",
    u"operation was timed out",
    u"initialization error",
    u"solution error",
    u"invalid order of invocations",
    u"invalid operation",
    u"storage / persistence error",
    u"illegal access",
    u"persistence error: not found",
    u"persistence system error",
    u"persistence overflow error",
    u"solver scope error",
    u"Hessian information not available",
    u"One or more of the requested thermodynamic properties are not set on the material",
};
static_assert(std::size(capeErrorTexts) == lastCapeCode - firstCapeCode + 1);

/// What `getter` of the object's `Interface` says; empty if there is no such interface, the call fails or says nothing.
template <class Interface>
std::u16string AskObject(IUnknown* object, HRESULT (STDMETHODCALLTYPE Interface::*getter)(BSTR*)) {
    CComRef<Interface> asked;
    void* found = nullptr;
    if (FAILED(object->QueryInterface(InterfaceId<Interface>(), &found)) || !found) return {};
    asked.Reset(static_cast<Interface*>(found));
    CBstr text;
    if (FAILED((asked.Get()->*getter)(text.Receive()))) return {};
    return std::u16string(text.View());
}

}  // namespace

std::u16string GetCapeErrorText(IUnknown* outsideObject, HRESULT resultCode) {
    const auto code = static_cast<std::uint32_t>(resultCode);
    if (code < firstCapeCode || code > lastCapeCode) return GetSystemErrorText(resultCode);
    if (outsideObject) {
        std::u16string text = AskObject<ECapeUser>(outsideObject, &ECapeUser::get_description);
        if (text.empty()) text = AskObject<ECapeRoot>(outsideObject, &ECapeRoot::get_name);
        if (!text.empty()) return text;
    }
    const char16_t* const text = capeErrorTexts[code - firstCapeCode];
    return text ? text : u"Failed to get error name";
}

std::u16string GetSystemErrorText(HRESULT resultCode) try {
    std::u16string text;
    if (FindSystemMessage(resultCode, text)) {
        if (text.ends_with(u'\n')) {
            text.pop_back();
            if (text.ends_with(u'\r')) text.pop_back();
        }
        if (!text.empty()) return text;
    }
    text = u"error code 0x";
    constexpr char16_t digits[] = u"0123456789ABCDEF";
    for (int shift = 28; shift >= 0; shift -= 4) text += digits[static_cast<std::uint32_t>(resultCode) >> shift & 0xF];
    return text;
} catch (const std::bad_alloc&) {
    return u"<unknown error>";  // the text couldn't be copied
}

}  // namespace reka
