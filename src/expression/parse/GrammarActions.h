// SPDX-License-Identifier: MIT
// What the rules of the grammars do: they make the nodes of a tree.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "expression/parse/ExpressionLexer.h"
#include "expression/parse/ParseErrors.h"
#include "expression/tree/ExpressionPool.h"

namespace reka {

/// Makes the nodes of one parse, in an arena that ends up with the tree. Each action makes a node that the pool knows;
/// a node that goes in becomes an argument of the new one. When memory runs out, an action gives null and
/// `isOutOfMemory` of the errors is set. Once the parse has failed, the actions do nothing: the rest of the text is
/// read for its messages alone.
class CGrammarActions {
public:
    /// For a text of `textSize` characters. `errors` outlive this. May throw std::bad_alloc.
    CGrammarActions(std::size_t textSize, ParseErrors& errors);

    ExpressionNode* MakeConstant(double value) noexcept;
    ExpressionNode* MakeNode(NodeKind kind) noexcept;
    ExpressionNode* MakeCompoundLeaf(NodeKind kind, std::int32_t compoundIndex) noexcept;
    ExpressionNode* MakeFunction(std::int32_t functionRow, ExpressionNode* argumentList) noexcept;
    ExpressionNode* MakeOperation(NodeKind kind, ExpressionNode* operand) noexcept;
    ExpressionNode* MakeOperation(NodeKind kind, ExpressionNode* left, ExpressionNode* right) noexcept;
    /// Appends `argument` to `list`, and gives `list`.
    ExpressionNode* AppendArgument(ExpressionNode* list, ExpressionNode* argument) noexcept;
    /// A message of the generated parser, which lets no exception through.
    void ReportGrammarError(std::string_view message) noexcept;

    /// The one node that a parse without errors leaves in the pool, with everything under it; null after errors. A
    /// second one there is an error of its own. The last thing to be done here.
    ExpressionTree TakeTree();

private:
    template <class Action>
    ExpressionNode* Run(const Action& action) noexcept;
    ExpressionNode& AddNode(NodeKind kind);
    void TakeArgument(ExpressionNode& node, ExpressionNode& argument);

    ExpressionArena arena;
    ExpressionPool pool;
    ParseErrors& errors;
};

/// A generated parser: reads all of a text and leaves what it makes in `actions`.
using RunGrammar = void(CExpressionLexer& lexer, CGrammarActions& actions);
RunGrammar RunReactionGrammar;
RunGrammar RunScalarGrammar;

}  // namespace reka
