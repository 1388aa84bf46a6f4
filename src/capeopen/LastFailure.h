// SPDX-License-Identifier: MIT
// The words of an object's last failure, and whose they are.

#pragma once

#include <cstdint>

#include "platform/Automation.h"
#include "platform/Holders.h"

namespace reka {

/// Four texts that stay until the next failure. A late-bound caller gets them with the failed call itself, if it was
/// that call which recorded them: neither an earlier one, nor one that a host made while the call was under way.
class CLastFailure {
public:
    CLastFailure() = default;
    CLastFailure(const CLastFailure&) = delete;
    CLastFailure& operator=(const CLastFailure&) = delete;

    /// Null gives an absent text, and so does a text that can't be copied for want of memory.
    void Record(const char16_t* name, const char16_t* description, const char16_t* scope,
                const char16_t* interfaceName) noexcept;

    const CBstr& Name() const { return errorName; }
    const CBstr& Description() const { return errorDescription; }
    const CBstr& Scope() const { return errorScope; }
    const CBstr& InterfaceName() const { return errorInterface; }

    /// A method of the object is under way while it lives.
    class CMethod {
    public:
        explicit CMethod(CLastFailure& failure) : last(failure) { ++last.methodsUnderWay; }
        ~CMethod() { --last.methodsUnderWay; }
        CMethod(const CMethod&) = delete;
        CMethod& operator=(const CMethod&) = delete;

    private:
        CLastFailure& last;
    };

    /// A moment before a method is called.
    struct Moment {
        std::uint32_t failures;
        std::int32_t methods;
    };
    Moment Now() const { return {failuresSoFar, methodsUnderWay}; }

    /// Gives the caller of the method that was called at `moment` its words: what it recorded as the description, and
    /// "interface.method" as the source. Both are absent if it recorded nothing, or there is no memory for them. They
    /// take the place of what is in `exception`, which is freed, and are the caller's.
    void Tell(Moment moment, EXCEPINFO& exception) const noexcept;

private:
    CBstr errorName;
    CBstr errorDescription;
    CBstr errorScope;
    CBstr errorInterface;
    std::uint32_t failuresSoFar = 0;
    std::int32_t methodsUnderWay = 0;  // one within the other
    std::int32_t methodsAtFailure = 0;
};

}  // namespace reka
