// Drives a parse of a reaction expression, one at a time.

#include "expression/parse/ParseExpression.h"

#include <mutex>

#include "expression/parse/FinishParse.h"
#include "expression/parse/ReactionExpressionParser.h"
#include "platform/HostArithmetic.h"

namespace reka {

namespace {

std::recursive_mutex parserLock;

}  // namespace

ExpressionTree ParseExpression(const INamedCompounds& compounds, std::u16string_view text, std::u16string& errorText,
                               std::int32_t* position) {
    CCompoundLookup lookup(compounds);
    return ParseExpression(lookup, text, errorText, position);
}

ExpressionTree ParseExpression(CCompoundLookup& compounds, std::u16string_view text, std::u16string& errorText,
                               std::int32_t* position) {
    const std::lock_guard lock(parserLock);
    const COwnArithmetic arithmetic;  // numbers are read and folded alike, whatever the host's rounding
    ReactionExpressionParser parser(compounds, text);
    parser.errorBuffer.swap(errorText);  // for its room, which a caller that parses again and again has had before
    parser.errorBuffer.clear();
    RunReactionGrammar(parser);
    ExpressionTree tree = FinishParse(parser, &compounds.Compounds(), errorText);
    if (position) *position = static_cast<std::int32_t>(parser.position);
    return tree;
}

}  // namespace reka
