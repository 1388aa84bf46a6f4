// SPDX-License-Identifier: MIT
// A seam to what lies outside: files, locks, messages, windows. Each has its usual fulfilment, and a test or a program
// of another kind puts its own in its place.

#pragma once

#include <utility>

namespace reka {

/// Holds what was put in the place of the usual fulfilment of `Interface`, which it lends. Nothing is destroyed with
/// it, so that it may be one of the module.
template <class Interface>
class CSeam {
public:
    /// What was put there, or `usual`.
    Interface& Or(Interface& usual) const { return replacement ? *replacement : usual; }
    /// Puts `other` there, or nothing for null, and gives what was there.
    Interface* Replace(Interface* other) { return std::exchange(replacement, other); }

private:
    Interface* replacement = nullptr;
};

}  // namespace reka
