// Drives a parse of a reaction expression, one at a time.

#include "expression/ParseExpression.h"

#include <mutex>

#include "expression/FinishParse.h"
#include "expression/ReactionExpressionParser.h"
#include "platform/HostArithmetic.h"

namespace reka {

namespace {

std::recursive_mutex parserLock;

}  // namespace

ExpressionTree ParseExpression(const ReactionPackDefinition& definition, std::u16string_view text,
                               std::u16string& errorText, std::int32_t* position) {
    CCompoundLookup compounds(definition);
    return ParseExpression(compounds, text, errorText, position);
}

ExpressionTree ParseExpression(CCompoundLookup& compounds, std::u16string_view text, std::u16string& errorText,
                               std::int32_t* position) {
    const std::lock_guard lock(parserLock);
    const COwnArithmetic arithmetic;  // numbers are read and folded alike, whatever the host's rounding
    ReactionExpressionParser parser(compounds, text);
    parser.errorBuffer.swap(errorText);  // for its room, which a caller that parses again and again has had before
    parser.errorBuffer.clear();
    RunReactionGrammar(parser);
    ExpressionTree tree = FinishParse(parser, &compounds.Definition(), errorText);
    if (position) *position = static_cast<std::int32_t>(parser.position);
    return tree;
}

}  // namespace reka
