// SPDX-License-Identifier: MIT
// What rekadoctor reads of registry and files before it tries anything. That takes no time worth speaking of.

#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "Computer.h"
#include "ModuleKind.h"
#include "RegistrationNames.h"

namespace rekadoctor {

/// A file named in a registration, and what is beside it.
struct ServerFile {
    std::string path;  // the text of the registration without quotes; for a bare name, where it is found
    bool isThere = false;
    ModuleKind kind = ModuleKind::NotAModule;
    std::optional<Loading> loading;  // only once it was tried, where it has this program's width
    bool hasTemplates = false;
    bool hasCompounds = false;
    bool hasHelp = false;
    bool isFromInternet = false;  // the module bears the mark of a file that was downloaded
    bool isHelpFromInternet = false;
};

/// The registration in one half of the registry. What isn't there, or is no text, is absent.
struct Registration {
    RegistryPlace place;
    bool isThere = false;  // the class has a key; otherwise the rest, but for the classes of the names, is empty
    std::optional<std::string> file;
    std::optional<std::string> threadingModel;
    std::optional<std::string> progId;
    std::optional<std::string> versionIndependentProgId;
    std::optional<std::string> typeLibrary;
    std::optional<std::string> shownName;
    std::optional<std::string> version;
    std::array<bool, categoryCount> hasCategory = {};
    std::optional<std::string> classOfProgId;
    std::optional<std::string> classOfVersionIndependentProgId;
    ServerFile server;
};

struct Examination {
    Surroundings surroundings;
    std::vector<Registration> registrations;  // this program's width first, and the machine's first
    std::optional<std::string> currentUser;   // the setting that sends a registration to the user
    bool hasProxies = false;  // the system can carry calls of the standard's interfaces from one apartment to another
    std::optional<std::string> module32;  // modules of the right kind near this program, which can be registered
    std::optional<std::string> module64;
    Trial trial;  // once it was tried
};

/// Reads registry and files; loads and creates nothing.
Examination Examine(CComputer& computer);

/// Loads the module of a registration, where it is one for this program's width.
void TryLoading(CComputer& computer, Width ownWidth, Registration& found);

/// Whether `path` says by itself where a file lies.
bool IsWholePath(const std::string& path);

/// The folder of a path, without a backslash at its end; empty for a bare name.
std::string FolderOf(const std::string& path);

/// Whether two paths or names are the same but for the case of the letters A to Z.
bool IsSameName(std::string_view first, std::string_view second);

}  // namespace rekadoctor
