// SPDX-License-Identifier: MIT
// Lets the system's own calls on files fail, one at a time, as on a disk that breaks. The linker leads the calls of all
// that is linked into a test program here (--wrap), and only those: the runtime's own go past.

#pragma once

namespace reka::test {

/// Makes the `n`-th call on a file from here on fail with EIO, counted from 1; the ones after it succeed again. 0 takes
/// an earlier call back. What counts is what opens, reads, writes, names or describes a file; closing and deleting
/// don't, since they are how a failure is cleaned up.
void FailFileCall(int n);

/// Whether the call chosen by `FailFileCall` is still to come.
bool IsFileCallToFail();

/// Runs `operation` with each call on a file failing in turn, until it gets by with fewer. `prepare` runs before each
/// try; `check` is told whether a call failed. The number of calls that failed.
template <class Prepare, class Operation, class Check>
int ForEachFileCall(Prepare&& prepare, Operation&& operation, Check&& check) {
    for (int n = 1;; ++n) {
        prepare();
        FailFileCall(n);
        operation();
        const bool isReached = !IsFileCallToFail();
        FailFileCall(0);
        check(n, isReached);
        if (!isReached) return n - 1;
    }
}

}  // namespace reka::test
