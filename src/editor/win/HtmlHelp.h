// HTML Help.

#pragma once

#include <string>

#include <windows.h>

namespace reka {

/// Shows `topic` of the help file at `path`, in a window of its own that lies above `owner`. False if there is no HTML
/// Help on the system, which counts for as long as the module stays loaded, or if it shows nothing.
bool ShowHtmlHelp(HWND owner, const std::u16string& path, const std::u16string& topic);

/// Path of the control library as the system's classes name it, without the names of variables; empty if they don't.
std::u16string FindHelpLibrary();

}  // namespace reka
