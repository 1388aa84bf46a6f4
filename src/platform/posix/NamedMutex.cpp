// SPDX-License-Identifier: MIT
// Mutexes known by name within this process. As on systems that have them, a name lasts while somebody has its mutex
// open.

#include "platform/NamedMutex.h"

#include <map>
#include <mutex>
#include <string>

namespace reka {

namespace {

struct SharedMutex {
    std::recursive_mutex mutex;
    int users = 0;  // who have it open; under `namesLock`
};
using SharedMutexes = std::map<std::u16string, SharedMutex>;

std::mutex namesLock;

SharedMutexes& MutexOfName() {
    static SharedMutexes mutexOfName;
    return mutexOfName;
}

class CProcessMutex final : public INamedMutex {
public:
    explicit CProcessMutex(const char16_t* name) {
        const std::lock_guard lock(namesLock);
        shared = MutexOfName().try_emplace(name).first;
        ++shared->second.users;
    }
    CProcessMutex(const CProcessMutex&) = delete;
    CProcessMutex& operator=(const CProcessMutex&) = delete;
    ~CProcessMutex() override {
        const std::lock_guard lock(namesLock);
        if (--shared->second.users == 0) MutexOfName().erase(shared);
    }

    bool Wait() noexcept override try {
        shared->second.mutex.lock();
        return true;
    } catch (...) {
        return false;
    }
    void Release() noexcept override { shared->second.mutex.unlock(); }

private:
    SharedMutexes::iterator shared;
};

class CProcessMutexes final : public INamedMutexes {
public:
    std::unique_ptr<INamedMutex> Open(const char16_t* name) override { return std::make_unique<CProcessMutex>(name); }
};

}  // namespace

INamedMutexes& SystemMutexes() {
    static CProcessMutexes mutexes;
    return mutexes;
}

}  // namespace reka
