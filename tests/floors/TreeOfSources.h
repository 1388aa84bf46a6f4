// SPDX-License-Identifier: MIT
// A tree of sources that a test makes up.

#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace floors {

/// Lies in a folder of its own, which goes with it.
class CTreeOfSources {
public:
    CTreeOfSources() {
        char path[] = "/tmp/reka-floors-XXXXXX";
        root = mkdtemp(path);
    }
    ~CTreeOfSources() { std::filesystem::remove_all(root); }
    CTreeOfSources(const CTreeOfSources&) = delete;
    CTreeOfSources& operator=(const CTreeOfSources&) = delete;

    void Write(const std::filesystem::path& file, const std::string& text) const {
        std::filesystem::create_directories((root / file).parent_path());
        std::ofstream(root / file) << text;
    }

    std::filesystem::path root;
};

}  // namespace floors
