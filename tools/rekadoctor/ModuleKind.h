// SPDX-License-Identifier: MIT
// For what kind of program a module file is made.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace rekadoctor {

enum class ModuleKind : std::uint8_t { NotAModule, X86, X64, Other };

/// How many bytes of a file are enough for `KindOfModule`.
constexpr std::size_t moduleHeadSize = 4096;

/// Reads the headers at the start of a module file. Bytes that don't hold them all are no module.
ModuleKind KindOfModule(std::span<const std::uint8_t> head);

}  // namespace rekadoctor
