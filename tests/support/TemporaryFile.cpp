// SPDX-License-Identifier: MIT
// Tests run beside each other, in processes of their own, so a name is made of random numbers.

#include "support/TemporaryFile.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace reka::test {

namespace {

std::filesystem::path NativePath(const std::string& path) {
    return {std::u8string(path.begin(), path.end())};
}

std::string Utf8Path(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string UniquePrefix() {
    std::random_device random;
    return "reka-test-" + std::to_string(random()) + "-" + std::to_string(random()) + "-";
}

}  // namespace

CTemporaryFile::CTemporaryFile(const std::string& name, const std::string& content)
    : path(Utf8Path(std::filesystem::temp_directory_path() / NativePath(UniquePrefix() + name))) {
    if (!content.empty()) std::ofstream(NativePath(path), std::ios::binary) << content;
}

CTemporaryFile::~CTemporaryFile() {
    std::error_code ignored;
    std::filesystem::remove(NativePath(path), ignored);
}

bool CTemporaryFile::IsThere() const {
    std::error_code ignored;
    return std::filesystem::exists(NativePath(path), ignored);
}

std::string CTemporaryFile::Content() const {
    std::ifstream file(NativePath(path), std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

}  // namespace reka::test
