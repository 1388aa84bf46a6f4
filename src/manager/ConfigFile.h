// SPDX-License-Identifier: MIT
// Names around the file of templates, which TemplateStore::GetConfigFilePath finds.

#pragma once

#include <cstdint>
#include <string>

namespace reka {

/// The folder of the shipped files beside the component, with a separator at its end.
std::u16string SystemDataFolder();

/// The user's file with ".backup" behind it, and `number` behind that unless it is 0.
std::u16string BackupName(const std::u16string& userFile, std::uint32_t number);

}  // namespace reka
