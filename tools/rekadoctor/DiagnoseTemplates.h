// SPDX-License-Identifier: MIT
// Which templates a program of this user would show, and what it would do first.

#pragma once

#include "Diagnose.h"

namespace rekadoctor {

constexpr const char* templatesTitle = "The templates of this user";

/// Looks at the files of templates, the user's and the one beside the module that the manager came from, as the manager
/// does when it is asked for its list; but only looks.
Section DiagnoseTemplates(CComputer& computer, const Examination& examination);

}  // namespace rekadoctor
