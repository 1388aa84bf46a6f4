// SPDX-License-Identifier: MIT
// Holders of what the host lends for the time of a request, made while a COwnArithmetic lives. Giving back is a call
// that goes out as well: it runs under the host's own floating point settings.

#pragma once

#include <utility>

#include "platform/Automation.h"
#include "platform/Holders.h"
#include "platform/HostArithmetic.h"

namespace reka {

/// An interface of an object of the host's, or null.
template <class Interface>
class CAskedInterface {
public:
    CAskedInterface(Interface* owned, const COwnArithmetic& ownArithmetic) : object(owned), arithmetic(ownArithmetic) {}
    CAskedInterface(CAskedInterface&& other) noexcept
        : object(std::exchange(other.object, nullptr)), arithmetic(other.arithmetic) {}
    ~CAskedInterface() {
        if (object) arithmetic.Outside([this] { object->Release(); });
    }
    CAskedInterface& operator=(CAskedInterface&&) = delete;

    Interface* Get() const { return object; }
    Interface* operator->() const { return object; }
    Interface& operator*() const { return *object; }
    explicit operator bool() const { return object != nullptr; }

private:
    Interface* object;
    const COwnArithmetic& arithmetic;
};

/// An answer of the host's, which may hold an object.
class CAnswer {
public:
    explicit CAnswer(const COwnArithmetic& ownArithmetic) : arithmetic(ownArithmetic) {}
    ~CAnswer() {
        arithmetic.Outside([this] { value.Reset(); });
    }
    CAnswer(const CAnswer&) = delete;
    CAnswer& operator=(const CAnswer&) = delete;

    VARIANT& Get() { return value.Get(); }
    const VARIANT& Get() const { return value.Get(); }

private:
    CVariant value;
    const COwnArithmetic& arithmetic;
};

}  // namespace reka
