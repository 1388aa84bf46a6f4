// SPDX-License-Identifier: MIT
// Each routine stands before the system's of that name, which the linker calls __real_. Only one call fails at a time,
// so what a program does about a failure is seen to its end.

#include "support/posix/FailingCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>

namespace reka::test {

namespace {

int callsUntilFailure = 0;  // 0 for none to fail

bool IsTurn() {
    if (callsUntilFailure == 0 || --callsUntilFailure > 0) return false;
    errno = EIO;
    return true;
}

}  // namespace

void FailFileCall(int n) {
    callsUntilFailure = n;
}

bool IsFileCallToFail() {
    return callsUntilFailure != 0;
}

}  // namespace reka::test

using reka::test::IsTurn;

// NOLINTBEGIN(bugprone-reserved-identifier): the linker's names
extern "C" {

int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t rights = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return IsTurn() ? -1 : __real_open(path, flags, rights);
}

ssize_t __real_read(int file, void* buffer, size_t size);
ssize_t __wrap_read(int file, void* buffer, size_t size) {
    return IsTurn() ? -1 : __real_read(file, buffer, size);
}

ssize_t __real_write(int file, const void* data, size_t size);
ssize_t __wrap_write(int file, const void* data, size_t size) {
    return IsTurn() ? -1 : __real_write(file, data, size);
}

int __real_fsync(int file);
int __wrap_fsync(int file) {
    return IsTurn() ? -1 : __real_fsync(file);
}

int __real_rename(const char* from, const char* to);
int __wrap_rename(const char* from, const char* to) {
    return IsTurn() ? -1 : __real_rename(from, to);
}

int __real_renameat2(int folder, const char* from, int other, const char* to, unsigned flags);
int __wrap_renameat2(int folder, const char* from, int other, const char* to, unsigned flags) {
    return IsTurn() ? -1 : __real_renameat2(folder, from, other, to, flags);
}

int __real_fchmod(int file, mode_t rights);
int __wrap_fchmod(int file, mode_t rights) {
    return IsTurn() ? -1 : __real_fchmod(file, rights);
}

int __real_fchown(int file, uid_t user, gid_t group);
int __wrap_fchown(int file, uid_t user, gid_t group) {
    return IsTurn() ? -1 : __real_fchown(file, user, group);
}

int __real_futimens(int file, const timespec* times);
int __wrap_futimens(int file, const timespec* times) {
    return IsTurn() ? -1 : __real_futimens(file, times);
}

int __real_fstat(int file, struct stat* found);
int __wrap_fstat(int file, struct stat* found) {
    return IsTurn() ? -1 : __real_fstat(file, found);
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
