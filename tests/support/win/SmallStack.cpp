// SPDX-License-Identifier: MIT
// A thread with a small stack, by way of the Windows interface.

#include "support/SmallStack.h"

#include <windows.h>

#include <system_error>

namespace reka::test {

namespace {

DWORD WINAPI RunFunction(void* function) {
    (*static_cast<const std::function<void()>*>(function))();
    return 0;
}

}  // namespace

void RunOnSmallStack(const std::function<void()>& function) {
    const HANDLE thread =
        CreateThread(nullptr, smallStackBytes, RunFunction, const_cast<std::function<void()>*>(&function),
                     STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (!thread) throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

}  // namespace reka::test
