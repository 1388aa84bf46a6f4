// SPDX-License-Identifier: MIT
// An environment variable that a test sets.

#pragma once

#include <cstdlib>
#include <string>

namespace reka::test {

/// Has its value while this lives, and then the one from before.
class CEnvironmentVariable {
public:
    CEnvironmentVariable(const char* variable, const std::string& value) : name(variable) {
        const char* const found = std::getenv(name);
        hadValue = found != nullptr;
        if (found) before = found;
        setenv(name, value.c_str(), 1);
    }
    ~CEnvironmentVariable() {
        if (hadValue) {
            setenv(name, before.c_str(), 1);
        } else {
            unsetenv(name);
        }
    }
    CEnvironmentVariable(const CEnvironmentVariable&) = delete;
    CEnvironmentVariable& operator=(const CEnvironmentVariable&) = delete;

private:
    const char* name;
    bool hadValue = false;
    std::string before;
};

}  // namespace reka::test
