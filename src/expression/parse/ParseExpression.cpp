// SPDX-License-Identifier: MIT
// Drives a parse: the generated parser reads the tokens of the lexer, its actions make nodes, and the check makes a
// finished tree of the one that they leave.

#include "expression/parse/ParseExpression.h"

#include <mutex>
#include <new>

#include "expression/parse/CheckExpression.h"
#include "expression/parse/ExpressionLexer.h"
#include "expression/parse/GrammarActions.h"
#include "platform/HostArithmetic.h"

namespace reka {

namespace {

std::recursive_mutex parserLock;

/// What sets the two languages apart.
struct Parser {
    RunGrammar* runGrammar;
    Vocabulary vocabulary;
    const INamedCompounds* compounds;  // null where every leaf has to be a constant
};

Parser ReactionExpressionParser(CCompoundLookup& lookup) {
    return {RunReactionGrammar, ReactionVocabulary(lookup), &lookup.Compounds()};
}

Parser ScalarExpressionParser() {
    return {RunScalarGrammar, ScalarVocabulary(), nullptr};
}

ExpressionTree Parse(const Parser& parser, std::u16string_view text, std::u16string& errorText,
                     std::int32_t* position) {
    const COwnArithmetic arithmetic;  // numbers are read and folded alike, whatever the host's rounding
    errorText.clear();                // which keeps the room that a caller's text has from before
    ParseErrors errors{errorText};
    CExpressionLexer lexer(text, parser.vocabulary, errors);
    CGrammarActions actions(text.size(), errors);
    parser.runGrammar(lexer, actions);
    if (errors.isOutOfMemory) {
        errorText.clear();
        throw std::bad_alloc();
    }
    ExpressionTree tree = actions.TakeTree();
    if (tree) {
        parser.compounds ? CheckExpression(*tree, *parser.compounds, errorText)
                         : CheckScalarExpression(*tree, errorText);
    }
    if (!errorText.empty()) tree.reset();
    if (tree && (tree->kind == NodeKind::Failed || tree->kind == NodeKind::ExpressionList)) {
        errorText += u"expression must result a scalar\r\n";  // no text leads here; the last guard
    }
    if (position) *position = static_cast<std::int32_t>(lexer.Position());
    return tree;
}

}  // namespace

ExpressionTree ParseExpression(const INamedCompounds& compounds, std::u16string_view text, std::u16string& errorText,
                               std::int32_t* position) {
    CCompoundLookup lookup(compounds);
    return ParseExpression(lookup, text, errorText, position);
}

ExpressionTree ParseExpression(CCompoundLookup& compounds, std::u16string_view text, std::u16string& errorText,
                               std::int32_t* position) {
    const std::lock_guard lock(parserLock);
    return Parse(ReactionExpressionParser(compounds), text, errorText, position);
}

ExpressionTree ParseScalar(std::u16string_view text, std::u16string& errorText) {
    return Parse(ScalarExpressionParser(), text, errorText, nullptr);
}

}  // namespace reka
