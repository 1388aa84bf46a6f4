// SPDX-License-Identifier: MIT
// Both hives and both halves are looked at, since tests of registration write into all of them.

#include "report/Registering.h"

#include "RegistrationNames.h"
#include "platform/SameText.h"
#include "text/Utf8.h"

namespace testreport {

using rekadoctor::Owner;
using rekadoctor::Width;

namespace {

bool IsBelow(const std::string& path, const std::string& folder) {
    return reka::SameText(reka::Utf16FromUtf8(path.substr(0, folder.size())), reka::Utf16FromUtf8(folder));
}

}  // namespace

const std::string classKey = "Software\\Classes\\CLSID\\" + std::string(rekadoctor::classId);
const std::string templateFile = "\\NAVO\\data\\REKAConfig.dat";

bool IsRegistered(rekadoctor::CComputer& computer) {
    for (const Owner owner : {Owner::Machine, Owner::User}) {
        for (const Width width : {Width::Bits64, Width::Bits32}) {
            if (computer.HasKey({owner, width}, classKey)) return true;
        }
    }
    return computer.HasKey({Owner::User, Width::Bits64}, "Software\\NAVO");
}

std::string WhyNotRegistering(rekadoctor::CComputer& computer, bool isWanted, const std::string& ownFolder) {
    if (!isWanted) return "they register REKA, for which they want --register";
    if (IsRegistered(computer)) {
        return "REKA is registered here or has settings: uninstall it, and delete HKEY_CURRENT_USER\\Software\\NAVO";
    }
    if (!computer.Describe().isElevated) {
        return "they need the rights of an administrator: start run-tests.cmd in a prompt that has them";
    }
    const std::string folder = computer.FindUserFolder();
    if (folder.empty()) return "this Windows doesn't tell the user's folder";
    if (IsBelow(folder, ownFolder)) return {};
    // What isn't absent for certain may be somebody's, and the run deletes the file in the end.
    const rekadoctor::FileContent templates = computer.ReadFile(folder + templateFile);
    if (!templates.isThere) return {};
    if (!templates.bytes) {
        return "it can't be told whether this account has templates of its own (" + templates.reason +
               "): use another account";
    }
    return "this account has templates of its own, which stay untouched: use another account";
}

Verdict VerdictOf(bool isGood, bool isRegisteringWanted, const std::string& whyNot) {
    if (isRegisteringWanted && !whyNot.empty()) {
        const std::string found = isGood ? "All else is well" : "Something is wrong";
        return {2, "The tests that register REKA were not run: " + whyNot + ".\n" + found};
    }
    if (!isGood) return {1, "Something is wrong"};
    return {0, "All is well"};
}

}  // namespace testreport
