// SPDX-License-Identifier: MIT
// The manager answers for its list with message boxes where something is the matter with the files, and a Yes there
// puts one file in the place of another. That is nothing for a program that only looks, so what the manager would do is
// told from the files themselves. Their blocks go through the component's own reader.

#include "DiagnoseTemplates.h"

#include "packagetext/PrintableName.h"
#include "packagetext/StoredBlock.h"
#include "persistence/ByteReader.h"

namespace rekadoctor {

namespace {

constexpr const char* fileName = "REKAConfig.dat";
constexpr std::string_view writtenByNewer = "unexpected data at the end";  // how the reader says so

/// A file of templates, read.
struct TemplateList {
    bool isWhole = false;
    std::int32_t damaged = 0;  // the number of the template that is damaged; 0 where the count is
    std::string reason;        // in the component's words
    std::vector<std::string> names;
};

TemplateList ReadTemplates(const std::vector<std::uint8_t>& bytes) {
    TemplateList list;
    list.reason = "read error / unexpected end of file";
    reka::CByteReader reader(bytes);
    std::int32_t count = 0;
    if (!reader.ReadI32(count)) return list;
    for (std::int32_t i = 0; i < count; ++i) {
        list.damaged = i + 1;
        std::uint32_t size = 0;
        std::span<const std::uint8_t> block;
        if (!reader.ReadU32(size) || !reader.ReadBytes(size, block)) return list;
        packagetext::BlockReading reading = packagetext::TryBlock(block);
        if (!reading.isReadable) {
            list.reason = reading.reason;
            return list;
        }
        list.names.push_back(packagetext::PrintableName(reading.name));
    }
    list.isWhole = true;
    return list;
}

std::string DamageOf(const TemplateList& list) {
    return (list.damaged == 0 ? "" : "template " + std::to_string(list.damaged) + ": ") + list.reason;
}

/// The templates of a whole file, one below the other.
void ListTemplates(const std::string& text, const TemplateList& list, Section& section) {
    if (list.names.empty()) {
        section.Note(text + " holds no template: make one in the manager's dialog");
        return;
    }
    const std::size_t count = list.names.size();
    section.Good(text + " holds " + std::to_string(count) + (count == 1 ? " template" : " templates"));
    for (const std::string& name : list.names) section.findings.push_back({Weight::Listed, name});
}

/// What a user without a file gets. An empty path is that of a component that nobody gets.
void DiagnoseFirstCopy(const std::string& path, const FileContent& shipped, Section& section) {
    if (path.empty()) {
        section.Note("this user has no file of templates yet: a program makes it, as a copy of the shipped one");
        return;
    }
    if (!shipped.isThere) {
        section.Note("this user has no file of templates, and " + path + " isn't there: the list is empty");
        return;
    }
    const std::string text = "this user has no file of templates yet: a program makes it, as a copy of " + path;
    if (!shipped.bytes) {
        section.Wrong(text + ", which can't be opened: " + shipped.reason);
        section.Advise("Give this user the right to read that file, or close what has it open.");
        return;
    }
    const TemplateList list = ReadTemplates(*shipped.bytes);
    if (list.isWhole) {
        ListTemplates(text + ", which", list, section);
        return;
    }
    section.Wrong(text + ", which is damaged: " + DamageOf(list));
    section.Advise("Install REKA anew, or unpack its package anew.");
}

void DiagnoseOwn(const Surroundings& surroundings, const std::string& path, const FileContent& own, Section& section) {
    if (!own.bytes) {
        section.Wrong("programs show no template and store none: this user's file " + path +
                      " can't be opened: " + own.reason);
        section.Advise("Close the programs that have it open, or give this user the right to read and write it.");
        return;
    }
    const TemplateList list = ReadTemplates(*own.bytes);
    if (list.isWhole) {
        ListTemplates("this user's file " + path, list, section);
        return;
    }
    section.Wrong("this user's file " + path + " is damaged: " + DamageOf(list) +
                  "; the next program sets it aside as " + path + ".backup, and shows no template");
    if (list.reason.starts_with(writtenByNewer)) {
        section.Advise("If a newer REKA has written it, install that one here, too. Otherwise:");
    }
    section.Advise(
        "Close all simulators, and get back what is whole, in a command prompt:",
        {"move \"" + path + "\" \"" + path + ".damaged\"",
         "\"" + surroundings.programFolder + "\\rekatool.exe\" salvage \"" + path + ".damaged\" -o \"" + path + "\""});
}

}  // namespace

Section DiagnoseTemplates(CComputer& computer, const Examination& examination) {
    const Surroundings& surroundings = examination.surroundings;
    Section section{templatesTitle, surroundings.ownWidth, {}, {}};
    const bool isManagerThere = examination.trial.end == TrialEnd::Done;
    const std::string componentFolder = isManagerThere ? FolderOf(examination.trial.file) : std::string();
    const std::string shippedPath = isManagerThere ? componentFolder + "\\data\\" + fileName : std::string();
    const std::string userFolder = computer.FindUserFolder();
    // Without a folder of the user's the shipped file is everybody's.
    const std::string path = userFolder.empty() ? shippedPath : userFolder + "\\NAVO\\data\\" + fileName;
    if (path.empty()) {
        section.Note("nobody knows where they lie: the system doesn't tell the folder of this user's application data");
        return section;
    }
    const FileContent own = computer.ReadFile(path);
    const FileContent shipped = isManagerThere ? computer.ReadFile(shippedPath) : FileContent();
    if (!own.isThere) {
        DiagnoseFirstCopy(shippedPath, shipped, section);
        return section;
    }
    if (own.lastWrite < shipped.lastWrite) {
        section.Note(
            "the shipped file " + shippedPath +
            " is newer than this user's: programs ask whether it may take its place. Yes keeps this user's as a "
            "backup, No changes nothing");
    }
    DiagnoseOwn(surroundings, path, own, section);
    return section;
}

}  // namespace rekadoctor
