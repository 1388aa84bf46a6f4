// How the programs that build shipped data write their file.

#pragma once

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace shipped {

/// Replaces the file at `path`. False, with a line on standard error, if that fails.
inline bool WriteOutput(const char* path, const std::vector<std::uint8_t>& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (file) return true;
    std::fprintf(stderr, "%s can't be written\n", path);
    return false;
}

}  // namespace shipped
