// SPDX-License-Identifier: MIT
// A file for a test of what reads and writes files by their paths.

#pragma once

#include <string>

namespace reka::test {

/// A file of its own in the temporary folder, removed at the end.
class CTemporaryFile {
public:
    CTemporaryFile(const std::string& name, const std::string& content);
    ~CTemporaryFile();
    CTemporaryFile(const CTemporaryFile&) = delete;
    CTemporaryFile& operator=(const CTemporaryFile&) = delete;

    const std::string& Path() const { return path; }
    bool IsThere() const;
    std::string Content() const;

private:
    std::string path;  // UTF-8
};

}  // namespace reka::test
