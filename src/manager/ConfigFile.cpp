// SPDX-License-Identifier: MIT
// Where the file of templates lies, and how a user comes to it: the first copy, and the replacement by a newer one.
// Most of this goes ahead whether or not a step succeeded: a folder that couldn't be made or a copy that failed shows
// itself when the file is opened, and there the store has words for it. Which file is newer is told by the times of
// their last writes, since the form has no place for a version.

#include <cstdint>
#include <string>

#include "manager/ConfigFile.h"
#include "manager/TemplateStore.h"
#include "platform/Files.h"
#include "platform/ModuleFile.h"
#include "platform/UserMessages.h"

namespace reka {

namespace {

const char16_t* const configFileName = u"REKAConfig.dat";

/// The user's file, with its folders made. Whether they could be made shows when the file is used.
std::u16string UserFile() {
    std::u16string path;
    if (Files().FindUserFolder(path)) {
        if (!path.ends_with(pathSeparator)) path += pathSeparator;
        path += u"NAVO";
        path += pathSeparator;
        Files().CreateFolder(path);
    } else {
        path = ComponentFolder();
    }
    path += u"data";
    path += pathSeparator;
    Files().CreateFolder(path);
    return path + configFileName;
}

bool WantsSystemFile() {
    const MessageAnswer answer = UserMessages().Show(
        {u"The system REKA configuration is newer than the user REKA configuration. Replace user configuration with "
         u"system configuration?",
         u"Newer REKA configuration:", messagestyle::yesNo | messagestyle::iconQuestion, MessageOwner::None});
    return answer == MessageAnswer::Yes;
}

void ReplaceBySystemFile(const std::u16string& userFile, const std::u16string& systemFile) {
    std::uint32_t number = 1;
    std::u16string backup = BackupName(userFile, number);
    while (Files().Exists(backup)) backup = BackupName(userFile, ++number);
    Files().Copy(userFile, backup);
    Files().Copy(systemFile, userFile);
    UserMessages().Show({u"Backing up user REKA configuration file \"" + userFile + u"\" to \"" + backup +
                             u"\" and replacing by system REKA configuration file, which is newer.",
                         u"REKA Configuration:", messagestyle::ok | messagestyle::iconInformation, MessageOwner::None});
}

}  // namespace

std::u16string SystemDataFolder() {
    return ComponentFolder() + u"data" + pathSeparator;
}

std::u16string BackupName(const std::u16string& userFile, std::uint32_t number) {
    std::u16string name = userFile + u".backup";
    if (number == 0) return name;
    for (const char digit : std::to_string(number)) name += static_cast<char16_t>(digit);
    return name;
}

bool TemplateStore::GetConfigFilePath(std::u16string& path, bool reconcile) {
    path = UserFile();
    if (!reconcile) return false;
    const std::u16string systemFile = SystemDataFolder() + configFileName;
    if (!Files().Exists(path)) {
        // Without a system file there is none for the user either. A file that only couldn't be seen stays, and so does
        // the name of one that is about to go: another simulator is replacing it.
        return Files().IsAbsent(path) && Files().CopyNew(systemFile, path);
    }
    const std::uint64_t userTime = Files().LastWriteTime(path);
    const std::uint64_t systemTime = Files().LastWriteTime(systemFile);
    // A no isn't remembered: the question comes again until the user says yes or stores something.
    if (userTime < systemTime && WantsSystemFile()) ReplaceBySystemFile(path, systemFile);
    return true;
}

}  // namespace reka
