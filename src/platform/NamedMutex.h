// SPDX-License-Identifier: MIT
// Mutexes that all processes of a session know by their names: a seam, so that a test can let each step fail.

#pragma once

#include <memory>

namespace reka {

/// An open mutex; its destruction closes it. The thread that holds it may take it again.
class INamedMutex {
public:
    virtual ~INamedMutex() = default;
    /// Takes the mutex, however long that lasts; one whose holder ended without releasing it is taken like any other.
    /// False if the wait failed.
    virtual bool Wait() noexcept = 0;
    /// Gives back what a `Wait` took.
    virtual void Release() noexcept = 0;
};

class INamedMutexes {
public:
    virtual ~INamedMutexes() = default;
    /// The mutex of that name, made if there is none; nobody holds a new one. Null if that fails. May throw
    /// std::bad_alloc.
    virtual std::unique_ptr<INamedMutex> Open(const char16_t* name) = 0;
};

/// Holds a mutex for the time of a block.
class CNamedMutexLock {
public:
    explicit CNamedMutexLock(INamedMutex& taken) : mutex(taken), isHeld(taken.Wait()) {}
    CNamedMutexLock(const CNamedMutexLock&) = delete;
    CNamedMutexLock& operator=(const CNamedMutexLock&) = delete;
    ~CNamedMutexLock() {
        if (isHeld) mutex.Release();
    }
    /// False if the wait failed.
    bool IsHeld() const { return isHeld; }

private:
    INamedMutex& mutex;
    const bool isHeld;
};

/// The system's mutexes. Off Windows a name is known in this process alone.
INamedMutexes& SystemMutexes();

/// What the component takes in this process.
INamedMutexes& NamedMutexes();

/// Puts another one in its place, or the system's again for null, and gives the one before. For tests.
INamedMutexes* ReplaceNamedMutexes(INamedMutexes* replacement);

}  // namespace reka
