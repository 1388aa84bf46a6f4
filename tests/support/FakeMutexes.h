// SPDX-License-Identifier: MIT
// Named mutexes that a test lets fail, and whose operations it records in their order.

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/NamedMutex.h"
#include "text/Utf8.h"

namespace reka::test {

/// Takes the place of the system's mutexes while it lives. Nobody else holds one, so a wait ends at once.
class CFakeMutexes : public INamedMutexes {
public:
    CFakeMutexes() : before(ReplaceNamedMutexes(this)) {}
    ~CFakeMutexes() override { ReplaceNamedMutexes(before); }
    CFakeMutexes(const CFakeMutexes&) = delete;
    CFakeMutexes& operator=(const CFakeMutexes&) = delete;

    std::unique_ptr<INamedMutex> Open(const char16_t* name) override {
        calls.push_back("open " + Utf8FromUtf16(name));
        if (isOpenToFail) return nullptr;
        return std::make_unique<CFakeMutex>(*this);
    }

    std::vector<std::string> calls;
    bool isOpenToFail = false;
    bool isWaitToFail = false;
    std::function<void()> onRelease;

private:
    class CFakeMutex : public INamedMutex {
    public:
        explicit CFakeMutex(CFakeMutexes& record) : mutexes(record) {}
        CFakeMutex(const CFakeMutex&) = delete;
        CFakeMutex& operator=(const CFakeMutex&) = delete;
        ~CFakeMutex() override { mutexes.calls.push_back("close"); }
        bool Wait() noexcept override {
            mutexes.calls.push_back("wait");
            return !mutexes.isWaitToFail;
        }
        void Release() noexcept override {
            mutexes.calls.push_back("release");
            if (mutexes.onRelease) mutexes.onRelease();
        }

    private:
        CFakeMutexes& mutexes;
    };

    INamedMutexes* before;
};

}  // namespace reka::test
