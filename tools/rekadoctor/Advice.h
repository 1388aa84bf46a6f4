// SPDX-License-Identifier: MIT
// The steps that put a registration right, with commands to paste.

#pragma once

#include <string>

#include "Diagnose.h"

namespace rekadoctor {

/// The command that registers the module of a width, with the registrar of that width. Where no such module was found,
/// the command names a folder that `section` is told about.
std::string RegisterCommand(const Examination& examination, Width width, Section& section);

/// How to register for the owner of a registration: with the command above, and what has to stand around it.
void AdviseToRegister(const Examination& examination, RegistryPlace place, Section& section);

/// How to register where nothing is registered: for all users, or for this one.
void AdviseToRegisterForAnyone(const Examination& examination, Width width, Section& section);

/// How to remove the registration of a file that is gone, which its registrar can't do.
void AdviseToRemove(RegistryPlace place, Section& section);

}  // namespace rekadoctor
