// SPDX-License-Identifier: MIT
// A thread with a small stack, by way of POSIX threads.

#include "support/SmallStack.h"

#include <pthread.h>

#include <system_error>

namespace reka::test {

namespace {

void* RunFunction(void* function) {
    (*static_cast<const std::function<void()>*>(function))();
    return nullptr;
}

void Require(int code) {
    if (code != 0) throw std::system_error(code, std::generic_category());
}

}  // namespace

void RunOnSmallStack(const std::function<void()>& function) {
    pthread_attr_t attributes;
    pthread_t thread;
    Require(pthread_attr_init(&attributes));
    Require(pthread_attr_setstacksize(&attributes, smallStackBytes));
    Require(pthread_create(&thread, &attributes, RunFunction, const_cast<std::function<void()>*>(&function)));
    Require(pthread_join(thread, nullptr));
    pthread_attr_destroy(&attributes);
}

}  // namespace reka::test
