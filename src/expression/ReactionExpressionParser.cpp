// The actions of the reaction grammar. The generated parser is C at heart and frees nothing when an exception passes
// through it, so the actions keep a shortage of memory to themselves and the driver raises it afterwards.

#include "expression/ReactionExpressionParser.h"

#include <new>

#include "expression/FunctionTable.h"

namespace reka {

namespace {

ExpressionTree NewNode(NodeKind kind) {
    ExpressionTree node(new ExpressionNode);
    node->kind = kind;
    return node;
}

template <class Action>
PoolSlot RunAction(ReactionExpressionParser& parser, const Action& action) noexcept {
    if (parser.isOutOfMemory) return noSlot;
    try {
        return action();
    } catch (const std::bad_alloc&) {
        parser.isOutOfMemory = true;
        return noSlot;
    }
}

}  // namespace

ReactionExpressionParser::ReactionExpressionParser(const ReactionPackDefinition& definition, std::u16string_view text)
    : source(text.substr(0, text.find(u'\0'))), compounds(definition) {}

void ReactionExpressionParser::ReportParseError(std::u16string_view message) {
    errorBuffer += message;
    errorBuffer += u"\r\n";
}

PoolSlot ReactionExpressionParser::MakeConstant(double value) noexcept {
    return RunAction(*this, [&] {
        ExpressionTree node = NewNode(NodeKind::RealConstant);
        node->value = value;
        return pool.PoolAdd(std::move(node));
    });
}

PoolSlot ReactionExpressionParser::MakeNode(NodeKind kind) noexcept {
    return RunAction(*this, [&] { return pool.PoolAdd(NewNode(kind)); });
}

PoolSlot ReactionExpressionParser::MakeCompoundLeaf(NodeKind kind, std::int32_t compoundIndex) noexcept {
    return RunAction(*this, [&] {
        ExpressionTree node = NewNode(kind);
        node->compoundIndex = compoundIndex;
        return pool.PoolAdd(std::move(node));
    });
}

PoolSlot ReactionExpressionParser::MakeFunction(std::int32_t functionRow, PoolSlot argumentList) noexcept {
    return MakeOperation(FunctionTable[functionRow].kind, argumentList);
}

PoolSlot ReactionExpressionParser::MakeOperation(NodeKind kind, PoolSlot operand) noexcept {
    return RunAction(*this, [&] {
        ExpressionTree node = NewNode(kind);
        AddArgument(*node, pool.PoolRemove(operand));
        return pool.PoolAdd(std::move(node));
    });
}

PoolSlot ReactionExpressionParser::MakeOperation(NodeKind kind, PoolSlot left, PoolSlot right) noexcept {
    return RunAction(*this, [&] {
        ExpressionTree node = NewNode(kind);
        AddArgument(*node, pool.PoolRemove(left));
        AddArgument(*node, pool.PoolRemove(right));
        return pool.PoolAdd(std::move(node));
    });
}

PoolSlot ReactionExpressionParser::AppendArgument(PoolSlot list, PoolSlot argument) noexcept {
    return RunAction(*this, [&] {
        AddArgument(pool.NodeAt(list), pool.PoolRemove(argument));
        return list;
    });
}

}  // namespace reka
