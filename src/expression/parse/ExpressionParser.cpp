// The actions of the grammars. A generated parser is C at heart and frees nothing when an exception passes through it,
// so the actions keep a shortage of memory to themselves and the driver raises it afterwards.

#include "expression/parse/ExpressionParser.h"

#include <charconv>
#include <new>

#include "expression/tree/FunctionTable.h"
#include "text/LetterCase.h"

namespace reka {

namespace {

template <class Action>
ExpressionNode* RunAction(ExpressionParser& parser, const Action& action) noexcept {
    if (parser.HasFailed()) return nullptr;
    try {
        return &action();
    } catch (const std::bad_alloc&) {
        parser.isOutOfMemory = true;
        return nullptr;
    }
}

// A node out of the parser's arena that the pool knows.
ExpressionNode& AddNode(ExpressionParser& parser, NodeKind kind) {
    ExpressionNode& node = MakeNode(*parser.arena, kind);
    parser.pool.PoolAdd(node);
    return node;
}

// Makes a node of the pool an argument of another.
void TakeArgument(ExpressionParser& parser, ExpressionNode& node, ExpressionNode& argument) {
    AddArgument(*parser.arena, node, &argument);
    parser.pool.PoolRemove(argument);
}

// `value` in decimal, or in the general format; the host's locale has no part in it.
template <class Number, class... Format>
std::u16string Describe(const char16_t* what, Number value, Format... format) {
    char text[32];
    char* const end = std::to_chars(text, text + sizeof text, value, format...).ptr;
    return std::u16string(what).append(text, end);
}

}  // namespace

std::u16string DescribeToken(const TokenNote& note) {
    switch (note.kind) {
        case TokenNote::Kind::Word:
            return UpperCase(note.text);
        case TokenNote::Kind::Invalid:
            return std::u16string(u"invalid character: '").append(note.text) + u"'";
        case TokenNote::Kind::Integer:
            return Describe(u"integer ", note.integer);
        case TokenNote::Kind::IntegerAsDouble:
            return Describe(u"integer ", note.number, std::chars_format::general, 1);
        case TokenNote::Kind::Real:
            return Describe(u"real value ", note.number, std::chars_format::general, 6);
        default:
            return std::u16string(note.text);
    }
}

void ExpressionParser::ReportParseError(std::u16string_view message) {
    errorBuffer += message;
    errorBuffer += u"\r\n";
}

void ExpressionParser::ReportUnknownWord(std::u16string_view word) {
    constexpr std::u16string_view start = u"unknown token ";
    constexpr std::u16string_view end = u"\r\n";
    constexpr std::size_t partSize = 4096;  // small enough to be in the cache still when it is folded
    errorBuffer.reserve(errorBuffer.size() + start.size() + word.size() + end.size());
    errorBuffer += start;
    for (std::size_t done = 0; done < word.size(); done += partSize) {
        const std::size_t partStart = errorBuffer.size();
        errorBuffer += word.substr(done, partSize);
        for (std::size_t i = partStart; i < errorBuffer.size(); ++i) errorBuffer[i] = UpperCase(errorBuffer[i]);
    }
    errorBuffer += end;
}

void ExpressionParser::ReportGrammarError(std::string_view message) noexcept {
    if (isOutOfMemory) return;
    try {
        ReportParseError(std::u16string(message.begin(), message.end()));
    } catch (const std::bad_alloc&) {
        isOutOfMemory = true;
    }
}

ExpressionNode* ExpressionParser::MakeConstant(double value) noexcept {
    return RunAction(*this, [&]() -> ExpressionNode& {
        ExpressionNode& node = AddNode(*this, NodeKind::RealConstant);
        node.value = value;
        return node;
    });
}

ExpressionNode* ExpressionParser::MakeNode(NodeKind kind) noexcept {
    return RunAction(*this, [&]() -> ExpressionNode& { return AddNode(*this, kind); });
}

ExpressionNode* ExpressionParser::MakeCompoundLeaf(NodeKind kind, std::int32_t compoundIndex) noexcept {
    return RunAction(*this, [&]() -> ExpressionNode& {
        ExpressionNode& node = AddNode(*this, kind);
        node.compoundIndex = compoundIndex;
        return node;
    });
}

ExpressionNode* ExpressionParser::MakeFunction(std::int32_t functionRow, ExpressionNode* argumentList) noexcept {
    return MakeOperation(FunctionTable[functionRow].kind, argumentList);
}

ExpressionNode* ExpressionParser::MakeOperation(NodeKind kind, ExpressionNode* operand) noexcept {
    return RunAction(*this, [&]() -> ExpressionNode& {
        ExpressionNode& node = reka::MakeNode(*arena, kind);
        TakeArgument(*this, node, *operand);
        pool.PoolAdd(node);
        return node;
    });
}

ExpressionNode* ExpressionParser::MakeOperation(NodeKind kind, ExpressionNode* left, ExpressionNode* right) noexcept {
    return RunAction(*this, [&]() -> ExpressionNode& {
        ExpressionNode& node = reka::MakeNode(*arena, kind);
        TakeArgument(*this, node, *left);
        TakeArgument(*this, node, *right);
        pool.PoolAdd(node);
        return node;
    });
}

ExpressionNode* ExpressionParser::AppendArgument(ExpressionNode* list, ExpressionNode* argument) noexcept {
    return RunAction(*this, [&]() -> ExpressionNode& {
        TakeArgument(*this, *list, *argument);
        return *list;
    });
}

}  // namespace reka
