// SPDX-License-Identifier: MIT
// Numbers of the module's resources but for what the editor shows, which editor/win/resource.h has.

#pragma once

#define TYPE_LIBRARY 1
#define IDS_NAME 100
#define REGISTRY_SCRIPT 101
