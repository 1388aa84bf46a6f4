// SPDX-License-Identifier: MIT
// What the tests of rekasim share: the documents beside it, files of their own, the program run in this process, and a
// document calculated to full precision.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "material/MaterialProperties.h"
#include "packagetext/Document.h"
#include "platform/Holders.h"
#include "support/TemporaryFile.h"

namespace rekasim {

using reka::test::CTemporaryFile;

/// Full path of a document of the examples.
std::string ExamplePath(const std::string& name);
/// Names of all documents of the examples.
std::vector<std::string> ExampleNames();
/// The page on the reaction systems.
std::string ReadGuide();
/// The document as it is.
std::string ReadExampleText(const std::string& name);
/// The parsed document; a failure of the test when it can't be read.
packagetext::Json ReadExample(const std::string& name);

struct RunResult {
    int status = 0;
    std::string out;
    std::string err;
};

RunResult RunProgram(const std::vector<std::string>& arguments);

/// A property of one reaction of a document at a temperature (K, 0 for the document's own); a failure of the test and a
/// NaN when it can't be calculated.
double CalculateExample(const std::string& name, const char16_t* property, const std::u16string& reactionId,
                        double temperature = 0);

/// The description that an object tells of its last failure.
std::u16string LastError(IUnknown* object);

/// A gas of three compounds and a liquid of two, for tests of the material.
MaterialState SampleGas();
MaterialState SampleLiquid();

}  // namespace rekasim
