// SPDX-License-Identifier: MIT
// Reads registry, files and the component system into an Examination. The names of the component are shared by both
// halves of a 64-bit registry, the class is not; each is read through the half that programs of the width see.

#include "Examine.h"

#include <algorithm>

namespace rekadoctor {

namespace {

const std::string classesKey = "Software\\Classes\\";

std::string ClassKey() {
    return classesKey + "CLSID\\" + std::string(classId);
}

ModuleKind KindOf(Width width) {
    return width == Width::Bits64 ? ModuleKind::X64 : ModuleKind::X86;
}

ModuleKind KindOfFile(CComputer& computer, const std::string& path) {
    const auto head = computer.ReadFileHead(path, moduleHeadSize);
    return head ? KindOfModule(*head) : ModuleKind::NotAModule;
}

/// Whether Windows takes the file for one from the internet, as a browser has noted in a stream beside its content.
bool IsFromInternet(CComputer& computer, const std::string& path) {
    constexpr std::size_t longestMark = 4096;  // bytes; what counts stands at its start
    const auto mark = computer.ReadFileHead(path + ":Zone.Identifier", longestMark);
    if (!mark) return false;
    const std::string text(mark->begin(), mark->end());
    return text.find("ZoneId=3") != std::string::npos || text.find("ZoneId=4") != std::string::npos;
}

bool IsSeparator(char letter) {
    return letter == '\\' || letter == '/';
}

/// The component system takes a path in quotes as well.
std::string Unquoted(const std::string& text) {
    return text.size() >= 2 && text.front() == '"' && text.back() == '"' ? text.substr(1, text.size() - 2) : text;
}

/// The folders in which programs of the other width look aren't those of this one.
ServerFile ExamineFile(CComputer& computer, const std::string& text, bool isOwnWidth) {
    ServerFile server;
    server.path = text;
    if (!IsWholePath(text)) {
        const std::string found = isOwnWidth ? computer.FindModule(text) : std::string();
        if (found.empty()) return server;
        server.path = found;
    }
    const std::string& path = server.path;
    server.isThere = computer.HasFile(path);
    if (!server.isThere) return server;
    server.kind = KindOfFile(computer, path);
    const std::string folder = FolderOf(path);
    server.hasTemplates = computer.HasFile(folder + "\\data\\REKAConfig.dat");
    server.hasCompounds = computer.HasFile(folder + "\\data\\Korvex1.pcd");
    server.hasHelp = computer.HasFile(folder + "\\NAVO.chm");
    server.isFromInternet = IsFromInternet(computer, path);
    server.isHelpFromInternet = IsFromInternet(computer, folder + "\\NAVO.chm");
    return server;
}

Registration ExamineRegistration(CComputer& computer, RegistryPlace place, Width ownWidth) {
    Registration found;
    found.place = place;
    found.classOfProgId = computer.ReadText(place, classesKey + std::string(progId) + "\\CLSID", "");
    found.classOfVersionIndependentProgId =
        computer.ReadText(place, classesKey + std::string(versionIndependentProgId) + "\\CLSID", "");
    const std::string key = ClassKey();
    found.isThere = computer.HasKey(place, key);
    if (!found.isThere) return found;
    found.file = computer.ReadText(place, key + "\\InprocServer32", "");
    found.threadingModel = computer.ReadText(place, key + "\\InprocServer32", "ThreadingModel");
    found.progId = computer.ReadText(place, key + "\\ProgID", "");
    found.versionIndependentProgId = computer.ReadText(place, key + "\\VersionIndependentProgID", "");
    found.typeLibrary = computer.ReadText(place, key + "\\TypeLib", "");
    found.shownName = computer.ReadText(place, key + "\\CapeDescription", "Name");
    found.version = computer.ReadText(place, key + "\\CapeDescription", "ComponentVersion");
    for (std::size_t i = 0; i < categoryCount; ++i) {
        found.hasCategory[i] =
            computer.HasKey(place, key + "\\Implemented Categories\\" + std::string(categories[i].id));
    }
    if (found.file) found.server = ExamineFile(computer, Unquoted(*found.file), place.width == ownWidth);
    return found;
}

/// Whether programs of that width find how calls of the interfaces are carried.
bool HasProxies(CComputer& computer, Width width) {
    return std::all_of(calledInterfaces.begin(), calledInterfaces.end(), [&](std::string_view id) {
        const std::string key = classesKey + "Interface\\" + std::string(id) + "\\ProxyStubClsid32";
        return computer.ReadText({Owner::Machine, width}, key, "") || computer.ReadText({Owner::User, width}, key, "");
    });
}

/// The module of a width beside this program, or in the folder of that width beside this program's folder.
std::optional<std::string> FindModule(CComputer& computer, const Surroundings& surroundings, Width width) {
    const std::string name = "\\" + std::string(moduleName);
    const std::string folder = FolderOf(surroundings.programFolder) + (width == Width::Bits64 ? "\\x64" : "\\x86");
    for (const std::string& path : {surroundings.programFolder + name, folder + name}) {
        if (computer.HasFile(path) && KindOfFile(computer, path) == KindOf(width)) return path;
    }
    return std::nullopt;
}

char LowerLetter(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

}  // namespace

std::string FolderOf(const std::string& path) {
    const std::size_t end = path.find_last_of("\\/");
    return end == std::string::npos ? std::string() : path.substr(0, end);
}

bool IsSameName(std::string_view first, std::string_view second) {
    return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                      [](char one, char other) { return LowerLetter(one) == LowerLetter(other); });
}

Examination Examine(CComputer& computer) {
    Examination examination;
    examination.surroundings = computer.Describe();
    const Surroundings& surroundings = examination.surroundings;
    const Width own = surroundings.ownWidth;
    const Width other = own == Width::Bits64 ? Width::Bits32 : Width::Bits64;
    for (const Width width : {own, other}) {
        if (width != own && !surroundings.isWindows64Bit) continue;  // there is no other half
        for (const Owner owner : {Owner::Machine, Owner::User}) {
            // Wine doesn't part the user's classes: both widths see one registration, which is of one width.
            if (surroundings.isWine && owner == Owner::User && width != own) continue;
            examination.registrations.push_back(ExamineRegistration(computer, {owner, width}, own));
        }
    }
    examination.currentUser = computer.ReadText({Owner::User, own}, "Software\\NAVO", "CurrentUser");
    examination.hasProxies = HasProxies(computer, own);
    examination.module32 = FindModule(computer, surroundings, Width::Bits32);
    examination.module64 = FindModule(computer, surroundings, Width::Bits64);
    return examination;
}

void TryLoading(CComputer& computer, Width ownWidth, Registration& found) {
    ServerFile& server = found.server;
    if (found.place.width != ownWidth || !server.isThere || server.kind != KindOf(ownWidth)) return;
    server.loading = computer.Load(server.path);
}

bool IsWholePath(const std::string& path) {
    if (path.size() < 3) return false;
    if (IsSeparator(path[0])) return IsSeparator(path[1]);
    return path[1] == ':' && IsSeparator(path[2]);
}

}  // namespace rekadoctor
