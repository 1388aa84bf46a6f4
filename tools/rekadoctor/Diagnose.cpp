// SPDX-License-Identifier: MIT
// Each registration is held against what the component writes itself; then comes what a program gets that asks for the
// manager, and which templates it would show. What takes time is tried where its section begins, so that a user sees
// what a slow computer is at. Faults count for the width of the program that they hurt.

#include "Diagnose.h"

#include <algorithm>

#include "Advice.h"
#include "DiagnoseTemplates.h"

namespace rekadoctor {

namespace {

bool Is(const std::optional<std::string>& text, std::string_view expected) {
    return text && IsSameName(*text, expected);
}

/// What is there instead of a right text.
std::string Instead(const std::optional<std::string>& text) {
    return text ? "it is \"" + *text + "\"" : "there is none";
}

std::string Joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
    return text;
}

std::string TitleOf(RegistryPlace place) {
    return "Registered for " + std::string(place.owner == Owner::Machine ? "all users" : "this user alone") + ", for " +
           WordOf(place.width) + " programs";
}

void DiagnoseCategories(const Registration& found, Section& section) {
    std::vector<std::string> offered;
    for (std::size_t i = 0; i < categoryCount; ++i) {
        if (found.hasCategory[i]) offered.emplace_back(categories[i].meaning);
    }
    if (!offered.empty()) section.Good("offered as " + Joined(offered));
    for (std::size_t i = 0; i < categoryCount; ++i) {
        if (found.hasCategory[i]) continue;
        section.Wrong("not offered as " + std::string(categories[i].meaning) + ": " +
                      std::string(categories[i].consequence));
    }
}

void DiagnoseNames(const Registration& found, Section& section) {
    const std::size_t before = section.findings.size();
    if (!Is(found.threadingModel, threadingModel)) {
        section.Wrong("the threading model has to be \"Apartment\", but " + Instead(found.threadingModel));
    }
    if (!Is(found.progId, progId)) {
        section.Wrong("the ProgID has to be \"" + std::string(progId) + "\", but " + Instead(found.progId));
    }
    if (!Is(found.versionIndependentProgId, versionIndependentProgId)) {
        section.Wrong("the ProgID without version has to be \"" + std::string(versionIndependentProgId) + "\", but " +
                      Instead(found.versionIndependentProgId));
    }
    if (!Is(found.typeLibrary, typeLibraryId)) {
        section.Wrong("the type library has to be " + std::string(typeLibraryId) + ", but " +
                      Instead(found.typeLibrary));
    }
    if (!Is(found.classOfProgId, classId)) {
        section.Wrong("the name \"" + std::string(progId) + "\" has to lead to " + std::string(classId) + ", but " +
                      Instead(found.classOfProgId));
    }
    if (!Is(found.classOfVersionIndependentProgId, classId)) {
        section.Wrong("the name \"" + std::string(versionIndependentProgId) + "\" has to lead to " +
                      std::string(classId) + ", but " + Instead(found.classOfVersionIndependentProgId));
    }
    if (section.findings.size() == before) section.Good("threading model, ProgID and type library are right");
}

std::string ClassesOf(Owner owner) {
    return owner == Owner::Machine ? "HKLM\\Software\\Classes" : "HKCU\\Software\\Classes";
}

/// What lies apart: a program sees the classes of the machine and of the user as one, so nothing else tells that one
/// has the class and the other a name of it.
void TellApart(const Registration& found, const Examination& examination, Section& section) {
    const Owner owner = found.place.owner;
    const Owner otherOwner = owner == Owner::Machine ? Owner::User : Owner::Machine;
    const auto other =
        std::find_if(examination.registrations.begin(), examination.registrations.end(), [&](const Registration& one) {
            return one.place == RegistryPlace{otherOwner, found.place.width};
        });
    // Both widths have the names in common, and each a class of its own.
    const bool isClassThere =
        std::any_of(examination.registrations.begin(), examination.registrations.end(),
                    [&](const Registration& one) { return one.place.owner == owner && one.isThere; });
    const auto tell = [&](std::string_view name, std::optional<std::string> Registration::*classOfName) {
        const std::string quoted = "the name \"" + std::string(name) + "\"";
        if (!isClassThere && found.*classOfName) {
            section.Note(ClassesOf(owner) + " has " + quoted + " without its class");
        }
        const bool isElsewhere = other != examination.registrations.end() && (*other).*classOfName;
        if (found.isThere && !(found.*classOfName) && isElsewhere) {
            section.Note(quoted + " is in " + ClassesOf(otherOwner) + ", and the class in " + ClassesOf(owner));
        }
    };
    tell(progId, &Registration::classOfProgId);
    tell(versionIndependentProgId, &Registration::classOfVersionIndependentProgId);
}

void DiagnoseBeside(const Registration& found, Section& section) {
    const std::string folder = FolderOf(found.server.path);
    const auto missing = [&](const std::string& name, const std::string& purpose) {
        section.Wrong(folder + "\\data\\" + name + " is missing: " + purpose);
        section.Advise("Copy the folder data of the package to " + folder + "\\data");
    };
    if (!found.server.hasTemplates) missing("REKAConfig.dat", "a new user's list of packages starts empty without it");
    if (!found.server.hasCompounds) missing("Korvex1.pcd", "there is no list of compounds to choose from without it");
    if (found.server.hasTemplates && found.server.hasCompounds) section.Good("its data are beside it");
    if (!found.server.hasHelp) section.Note(folder + "\\NAVO.chm is not there: the Help buttons show nothing");
}

/// Windows mistrusts what a browser has downloaded, and what was unpacked from it.
void DiagnoseMarks(const ServerFile& server, Section& section) {
    const auto tell = [&](const std::string& path, const std::string& consequence) {
        section.Note(path + " is marked as downloaded from the internet: " + consequence);
        section.Advise("Unblock " + path + ": right-click it, choose Properties, tick Unblock and press OK.");
    };
    if (server.isFromInternet) tell(server.path, "Windows may keep programs from loading it");
    if (server.isHelpFromInternet) tell(FolderOf(server.path) + "\\NAVO.chm", "its pages stay empty");
    if (server.isFromInternet || server.isHelpFromInternet) {
        section.Advise("Or unblock the zip in the same way, and unpack it anew.");
    }
}

std::string WordOf(ModuleKind kind) {
    switch (kind) {
        case ModuleKind::X86:
            return "a 32-bit module";
        case ModuleKind::X64:
            return "a 64-bit module";
        case ModuleKind::Other:
            return "a module for another processor";
        case ModuleKind::NotAModule:
            break;
    }
    return "no module at all";
}

void DiagnoseLoading(const Loading& loading, Section& section) {
    if (!loading.isLoaded) {
        section.Wrong("the file does not load: " + loading.reason);
        section.Advise(
            "Install REKA anew, or unpack its package anew; look whether a virus scanner holds the file back.");
    } else if (!loading.missingExports.empty()) {
        section.Wrong("the file loads but lacks " + Joined(loading.missingExports) + ", so it is not REKA's");
        section.Advise("Install REKA anew, or unpack its package anew.");
    } else {
        section.Good("the file loads");
    }
}

/// True where the file is one that programs of that width can load.
bool DiagnoseFile(const Registration& found, Width ownWidth, Section& section) {
    if (!found.file) {
        section.Wrong("no file is named (InprocServer32 is missing)");
        return false;
    }
    const std::string& path = found.server.path;
    if (!found.server.isThere && !IsWholePath(path)) {
        const std::string text = "its file " + path + " is named without a folder";
        if (found.place.width == ownWidth) {
            section.Wrong(text + " and isn't where every program looks");
        } else {
            section.Note(text + ": the rekadoctor of the folder " +
                         (found.place.width == Width::Bits64 ? "x64" : "x86") + " tells whether it is found");
        }
        return false;
    }
    if (!found.server.isThere) {
        section.Wrong("its file " + path + " is not there");
        return false;
    }
    const ModuleKind kind = found.place.width == Width::Bits64 ? ModuleKind::X64 : ModuleKind::X86;
    if (found.server.kind != kind) {
        section.Wrong("its file " + path + " is " + WordOf(found.server.kind) + ", which " + WordOf(found.place.width) +
                      " programs can't load");
        return false;
    }
    section.Good("its file is " + path + ", " + WordOf(kind));
    return true;
}

Section DiagnoseRegistration(const Registration& found, const Examination& examination) {
    Section section{TitleOf(found.place), found.place.width, {}, {}};
    if (!found.isThere) {
        section.Note("no");
        TellApart(found, examination, section);
        return section;
    }
    section.Good("yes: \"" + found.shownName.value_or("") + "\", version " + found.version.value_or("unknown"));
    if (!found.shownName) section.Wrong("it has no name (CapeDescription): simulators may leave it out");
    DiagnoseCategories(found, section);
    DiagnoseNames(found, section);
    TellApart(found, examination, section);
    const bool isFileRight = DiagnoseFile(found, examination.surroundings.ownWidth, section);
    const bool isRegistrationWrong = std::any_of(section.findings.begin(), section.findings.end(),
                                                 [](const Finding& one) { return one.weight == Weight::Wrong; });
    if (isRegistrationWrong) AdviseToRegister(examination, found.place, section);
    if (found.file && IsWholePath(found.server.path) && !found.server.isThere) AdviseToRemove(found.place, section);
    if (!isFileRight) return section;
    if (found.server.loading) DiagnoseLoading(*found.server.loading, section);
    DiagnoseBeside(found, section);
    DiagnoseMarks(found.server, section);
    return section;
}

const Registration* Find(const Examination& examination, RegistryPlace place) {
    for (const Registration& found : examination.registrations) {
        if (found.place == place && found.isThere) return &found;
    }
    return nullptr;
}

/// For a width that has no registration at all.
void DiagnoseAbsence(const Examination& examination, Width width, Section& section) {
    const bool isOwn = width == examination.surroundings.ownWidth;
    const std::string text =
        "not registered for " + WordOf(width) + " programs, neither for all users nor for this one";
    if (isOwn) {
        section.Wrong(text);
    } else {
        section.Note(text + "; that is well if no simulator here is a " + WordOf(width) + " program");
    }
    AdviseToRegisterForAnyone(examination, width, section);
}

void DiagnoseBothOwners(const Registration& ofMachine, const Registration& ofUser, Section& section) {
    if (IsSameName(ofMachine.server.path, ofUser.server.path)) {
        section.Note("registered for all users and for this user too, with the same file");
        return;
    }
    section.Note(
        "this user's registration hides that for all users, which names another file; programs that run as "
        "administrator use the latter");
}

/// Where the registration is right and yet nobody gets the manager, the place of the registration may be the reason.
void ExplainOwner(const Examination& examination, Section& section) {
    const Width own = examination.surroundings.ownWidth;
    if (Find(examination, {Owner::Machine, own}) || !Find(examination, {Owner::User, own})) return;
    if (examination.surroundings.isWine) {
        section.Note("this is Wine, whose look-up passes over what is registered for one user");
        AdviseToRegister(examination, {Owner::Machine, own}, section);
    } else if (examination.surroundings.isElevated) {
        section.Note("this program runs as administrator, and such programs pass over what is registered for one user");
        section.Advise("Run rekadoctor in an ordinary command prompt, and the simulator without administrator rights.");
        section.Advise("Or register for all users:");
        AdviseToRegister(examination, {Owner::Machine, own}, section);
    }
}

void DiagnoseManager(const Examination& examination, Section& section) {
    const Trial& trial = examination.trial;
    const Width own = examination.surroundings.ownWidth;
    const Registration* used = examination.surroundings.isElevated ? nullptr : Find(examination, {Owner::User, own});
    if (!used) used = Find(examination, {Owner::Machine, own});
    section.Good("it gets the manager, out of " + trial.file);
    if (used && used->file && !IsSameName(used->server.path, trial.file)) {
        section.Note("the registration names " + used->server.path);
    }
}

void DiagnoseTrial(const Examination& examination, Section& section) {
    const Trial& trial = examination.trial;
    const std::string name = "\"" + std::string(versionIndependentProgId) + "\"";
    switch (trial.end) {
        case TrialEnd::NameUnknown:
            section.Wrong("the system does not know the name " + name + ": " + trial.reason);
            break;
        case TrialEnd::OtherClass:
            section.Wrong("the name " + name + " leads to the class " + trial.reason + ", which is not REKA's");
            break;
        case TrialEnd::NotCreated:
            section.Wrong("the manager can't be created: " + trial.reason);
            break;
        case TrialEnd::NotAManager:
            section.Wrong("what is created is no reaction package manager: " + trial.reason);
            section.Advise("Install REKA anew, or unpack its package anew.");
            break;
        case TrialEnd::Done:
            DiagnoseManager(examination, section);
            return;
    }
    ExplainOwner(examination, section);
}

std::string TitleOfUse(Width width) {
    return "A " + WordOf(width) + " program that asks for the manager";
}

/// What a program of this width meets.
Section DiagnoseUse(const Examination& examination) {
    const Width own = examination.surroundings.ownWidth;
    Section section{TitleOfUse(own), own, {}, {}};
    const Registration* ofMachine = Find(examination, {Owner::Machine, own});
    const Registration* ofUser = Find(examination, {Owner::User, own});
    if (!ofMachine && !ofUser) DiagnoseAbsence(examination, own, section);
    if (ofMachine && ofUser) DiagnoseBothOwners(*ofMachine, *ofUser, section);
    DiagnoseTrial(examination, section);
    if (examination.trial.end == TrialEnd::Done && !examination.hasProxies) {
        section.Note("the interfaces of the CAPE-OPEN standard are not registered for " + WordOf(own) +
                     " programs: a simulator that calls from threads of another apartment needs them, so install the "
                     "standard's type libraries if yours can't use REKA");
    }
    if (examination.currentUser == "1") {
        section.Note("the value CurrentUser of HKCU\\Software\\NAVO is \"1\": regsvr32 registers for this user alone");
    }
    return section;
}

void Count(Diagnosis& diagnosis, Width ownWidth) {
    for (const Section& section : diagnosis.sections) {
        const auto wrong = std::count_if(section.findings.begin(), section.findings.end(),
                                         [](const Finding& one) { return one.weight == Weight::Wrong; });
        int& sum = section.width == ownWidth ? diagnosis.wrongForOwnWidth : diagnosis.wrongForOtherWidth;
        sum += static_cast<int>(wrong);
    }
}

}  // namespace

void Section::Advise(std::string text, std::vector<std::string> commands) {
    Step step{std::move(text), std::move(commands)};
    if (std::find(advice.begin(), advice.end(), step) == advice.end()) advice.push_back(std::move(step));
}

std::string WordOf(Width width) {
    return width == Width::Bits64 ? "64-bit" : "32-bit";
}

Diagnosis Diagnose(CComputer& computer, const Examination& examined, CListener& listener) {
    Diagnosis diagnosis;
    Examination examination = examined;
    const auto add = [&](Section section) {
        listener.End(section);
        diagnosis.sections.push_back(std::move(section));
    };
    const Width own = examination.surroundings.ownWidth;
    const Width other = own == Width::Bits64 ? Width::Bits32 : Width::Bits64;
    for (Registration& found : examination.registrations) {
        listener.Begin(TitleOf(found.place));
        TryLoading(computer, own, found);
        add(DiagnoseRegistration(found, examination));
    }
    listener.Begin(TitleOfUse(own));
    examination.trial = computer.TryManager(std::string(versionIndependentProgId));
    add(DiagnoseUse(examination));
    listener.Begin(templatesTitle);
    add(DiagnoseTemplates(computer, examination));
    if (examination.surroundings.isWindows64Bit && !Find(examination, {Owner::Machine, other}) &&
        !Find(examination, {Owner::User, other})) {
        Section section{WordOf(other) + " programs", other, {}, {}};
        listener.Begin(section.title);
        DiagnoseAbsence(examination, other, section);
        add(std::move(section));
    }
    Count(diagnosis, own);
    return diagnosis;
}

}  // namespace rekadoctor
