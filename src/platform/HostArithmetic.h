// SPDX-License-Identifier: MIT
// The floating point settings of the host, which are not ours: a host may trap on exceptions, round in another
// direction or run its x87 unit at another precision. A method that computes sets its own, and every call that goes out
// runs under the host's again. What the host handles of its own accord while one of our dialogs waits for messages runs
// under ours.

#pragma once

#include <xmmintrin.h>

#include <cstdint>
#include <utility>

namespace reka {

/// Rounding, precision and exception masks of both floating point units of the processor.
struct ArithmeticSettings {
    std::uint32_t sse = 0;  // MXCSR
    std::uint16_t x87 = 0;  // control word
};

/// All exceptions masked, round to nearest; x87 with the 64-bit mantissa that the runtime's functions are written for.
constexpr ArithmeticSettings ownArithmeticSettings = {0x1F80, 0x037F};

// Inline, since they stand around every call that goes out. The settings live in two registers, which the compilers of
// all builds reach alike. The library's <cfenv> would do, but it stores the whole state of the x87 unit each time,
// which costs more than the calculation in between.

/// The settings in force.
inline ArithmeticSettings CurrentArithmetic() {
    ArithmeticSettings settings;
    settings.sse = _mm_getcsr();
    __asm__ __volatile__("fnstcw %0" : "=m"(settings.x87));
    return settings;
}

/// Puts settings in force. Exceptions of the x87 unit that are pending by then are forgotten, so that none is raised
/// late.
inline void SetArithmetic(const ArithmeticSettings& settings) {
    constexpr std::uint16_t x87Flags = 0x003F;
    const ArithmeticSettings current = CurrentArithmetic();
    std::uint16_t status = 0;
    __asm__ __volatile__("fnstsw %0" : "=a"(status));
    if ((status & x87Flags) != 0 || current.x87 != settings.x87) {
        // A pending exception would be raised by the next operation once its mask is gone.
        __asm__ __volatile__("fnclex\n\tfldcw %0" : : "m"(settings.x87));
    }
    if (current.sse != settings.sse) _mm_setcsr(settings.sse);  // which costs more than to look
}

/// Whether settings are the same, whatever exceptions have been seen.
constexpr bool SameArithmetic(const ArithmeticSettings& left, const ArithmeticSettings& right) {
    constexpr std::uint32_t sseFlags = 0x003F;
    return ((left.sse ^ right.sse) & ~sseFlags) == 0 && left.x87 == right.x87;
}

/// While it lives, no floating point exception traps, results are rounded to nearest, and denormal numbers are kept. At
/// its end the settings are again those that it found, with the SSE flags, and no x87 exception is left pending.
class COwnArithmetic {
public:
    COwnArithmetic() : host(CurrentArithmetic()) {
        if (!SameArithmetic(host, ownArithmeticSettings)) SetArithmetic(ownArithmeticSettings);
    }
    ~COwnArithmetic() { SetArithmetic(host); }
    COwnArithmetic(const COwnArithmetic&) = delete;
    COwnArithmetic& operator=(const COwnArithmetic&) = delete;

    /// Runs a call that goes out to the host under the host's own settings, and gives its result.
    template <class Call>
    auto Outside(Call&& call) const {
        const CHostSettings settings(host);
        return std::forward<Call>(call)();
    }

private:
    /// The host's settings for the time of a call, ours again after it, whatever the call left behind.
    class CHostSettings {
    public:
        explicit CHostSettings(const ArithmeticSettings& host) { SetArithmetic(host); }
        ~CHostSettings() {
            if (!SameArithmetic(CurrentArithmetic(), ownArithmeticSettings)) SetArithmetic(ownArithmeticSettings);
        }
        CHostSettings(const CHostSettings&) = delete;
        CHostSettings& operator=(const CHostSettings&) = delete;
    };

    ArithmeticSettings host;
};

}  // namespace reka
