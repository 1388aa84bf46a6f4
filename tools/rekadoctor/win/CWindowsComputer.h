// SPDX-License-Identifier: MIT
// Asks this Windows.

#pragma once

#include "Computer.h"

namespace rekadoctor {

class CWindowsComputer : public CComputer {
public:
    Surroundings Describe() override;
    bool HasKey(RegistryPlace place, const std::string& key) override;
    std::optional<std::string> ReadText(RegistryPlace place, const std::string& key, const std::string& value) override;
    bool HasFile(const std::string& path) override;
    std::optional<std::vector<std::uint8_t>> ReadFileHead(const std::string& path, std::size_t size) override;
    FileContent ReadFile(const std::string& path) override;
    std::string FindUserFolder() override;
    std::string FindModule(const std::string& name) override;
    Loading Load(const std::string& path) override;
    Trial TryManager(const std::string& name) override;
};

/// The path of the module that `address` lies in; empty if it lies in none.
std::string FileOfAddress(const void* address);

}  // namespace rekadoctor
