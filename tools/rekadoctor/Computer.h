// SPDX-License-Identifier: MIT
// What rekadoctor can ask the computer: registry, files, loading, and the component system. Tests answer in its place.
// All texts are UTF-8.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace rekadoctor {

/// Bits of a program, of a module, or of the half of the registry that such programs see.
enum class Width : std::uint8_t { Bits32, Bits64 };

/// For whom something is registered.
enum class Owner : std::uint8_t { Machine, User };

/// A half of the registry: that of the machine or of the user, as programs of a width see it.
struct RegistryPlace {
    Owner owner = Owner::Machine;
    Width width = Width::Bits64;

    bool operator==(const RegistryPlace&) const = default;
};

/// This program and where it runs.
struct Surroundings {
    Width ownWidth = Width::Bits64;
    bool isWindows64Bit = true;
    bool isElevated = false;  // runs with the rights of an administrator
    bool isWine = false;
    std::string programFolder;  // of this program, without a backslash at the end
    std::string windowsFolder;  // such as C:\Windows
};

/// What came of loading a module the way the component system does it.
struct Loading {
    bool isLoaded = false;
    std::string reason;                       // why it isn't, in the system's words
    std::vector<std::string> missingExports;  // of a loaded module, those that the component system calls
};

/// How far a program gets that asks for the manager by its name.
enum class TrialEnd : std::uint8_t { NameUnknown, OtherClass, NotCreated, NotAManager, Done };

struct Trial {
    TrialEnd end = TrialEnd::NameUnknown;
    std::string reason;  // of a failure, in the system's words; of OtherClass, that class
    std::string file;    // the module that the manager came from
};

/// A file with all that it holds.
struct FileContent {
    bool isThere = false;         // also if that can't be found out, as on a share that doesn't answer
    std::uint64_t lastWrite = 0;  // of use for comparison alone
    std::optional<std::vector<std::uint8_t>> bytes;
    std::string reason;  // why there are no bytes, in the system's words
};

class CComputer {
public:
    virtual ~CComputer() = default;

    virtual Surroundings Describe() = 0;
    /// `key` starts with "Software".
    virtual bool HasKey(RegistryPlace place, const std::string& key) = 0;
    /// The text of a value, the default value for an empty name; nothing if it isn't there or is no text.
    virtual std::optional<std::string> ReadText(RegistryPlace place, const std::string& key,
                                                const std::string& value) = 0;
    /// False also if it can't be found out; `ReadFile` tells the two apart.
    virtual bool HasFile(const std::string& path) = 0;
    /// The first bytes of a file, `size` at most; nothing if it can't be opened.
    virtual std::optional<std::vector<std::uint8_t>> ReadFileHead(const std::string& path, std::size_t size) = 0;
    virtual FileContent ReadFile(const std::string& path) = 0;
    /// The folder of this user's application data, without a backslash at the end; empty if the system doesn't tell.
    virtual std::string FindUserFolder() = 0;
    /// Where every program finds the module of a path that isn't whole: the folders of the system and of PATH, but not
    /// that of the program, which is another one for each. Empty if it isn't there.
    virtual std::string FindModule(const std::string& name) = 0;
    /// Loads a module into this program and unloads it again.
    virtual Loading Load(const std::string& path) = 0;
    /// Creates the manager by `name` in this program and releases it. It isn't asked for its packages: for those it may
    /// show message boxes, and put files in the place of others.
    virtual Trial TryManager(const std::string& name) = 0;
};

}  // namespace rekadoctor
