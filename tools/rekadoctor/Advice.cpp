// SPDX-License-Identifier: MIT
// The registrar of each width registers for programs of that width alone. Which half of the registry it writes, the
// machine's or the user's, is settled by a value that the component reads when it is registered.

#include "Advice.h"

namespace rekadoctor {

namespace {

constexpr std::string_view setting = "HKCU\\Software\\NAVO /v CurrentUser";

std::string SetSetting(const std::string& value) {
    return "reg add " + std::string(setting) + " /d \"" + value + "\" /f";
}

std::string ForgetSetting() {
    return "reg delete " + std::string(setting) + " /f";
}

std::string Registrar(const Surroundings& surroundings, Width width) {
    const bool isOtherHalf = width == Width::Bits32 && surroundings.isWindows64Bit;
    return surroundings.windowsFolder + (isOtherHalf ? "\\SysWOW64" : "\\System32") + "\\regsvr32.exe";
}

bool FitsAndIsThere(const Registration& registration) {
    const ModuleKind kind = registration.place.width == Width::Bits64 ? ModuleKind::X64 : ModuleKind::X86;
    return registration.isThere && registration.server.isThere && registration.server.kind == kind;
}

/// The module near this program, or one that is registered already for that width.
std::optional<std::string> ModuleToRegister(const Examination& examination, Width width) {
    const auto& near = width == Width::Bits64 ? examination.module64 : examination.module32;
    if (near) return near;
    for (const Registration& registration : examination.registrations) {
        if (registration.place.width == width && FitsAndIsThere(registration)) return registration.server.path;
    }
    return std::nullopt;
}

}  // namespace

std::string RegisterCommand(const Examination& examination, Width width, Section& section) {
    std::string module = "FOLDER\\" + std::string(moduleName);
    if (const auto found = ModuleToRegister(examination, width)) {
        module = *found;
    } else {
        section.Advise("FOLDER below is the folder " + std::string(width == Width::Bits64 ? "x64" : "x86") +
                       " of the package, wherever it was unpacked.");
    }
    return Registrar(examination.surroundings, width) + " \"" + module + "\"";
}

void AdviseToRegister(const Examination& examination, RegistryPlace place, Section& section) {
    const std::string command = RegisterCommand(examination, place.width, section);
    const bool goesToUser = examination.currentUser == "1";
    if (place.owner == Owner::Machine) {
        std::vector<std::string> commands = {command};
        if (goesToUser) commands.insert(commands.begin(), ForgetSetting());
        section.Advise("Register for all users, in a command prompt that runs as administrator:", std::move(commands));
    } else if (goesToUser) {
        section.Advise("Register for this user alone, in a command prompt:", {command});
    } else {
        const auto& before = examination.currentUser;
        section.Advise("Register for this user alone, in a command prompt:",
                       {SetSetting("1"), command, before ? SetSetting(*before) : ForgetSetting()});
    }
}

void AdviseToRegisterForAnyone(const Examination& examination, Width width, Section& section) {
    AdviseToRegister(examination, {Owner::Machine, width}, section);
    section.Advise("Or, without the rights of an administrator:");
    AdviseToRegister(examination, {Owner::User, width}, section);
}

void AdviseToRemove(RegistryPlace place, Section& section) {
    const bool isMachine = place.owner == Owner::Machine;
    section.Advise("Or remove the dead entry" + std::string(isMachine ? ", as administrator:" : ":"),
                   {"reg delete " + std::string(isMachine ? "HKLM" : "HKCU") + "\\Software\\Classes\\CLSID\\" +
                    std::string(classId) + " /f " + (place.width == Width::Bits64 ? "/reg:64" : "/reg:32")});
}

}  // namespace rekadoctor
