// SPDX-License-Identifier: MIT
// What a reader of the report has to know of the computer: tests depend on it, and the person who runs them needn't
// know.

#pragma once

#include <string>

namespace testreport {

/// Such as "Windows 10.0.19045, 64-bit", with Wine's version where it is Wine.
std::string SystemVersion();
bool IsWine();
/// Such as "1252, of consoles 850".
std::string CodePages();
/// Such as "1920 x 1080, 144 dots per inch".
std::string Screen();

}  // namespace testreport
