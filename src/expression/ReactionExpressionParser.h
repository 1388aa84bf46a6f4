// The state of one parse of a reaction expression, shared by the lexer, the grammar and the routine that drives them.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "expression/CompoundLookup.h"
#include "expression/ExpressionPool.h"
#include "package/Definition.h"

namespace reka {

/// The codes of the tokens as the grammar declares them. A token of a single character has the character as its code.
namespace token {
constexpr int endOfInput = 0;
constexpr int realNumber = 258;
constexpr int functionName = 259;
constexpr int component = 260;
constexpr int pi = 261;
constexpr int r = 262;
constexpr int p = 263;
constexpr int t = 264;
constexpr int a = 265;
constexpr int f = 266;
constexpr int c = 267;
constexpr int x = 268;
}  // namespace token

/// What a token carries besides its code.
union TokenValue {
    double number;       // of a number
    std::int32_t index;  // of a function: row of `FunctionTable`; of a compound: index into `compounds`
};

struct ReactionExpressionParser {
    /// The expression is `text` up to its first zero character. `text` and `definition` outlive the parser.
    ReactionExpressionParser(const ReactionPackDefinition& definition, std::u16string_view text);

    /// Reads the next token and leaves its value in `tokenValue`. Words are resolved against the function table, the
    /// reserved words and the definition's compounds; what is wrong is reported on the spot. The result is a code of
    /// `token`, or a single character; after an error it is the end of input, unless a number could be delivered.
    int ReadToken();

    /// Adds `message` and a line end to `errorBuffer`. Every message of lexer and grammar goes through here.
    void ReportParseError(std::u16string_view message);

    // The actions of the grammar. Each makes a node that the pool owns and gives its slot; a slot that goes in is
    // emptied, and its node becomes an argument of the new one. When memory runs out, `isOutOfMemory` is set, and from
    // then on the actions do nothing.
    PoolSlot MakeConstant(double value) noexcept;
    PoolSlot MakeNode(NodeKind kind) noexcept;
    PoolSlot MakeCompoundLeaf(NodeKind kind, std::int32_t compoundIndex) noexcept;
    PoolSlot MakeFunction(std::int32_t functionRow, PoolSlot argumentList) noexcept;
    PoolSlot MakeOperation(NodeKind kind, PoolSlot operand) noexcept;
    PoolSlot MakeOperation(NodeKind kind, PoolSlot left, PoolSlot right) noexcept;
    /// Appends `argument` to the list in `list`, and gives `list`.
    PoolSlot AppendArgument(PoolSlot list, PoolSlot argument) noexcept;

    std::u16string_view source;
    std::size_t position = 0;  // of the next character
    CCompoundLookup compounds;
    TokenValue tokenValue{};
    std::u16string tokenDescription;  // of the token read last, for diagnostics
    std::u16string errorBuffer;
    ExpressionPool pool;
    bool isOutOfMemory = false;  // no exception may pass through the generated parser

private:
    bool IsAtEnd() const { return position >= source.size(); }
    char16_t ReadCharacter() { return source[position++]; }
    int EndOfInput();
    int Fail(std::u16string_view description, std::u16string_view message);

    int ReadWord();
    int ReadQuotedName();
    int ResolveWord(std::u16string_view word);
    void EndToken();

    int ReadNumber(char16_t firstDigit);
    int ReadNumberFromDot();
    int ReadFraction(double value);
    int ReadExponent(double value);
    int ReadExponentDigits(double value, bool isNegative);
    int FinishInteger(std::int64_t value);
    int FinishReal(double value);
};

/// Runs the generated parser over the tokens of `parser`. What it makes is left in the pool, what it reports in the
/// error buffer.
void RunReactionGrammar(ReactionExpressionParser& parser);

}  // namespace reka
