// SPDX-License-Identifier: MIT
// A computer of texts: registry, files and what loading and creating give are what a test puts in.

#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "Diagnose.h"
#include "RegistrationNames.h"
#include "support/StoredBytes.h"

namespace rekadoctor {

constexpr RegistryPlace machine64 = {Owner::Machine, Width::Bits64};
constexpr RegistryPlace machine32 = {Owner::Machine, Width::Bits32};
constexpr RegistryPlace user64 = {Owner::User, Width::Bits64};
constexpr RegistryPlace user32 = {Owner::User, Width::Bits32};

/// The smallest file that names its machine.
inline std::vector<std::uint8_t> ModuleBytes(unsigned machine) {
    std::vector<std::uint8_t> bytes(70, 0);
    bytes[0] = 'M';
    bytes[1] = 'Z';
    bytes[60] = 64;  // the header that counts stands right behind
    bytes[64] = 'P';
    bytes[65] = 'E';
    bytes[68] = static_cast<std::uint8_t>(machine & 0xFF);
    bytes[69] = static_cast<std::uint8_t>(machine >> 8);
    return bytes;
}
inline std::vector<std::uint8_t> Module64() {
    return ModuleBytes(0x8664);
}
inline std::vector<std::uint8_t> Module32() {
    return ModuleBytes(0x014C);
}

/// A block of a package with nothing but its name.
inline reka::test::CStoredBytes StoredTemplate(std::u16string_view name) {
    return reka::test::CStoredBytes().Wide(name).Wide(u"").Narrow("").U32(0xFFFFFFFF).U32(3).U32(0).U32(0).U32(0);
}
/// A file of such templates.
inline std::vector<std::uint8_t> TemplateFile(const std::vector<std::u16string_view>& names) {
    reka::test::CStoredBytes file;
    file.U32(static_cast<std::uint32_t>(names.size()));
    for (const std::u16string_view name : names) {
        const reka::test::CStoredBytes block = StoredTemplate(name);
        file.U32(static_cast<std::uint32_t>(block.bytes.size())).Add(block);
    }
    return file.bytes;
}

class CFakeComputer : public CComputer {
public:
    CFakeComputer() {
        surroundings.programFolder = "C:\\REKA\\x64";
        surroundings.windowsFolder = "C:\\Windows";
        trial.reason = "Invalid class string";
    }

    Surroundings Describe() override { return surroundings; }
    bool HasKey(RegistryPlace place, const std::string& key) override { return keys.contains(Path(place, key)); }
    std::optional<std::string> ReadText(RegistryPlace place, const std::string& key,
                                        const std::string& value) override {
        const auto found = texts.find(Path(place, key) + "|" + value);
        return found == texts.end() ? std::nullopt : std::optional(found->second);
    }
    bool HasFile(const std::string& path) override { return files.contains(path) && !unreachable.contains(path); }
    std::optional<std::vector<std::uint8_t>> ReadFileHead(const std::string& path, std::size_t size) override {
        const auto found = files.find(path);
        if (found == files.end() || unreadable.contains(path)) return std::nullopt;
        std::vector<std::uint8_t> head = found->second;
        head.resize(std::min(head.size(), size));
        return head;
    }
    FileContent ReadFile(const std::string& path) override {
        if (unreachable.contains(path)) return {true, 0, std::nullopt, "The network path was not found."};
        const auto found = files.find(path);
        if (found == files.end()) return {};
        if (unreadable.contains(path)) return {true, times[path], std::nullopt, "Access is denied."};
        return {true, times[path], found->second, ""};
    }
    std::string FindUserFolder() override { return userFolder; }
    std::string FindModule(const std::string& name) override {
        sought.push_back(name);
        return onSearchPath;
    }
    Loading Load(const std::string& path) override {
        loaded.push_back(path);
        if (onTry) onTry();
        return loading;
    }
    Trial TryManager(const std::string& name) override {
        asked.push_back(name);
        if (onTry) onTry();
        return trial;
    }

    void PutText(RegistryPlace place, const std::string& key, const std::string& value, const std::string& text) {
        keys.insert(Path(place, key));
        texts[Path(place, key) + "|" + value] = text;
    }
    void RemoveText(RegistryPlace place, const std::string& key, const std::string& value) {
        texts.erase(Path(place, key) + "|" + value);
    }
    void RemoveKey(RegistryPlace place, const std::string& key) { keys.erase(Path(place, key)); }

    /// Writes what the component's registration writes.
    void Register(RegistryPlace place, const std::string& file) {
        const std::string classes = "Software\\Classes\\";
        const std::string key = classKey;
        for (const std::string_view name : {progId, versionIndependentProgId}) {
            PutText(place, classes + std::string(name) + "\\CLSID", "", std::string(classId));
        }
        PutText(place, key, "", "REKA Reaction Package Manager");
        PutText(place, key + "\\ProgID", "", std::string(progId));
        PutText(place, key + "\\VersionIndependentProgID", "", std::string(versionIndependentProgId));
        PutText(place, key + "\\InprocServer32", "", file);
        PutText(place, key + "\\InprocServer32", "ThreadingModel", "Apartment");
        PutText(place, key + "\\TypeLib", "", std::string(typeLibraryId));
        PutText(place, key + "\\CapeDescription", "Name", "REKA Reaction Package Manager");
        PutText(place, key + "\\CapeDescription", "ComponentVersion", "1.0.0.0");
        for (const Category& category : categories) {
            keys.insert(Path(place, key + "\\Implemented Categories\\" + std::string(category.id)));
        }
    }
    /// Registers the interfaces of the standard, as its type libraries do.
    void RegisterInterfaces(RegistryPlace place) {
        for (const std::string_view id : calledInterfaces) {
            PutText(place, "Software\\Classes\\Interface\\" + std::string(id) + "\\ProxyStubClsid32", "",
                    "{00020424-0000-0000-C000-000000000046}");
        }
    }
    /// Puts the module with all that belongs beside it into a folder.
    void Lay(const std::string& folder, const std::vector<std::uint8_t>& module) {
        files[folder + "\\REKA.dll"] = module;
        files[folder + "\\data\\REKAConfig.dat"] = TemplateFile({u"Shipped"});
        files[folder + "\\data\\Korvex1.pcd"] = {};
        files[folder + "\\NAVO.chm"] = {};
    }
    /// Registered for the machine in both widths, and everything works.
    void MakeAllWell() {
        Lay("C:\\REKA\\x64", Module64());
        Lay("C:\\REKA\\x86", Module32());
        Register(machine64, "C:\\REKA\\x64\\REKA.dll");
        RegisterInterfaces(machine64);
        Register(machine32, "C:\\REKA\\x86\\REKA.dll");
        loading.isLoaded = true;
        trial = {TrialEnd::Done, "", "C:\\REKA\\x64\\REKA.dll"};
        files[userFile] = TemplateFile({u"Ammonia synthesis", u"Water-gas shift"});
    }

    static inline const std::string classKey = "Software\\Classes\\CLSID\\" + std::string(classId);
    static inline const std::string userFile = "C:\\Users\\I\\NAVO\\data\\REKAConfig.dat";
    static inline const std::string shippedFile = "C:\\REKA\\x64\\data\\REKAConfig.dat";
    Surroundings surroundings;
    std::string userFolder = "C:\\Users\\I";
    std::map<std::string, std::uint64_t> times;
    std::function<void()> onTry;  // what happens while something is loaded or created
    std::map<std::string, std::vector<std::uint8_t>> files;
    std::set<std::string> unreadable;
    std::set<std::string> unreachable;  // whether they are there can't be found out
    Loading loading;
    Trial trial;
    std::string onSearchPath;  // where a bare name is found
    std::vector<std::string> sought;
    std::vector<std::string> loaded;
    std::vector<std::string> asked;

private:
    static std::string Path(RegistryPlace place, const std::string& key) {
        return std::string(place.owner == Owner::Machine ? "machine" : "user") +
               (place.width == Width::Bits64 ? "64\\" : "32\\") + key;
    }

    std::set<std::string> keys;
    std::map<std::string, std::string> texts;
};

/// Hears a diagnosis without a word.
class CNoListener : public CListener {
public:
    void Begin(const std::string& /*title*/) override {}
    void End(const Section& /*section*/) override {}
};

inline Diagnosis DiagnoseAll(CComputer& computer) {
    CNoListener nobody;
    return Diagnose(computer, Examine(computer), nobody);
}

}  // namespace rekadoctor
