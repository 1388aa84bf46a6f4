// SPDX-License-Identifier: MIT
// Reading, setting aside and writing the file of templates. For example: the file of a user, REKAConfig.dat, holds two
// templates of which the second is damaged, and an older damaged file lies beside it as REKAConfig.dat.backup.
//
//     LoadTemplates    reads the count and the first block, finds the fault in the second
//                      closes the file and destroys the template that was read
//                      renames REKAConfig.dat.backup to REKAConfig.dat.backup1
//                      renames REKAConfig.dat to REKAConfig.dat.backup
//                      tells the user where the file went; the list is empty, and there is no REKAConfig.dat
//     LoadTemplates    finds no REKAConfig.dat, so copies the system's there and reads that
//     StoreTemplates   writes REKAConfig.dat.tmp: the count, then for each template the size of its block and the block
//                      brings it to the disk and closes it
//                      deletes REKAConfig.dat and renames REKAConfig.dat.tmp to that
//
// So a damaged file is kept for repair by hand, and between the deletion and the renaming a whole temporary file lies
// on the disk. A template that can't be stored, or a file that can't be brought to the disk, leaves the old file where
// it is. A write that fails doesn't: the user is told, what was written takes the file's place, and the next load sets
// that aside. A file that a load couldn't open, or couldn't set aside, isn't in the list: nothing is stored over it.

#include "manager/TemplateStore.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <utility>

#include "manager/ConfigFile.h"
#include "persistence/ByteReader.h"
#include "persistence/ReadStoredDefinition.h"
#include "persistence/WriteStoredDefinition.h"
#include "platform/Files.h"
#include "platform/OutOfMemoryText.h"
#include "platform/UserMessages.h"

namespace reka {

namespace {

const char16_t* const shortFile = u"read error / unexpected end of file";

// What is told when memory runs out where nothing else can be. Made when the program starts, since it takes some.
const UserMessage notLoadedForMemory = {u"There was an error reading the reaction package templates: out of memory.",
                                        u"REKA:", messagestyle::ok | messagestyle::iconError, MessageOwner::None};
const UserMessage notStoredForMemory = {u"Failed to store templates: out of memory", u"Error:",
                                        messagestyle::ok | messagestyle::iconError, MessageOwner::ActiveWindow};

// Reading

bool ReadWord(IFile& file, std::uint32_t& word) {
    std::uint8_t bytes[4] = {};
    return file.Read(bytes, sizeof bytes) == sizeof bytes && CByteReader(bytes).ReadU32(word);
}

/// Reads `size` bytes. Memory grows with what comes, so a size word that lies costs nothing.
bool ReadBlock(IFile& file, std::uint32_t size, std::vector<std::uint8_t>& block) {
    constexpr std::size_t largestPart = std::size_t{1} << 22;
    block.clear();
    while (block.size() < size) {
        const std::size_t start = block.size();
        const std::size_t part = std::min(size - start, std::max(start, largestPart));
        block.resize(start + part);
        if (file.Read(block.data() + start, part) != part) return false;
    }
    return true;
}

/// Fills `templates` from the open file. False: `errorText` holds the reason.
bool ReadFile(IFile& file, IDispatch* context, std::vector<std::unique_ptr<ReactionPackDefinition>>& templates,
              std::u16string& errorText) noexcept {
    try {
        errorText = shortFile;
        std::uint32_t count = 0;
        if (!ReadWord(file, count)) return false;
        std::vector<std::uint8_t> block;
        for (auto left = static_cast<std::int32_t>(count); left > 0; --left) {
            std::uint32_t size = 0;
            if (!ReadWord(file, size) || !ReadBlock(file, size, block)) return false;
            templates.push_back(std::make_unique<ReactionPackDefinition>(context));
            if (!ReadStoredDefinition(*templates.back(), block, errorText)) return false;
        }
        return true;
    } catch (const std::exception&) {
        TellOutOfMemory(errorText);
        return false;
    }
}

// Setting aside

/// Gives the file the name `backup`; older backups of that name get numbers, the oldest the highest. False: `failed` is
/// what couldn't be renamed, and the system has a text for the failure.
bool SetAside(const std::u16string& userFile, const std::u16string& backup, std::u16string& failed) {
    std::uint32_t number = 0;
    while (Files().Exists(BackupName(userFile, number))) ++number;
    while (number > 0) {
        --number;
        const std::u16string from = BackupName(userFile, number);
        const std::u16string to = BackupName(userFile, number + 1);
        Files().Delete(to);
        if (Files().Rename(from, to)) continue;
        failed = from;
        return false;
    }
    Files().Delete(backup);
    if (Files().Rename(userFile, backup)) return true;
    failed = backup;
    return false;
}

UserMessage DamagedFileMessage(const std::u16string& text) {
    return {text, u"REKA:", messagestyle::ok | messagestyle::iconError, MessageOwner::None};
}

/// Keeps a file that couldn't be read for repair by hand; the next load begins with the system's again. False if it
/// still stands where it was.
bool Recover(const std::u16string& userFile, const std::u16string& errorText) {
    const std::u16string start = u"There was an error reading the reaction package templates in " + userFile + u": ";
    const std::u16string backup = BackupName(userFile, 0);
    // Made beforehand: where the file went must be told even if there is no memory left by then.
    const UserMessage setAside = DamagedFileMessage(start + errorText + u".\r\nThe file has been renamed to " + backup);
    std::u16string failed;
    if (SetAside(userFile, backup, failed)) {
        UserMessages().Show(setAside);
        return true;
    }
    const std::u16string reason = Files().LastErrorText();
    UserMessages().Show(DamagedFileMessage(start + reason + u".\r\nFailed rename " + failed + u"; " + userFile +
                                           u" was not removed.\r\n"));
    return false;
}

// Writing

void TellNotStored(const std::u16string& text) {
    UserMessages().Show({text, u"Error:", messagestyle::ok | messagestyle::iconError, MessageOwner::ActiveWindow});
}

std::u16string NotOpenedText(const std::u16string& file) {
    return u"Failed to open reaction package template file " + file +
           u" for writing. The current state of the reaction package templates cannot be stored.";
}

bool WriteWord(IFile& file, std::size_t word) {
    std::uint8_t bytes[4];
    for (std::size_t i = 0; i < sizeof bytes; ++i) bytes[i] = static_cast<std::uint8_t>(word >> 8 * i);
    return file.Write(bytes, sizeof bytes);
}

enum class WriteResult { Written, NotWritten, NotStorable };

/// `errorText` tells why a template can't be stored.
WriteResult WriteTemplates(IFile& file, const std::vector<std::unique_ptr<ReactionPackDefinition>>& templates,
                           std::u16string& errorText) {
    if (!WriteWord(file, templates.size())) return WriteResult::NotWritten;
    std::vector<std::uint8_t> block;
    for (const auto& definition : templates) {
        if (!WriteStoredDefinition(*definition, block, errorText)) return WriteResult::NotStorable;
        if (!WriteWord(file, block.size())) return WriteResult::NotWritten;
        if (!file.Write(block.data(), block.size())) return WriteResult::NotWritten;
    }
    return WriteResult::Written;
}

/// Puts the temporary file in the place of the user's. Between the deletion and the renaming there is no user file.
void MoveIntoPlace(const std::u16string& temporaryFile, const std::u16string& userFile) {
    Files().Delete(userFile);
    if (Files().Exists(userFile)) {
        TellNotStored(u"Failed to remove " + userFile + u"; unable to move new " + temporaryFile +
                      u"; the current configuration is not stored.");
        return;
    }
    if (Files().Rename(temporaryFile, userFile)) return;
    const std::u16string reason = Files().LastErrorText();
    TellNotStored(u"Failed to rename " + temporaryFile + u" to " + userFile + u" (" + reason +
                  u"); the current configuration is not stored, please rename this file by hand.");
}

}  // namespace

TemplateStore::LoadedTemplates TemplateStore::ReadTemplates(const std::u16string& path, bool wasSeen) const {
    LoadedTemplates read;
    std::u16string errorText;
    bool isWhole = false;
    {
        const std::unique_ptr<IFile> file = Files().OpenForReading(path);
        // One that was seen and has gone is being replaced by another simulator.
        if (!file) return {{}, !Files().IsAbsent(path) || wasSeen};
        const CComRef<IDispatch> context = simulationContext;
        isWhole = ReadFile(*file, context.Get(), read.list, errorText);
    }
    if (isWhole) return read;
    read.list.clear();  // before the user is told
    read.isUnread = !Recover(path, errorText);
    return read;
}

void TemplateStore::DiscardTemplates() noexcept {
    std::vector<std::unique_ptr<ReactionPackDefinition>> discarded;
    discarded.swap(templates);
}

void TemplateStore::LoadTemplates() noexcept {
    try {
        DiscardTemplates();
        std::u16string path;
        const bool wasSeen = GetConfigFilePath(path, true);
        LoadedTemplates read = ReadTemplates(path, wasSeen);
        isUnread = read.isUnread;  // at the end: a message box may have let the host call in meanwhile
        templates.swap(read.list);
    } catch (const std::exception&) {
        DiscardTemplates();
        isUnread = true;
        UserMessages().Show(notLoadedForMemory);
    }
}

bool TemplateStore::CanStore(std::u16string& text) const {
    if (!isUnread) return true;
    std::u16string userFile;
    GetConfigFilePath(userFile, false);
    if (Files().IsAbsent(userFile)) return true;
    text = NotOpenedText(userFile);
    return false;
}

void TemplateStore::StoreTemplates() noexcept {
    try {
        if (std::u16string text; !CanStore(text)) {
            TellNotStored(text);
            return;
        }
        std::u16string userFile;
        GetConfigFilePath(userFile, false);
        const std::u16string temporaryFile = userFile + u".tmp";
        std::unique_ptr<IFile> file = Files().OpenForWriting(temporaryFile);
        if (!file) {
            TellNotStored(NotOpenedText(temporaryFile));
            return;
        }
        std::u16string errorText;
        const WriteResult result = WriteTemplates(*file, templates, errorText);
        if (result == WriteResult::NotStorable) {
            TellNotStored(u"Failed to store templates: " + errorText);
            return;
        }
        const bool isOnDisk = file->Flush();
        if (result == WriteResult::NotWritten || !isOnDisk) {
            TellNotStored(u"An error occurred while writing to reaction package template file " + userFile +
                          u". The current state of the reaction package templates cannot be stored.");
        }
        file.reset();
        // What isn't on the disk must not replace what is: there, unlike after a failed write, the old file stays.
        if (isOnDisk || result == WriteResult::NotWritten) MoveIntoPlace(temporaryFile, userFile);
    } catch (const std::exception&) {
        UserMessages().Show(notStoredForMemory);
    }
}

}  // namespace reka
