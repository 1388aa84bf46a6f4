// SPDX-License-Identifier: MIT
// The commands of rekasim.

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "Failure.h"
#include "reactor/ReactorCommand.h"

namespace rekasim {

/// What the command line says. Paths are UTF-8.
struct CommandOptions {
    std::string packageName;           // of a package that the manager offers; empty for that of the document
    std::string documentPath;          // the document with the package
    std::string materialPath;          // the document with the material, where the package comes by its name
    std::string outputPath;            // of `save`
    std::vector<double> temperatures;  // K, of `table`; none: the document's own
    ReactorOptions reactor;
    bool isVerbose = false;
};

/// Each prints to `out` and returns true, or returns false with the reason in `failure`. Before that all but
/// the last of the faults of a document, and notes if the user asked for them, go to `err`.
bool RunList(std::ostream& out, Failure& failure);
bool RunTable(const CommandOptions& options, std::ostream& out, std::ostream& err, Failure& failure);
bool RunShow(const CommandOptions& options, std::ostream& out, std::ostream& err, Failure& failure);
bool RunReactor(const CommandOptions& options, std::ostream& out, std::ostream& err, Failure& failure);
bool RunSave(const CommandOptions& options, std::ostream& out, std::ostream& err, Failure& failure);

/// Text without line ends, for a message of one line.
std::string OnOneLine(const std::string& text);

}  // namespace rekasim
