// The parser of reaction expressions, which know the material's properties and the compounds of a definition.

#pragma once

#include <cstdint>
#include <string_view>

#include "expression/parse/CompoundLookup.h"
#include "expression/parse/ExpressionLexer.h"

namespace reka {

/// The codes of the tokens that the grammar of reaction expressions declares besides the common ones.
namespace token {
constexpr int component = 260;
constexpr int p = 263;
constexpr int t = 264;
constexpr int a = 265;
constexpr int f = 266;
constexpr int c = 267;
constexpr int x = 268;
}  // namespace token

/// Words are resolved against the function table, the reserved words and the definition's compounds.
struct ReactionExpressionParser final : ExpressionLexer<std::int64_t> {
    /// The expression is `text` up to its first zero character. `text` and `lookup` outlive the parser.
    ReactionExpressionParser(CCompoundLookup& lookup, std::u16string_view text)
        : ExpressionLexer(text), compounds(lookup) {}

private:
    CCompoundLookup& compounds;
    int FindOtherWord(std::u16string_view word) override;
};

/// Runs the generated parser over the tokens of `parser`. What it makes is left in the pool, what it reports in the
/// error buffer.
void RunReactionGrammar(ReactionExpressionParser& parser);

}  // namespace reka
