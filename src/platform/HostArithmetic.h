// The floating point settings of the host, which are not ours: a host may trap on exceptions, round in another
// direction or run its x87 unit at another precision. A method that computes sets its own, and every call that goes out
// runs under the host's again. What the host handles of its own accord while one of our dialogs waits for messages runs
// under ours.

#pragma once

#include <cstdint>
#include <utility>

namespace reka {

/// Rounding, precision and exception masks of both floating point units of the processor.
struct ArithmeticSettings {
    std::uint32_t sse = 0;  // MXCSR
    std::uint16_t x87 = 0;  // control word
};

/// The settings in force.
ArithmeticSettings CurrentArithmetic();

/// Puts settings in force. Exceptions of the x87 unit that are pending by then are forgotten, so that none is raised
/// late.
void SetArithmetic(const ArithmeticSettings& settings);

/// While it lives, no floating point exception traps, results are rounded to nearest, and denormal numbers are kept. At
/// its end the settings are again those that it found, with the SSE flags, and no x87 exception is left pending.
class COwnArithmetic {
public:
    COwnArithmetic();
    ~COwnArithmetic();
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
        explicit CHostSettings(const ArithmeticSettings& host);
        ~CHostSettings();
        CHostSettings(const CHostSettings&) = delete;
        CHostSettings& operator=(const CHostSettings&) = delete;
    };

    ArithmeticSettings host;
};

}  // namespace reka
