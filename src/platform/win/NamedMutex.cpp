// SPDX-License-Identifier: MIT
// The system's mutexes. One whose holder ended without giving it back counts as taken: a process that died while it
// parsed must not keep all others from it. One that a program with more rights has made can't be had whole, and need
// not be: to wait for it and to give it back is all that is done with it.

#include "platform/NamedMutex.h"

#include <windows.h>

namespace reka {

namespace {

HANDLE OpenMutexOf(const wchar_t* name) {
    const HANDLE whole = CreateMutexW(nullptr, FALSE, name);
    if (whole || GetLastError() != ERROR_ACCESS_DENIED) return whole;
    const HANDLE usable = OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, name);
    return usable ? usable : OpenMutexW(SYNCHRONIZE, FALSE, name);
}

class CSystemMutex final : public INamedMutex {
public:
    explicit CSystemMutex(const char16_t* name) : handle(OpenMutexOf(reinterpret_cast<const wchar_t*>(name))) {}
    CSystemMutex(const CSystemMutex&) = delete;
    CSystemMutex& operator=(const CSystemMutex&) = delete;
    ~CSystemMutex() override {
        if (handle) CloseHandle(handle);
    }
    bool IsOpen() const { return handle != nullptr; }

    bool Wait() noexcept override {
        const DWORD outcome = WaitForSingleObject(handle, INFINITE);
        return outcome == WAIT_OBJECT_0 || outcome == WAIT_ABANDONED;
    }
    void Release() noexcept override { ReleaseMutex(handle); }

private:
    const HANDLE handle;
};

class CSystemMutexes final : public INamedMutexes {
public:
    std::unique_ptr<INamedMutex> Open(const char16_t* name) override {
        auto mutex = std::make_unique<CSystemMutex>(name);
        if (!mutex->IsOpen()) return nullptr;
        return mutex;
    }
};

// Not local to its function: the runtime's guard would hold handles that stay when the module is unloaded.
CSystemMutexes mutexes;

}  // namespace

INamedMutexes& SystemMutexes() {
    return mutexes;
}

}  // namespace reka
