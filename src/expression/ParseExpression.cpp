// Drives a parse: lexer and grammar make nodes, the one that is left in the end is the tree, and the check finishes it.

#include "expression/ParseExpression.h"

#include <mutex>
#include <new>

#include "expression/CheckExpression.h"
#include "platform/HostArithmetic.h"

namespace reka {

namespace {

std::recursive_mutex parserLock;

}  // namespace

ExpressionTree TakeParsedNode(ReactionExpressionParser& parser) {
    const PoolSlot slot = parser.pool.FindNode(0);
    if (slot == noSlot) return nullptr;
    ExpressionTree tree = parser.pool.PoolRemove(slot);
    if (parser.pool.FindNode(slot) == noSlot) return tree;
    parser.ReportParseError(u"internal error: more than one expression remaining after parsing is finished");
    return nullptr;
}

ExpressionTree ParseExpression(const ReactionPackDefinition& definition, std::u16string_view text,
                               std::u16string& errorText, std::int32_t* position) {
    const std::lock_guard lock(parserLock);
    const COwnArithmetic arithmetic;  // numbers are read and folded alike, whatever the host's rounding
    ReactionExpressionParser parser(definition, text);
    RunReactionGrammar(parser);  // the error buffer alone tells the outcome
    if (parser.isOutOfMemory) throw std::bad_alloc();
    ExpressionTree tree;
    if (parser.errorBuffer.empty()) tree = TakeParsedNode(parser);
    parser.pool.PoolClear();
    errorText = parser.errorBuffer;
    if (tree && errorText.empty()) CheckExpression(*tree, definition, errorText);
    if (!errorText.empty()) tree.reset();
    if (tree && (tree->kind == NodeKind::Failed || tree->kind == NodeKind::ExpressionList)) {
        errorText += u"expression must result a scalar\r\n";  // no text leads here; the last guard
    }
    if (position) *position = static_cast<std::int32_t>(parser.position);
    return tree;
}

}  // namespace reka
