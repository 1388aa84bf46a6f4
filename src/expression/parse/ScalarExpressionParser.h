// The parser of numeric fields: the arithmetic of reaction expressions, without a material and without compounds.

#pragma once

#include <string_view>

#include "expression/parse/ExpressionLexer.h"

namespace reka {

/// Words are the functions, PI and R.
struct ScalarExpressionParser final : ExpressionLexer<double> {
    /// The expression is `text` up to its first zero character. `text` outlives the parser.
    explicit ScalarExpressionParser(std::u16string_view text) : ExpressionLexer(text) {}

private:
    int FindOtherWord(std::u16string_view) override { return token::endOfInput; }
};

/// Runs the generated parser over the tokens of `parser`. What it makes is left in the pool, what it reports in the
/// error buffer.
void RunScalarGrammar(ScalarExpressionParser& parser);

}  // namespace reka
