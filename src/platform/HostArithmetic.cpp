// The settings live in two registers, which the compilers of all builds reach alike. The library's <cfenv> would do,
// but it stores the whole state of the x87 unit each time, which costs more than the calculation in between.

#include "platform/HostArithmetic.h"

#include <xmmintrin.h>

namespace reka {

namespace {

// All exceptions masked, round to nearest; x87 with the 64-bit mantissa that the runtime's functions are written for.
constexpr ArithmeticSettings ownSettings = {0x1F80, 0x037F};

constexpr std::uint32_t sseFlags = 0x003F;  // exceptions seen so far; not part of the settings

bool SameSettings(const ArithmeticSettings& left, const ArithmeticSettings& right) {
    return ((left.sse ^ right.sse) & ~sseFlags) == 0 && left.x87 == right.x87;
}

}  // namespace

ArithmeticSettings CurrentArithmetic() {
    ArithmeticSettings settings;
    settings.sse = _mm_getcsr();
    __asm__ __volatile__("fnstcw %0" : "=m"(settings.x87));
    return settings;
}

void SetArithmetic(const ArithmeticSettings& settings) {
    constexpr std::uint16_t x87Flags = 0x003F;
    std::uint16_t status = 0;
    __asm__ __volatile__("fnstsw %0" : "=a"(status));
    if ((status & x87Flags) != 0 || CurrentArithmetic().x87 != settings.x87) {
        // A pending exception would be raised by the next operation once its mask is gone.
        __asm__ __volatile__("fnclex\n\tfldcw %0" : : "m"(settings.x87));
    }
    if (_mm_getcsr() != settings.sse) _mm_setcsr(settings.sse);  // which costs more than to look
}

COwnArithmetic::COwnArithmetic() : host(CurrentArithmetic()) {
    if (!SameSettings(host, ownSettings)) SetArithmetic(ownSettings);
}

COwnArithmetic::~COwnArithmetic() {
    SetArithmetic(host);
}

COwnArithmetic::CHostSettings::CHostSettings(const ArithmeticSettings& host) {
    SetArithmetic(host);
}

COwnArithmetic::CHostSettings::~CHostSettings() {
    if (!SameSettings(CurrentArithmetic(), ownSettings)) SetArithmetic(ownSettings);
}

}  // namespace reka
