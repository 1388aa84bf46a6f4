// Grammar actions leave nodes in the pool: the one that is left in the end is the tree, and the check finishes it.

#include "expression/parse/FinishParse.h"

#include <new>
#include <utility>

#include "expression/parse/CheckExpression.h"

namespace reka {

ExpressionTree TakeParsedNode(ExpressionParser& parser) {
    if (parser.pool.NodeCount() > 1) {
        parser.ReportParseError(u"internal error: more than one expression remaining after parsing is finished");
    }
    if (parser.pool.NodeCount() != 1) return nullptr;
    ExpressionNode& root = parser.pool.FirstNode();
    parser.pool.PoolClear();
    return MakeTree(std::move(parser.arena), root);
}

ExpressionTree FinishParse(ExpressionParser& parser, const INamedCompounds* compounds, std::u16string& errorText) {
    if (parser.isOutOfMemory) throw std::bad_alloc();
    ExpressionTree tree;
    if (parser.errorBuffer.empty()) tree = TakeParsedNode(parser);  // the error buffer alone tells the outcome
    parser.pool.PoolClear();
    errorText = std::move(parser.errorBuffer);
    if (tree && errorText.empty()) {
        compounds ? CheckExpression(*tree, *compounds, errorText) : CheckScalarExpression(*tree, errorText);
    }
    if (!errorText.empty()) tree.reset();
    if (tree && (tree->kind == NodeKind::Failed || tree->kind == NodeKind::ExpressionList)) {
        errorText += u"expression must result a scalar\r\n";  // no text leads here; the last guard
    }
    return tree;
}

}  // namespace reka
