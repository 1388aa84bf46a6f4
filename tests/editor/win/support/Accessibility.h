// SPDX-License-Identifier: MIT
// What those are told who don't see a dialog: the names of its controls.

#pragma once

#include <string>

#include "Driver.h"

namespace reka::test {

/// The name that the system's accessibility interface gives the control; empty for none.
std::u16string AccessibleName(CUser& user, HWND control);

/// The name by the rule of the newer systems' interface: the text of a button, and otherwise that of the label before
/// the control, which may be invisible; another control that the keyboard reaches must not stand between.
std::u16string NameByRule(CUser& user, HWND control);

}  // namespace reka::test
