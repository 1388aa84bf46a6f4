// SPDX-License-Identifier: MIT
// A module file begins with the header of a program of old, "MZ", which has at offset 60 the place of the header that
// counts: "PE", two zeros, and the 16 bits that name the machine. All numbers are little-endian.

#include "ModuleKind.h"

#include <array>

namespace rekadoctor {

namespace {

constexpr std::size_t headerPlaceOffset = 60;
constexpr std::array<std::uint8_t, 4> headerMark = {'P', 'E', 0, 0};
constexpr unsigned machineX86 = 0x014C;
constexpr unsigned machineX64 = 0x8664;

}  // namespace

ModuleKind KindOfModule(std::span<const std::uint8_t> head) {
    if (head.size() < headerPlaceOffset + 4 || head[0] != 'M' || head[1] != 'Z') return ModuleKind::NotAModule;
    std::uint32_t place = 0;
    for (std::size_t i = 4; i-- > 0;) place = place << 8 | head[headerPlaceOffset + i];
    if (place > head.size() || head.size() - place < headerMark.size() + 2) return ModuleKind::NotAModule;
    const std::span<const std::uint8_t> header = head.subspan(place);
    for (std::size_t i = 0; i < headerMark.size(); ++i) {
        if (header[i] != headerMark[i]) return ModuleKind::NotAModule;
    }
    const unsigned machine = static_cast<unsigned>(header[4]) | static_cast<unsigned>(header[5]) << 8;
    if (machine == machineX86) return ModuleKind::X86;
    return machine == machineX64 ? ModuleKind::X64 : ModuleKind::Other;
}

}  // namespace rekadoctor
