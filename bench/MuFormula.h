// SPDX-License-Identifier: MIT
// A formula for muParser: the same text, with its compounds as variables.

#pragma once

#include <string>

#include <muParser.h>

#include "records/Definition.h"

namespace reka::bench {

class CMuFormula {
public:
    /// Of a text of ASCII, with the compounds of `definition` by their names or by the letter that these begin with.
    /// Reads the working values of `definition`, which outlives this. The functions A, C, F and X of a compound become
    /// variables such as `A_0`.
    CMuFormula(std::u16string_view text, ReactionPackDefinition& definition);
    CMuFormula(const CMuFormula&) = delete;
    CMuFormula& operator=(const CMuFormula&) = delete;

    /// Parses the text again.
    void Compile();
    double Evaluate() const { return parser.Eval(); }

private:
    mu::Parser parser;
    std::string source;
    double gasConstant = 8.314;
};

}  // namespace reka::bench
