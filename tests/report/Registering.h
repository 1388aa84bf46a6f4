// SPDX-License-Identifier: MIT
// Whether the tests that need the component registered may run on this computer. They write into the registry and into
// the user's folder, so nothing of somebody's may stand there.

#pragma once

#include <string>

#include "Computer.h"

namespace testreport {

/// The class of the component, below "Software".
extern const std::string classKey;
/// The file of templates below a user's folder.
extern const std::string templateFile;

/// Whether one of the registry's halves has the component's class or settings.
bool IsRegistered(rekadoctor::CComputer& computer);

/// Why those tests can't run here, as a sentence without its end; empty if they can. `ownFolder` is what has been put
/// in the place of the user's folder, for programs that take it from the environment: where they don't, they run if the
/// user has no templates.
std::string WhyNotRegistering(rekadoctor::CComputer& computer, bool isWanted, const std::string& ownFolder);

/// What a run comes to.
struct Verdict {
    int exitStatus = 0;
    std::string words;  // for the console, without an end
};

/// Of a run that found all well or not, where registering was wanted or not, and wasn't done if `whyNot` isn't empty.
Verdict VerdictOf(bool isGood, bool isRegisteringWanted, const std::string& whyNot);

}  // namespace testreport
