// SPDX-License-Identifier: MIT
// The number that a call of the system leaves behind for its thread where it fails.

#pragma once

namespace reka {

unsigned long ThreadError();
void SetThreadError(unsigned long error);

}  // namespace reka
