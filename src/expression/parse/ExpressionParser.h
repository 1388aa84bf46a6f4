// What the parsers of reaction expressions and of numeric fields have in common: the state of one parse, shared by
// lexer, grammar and driver, and the actions of the grammars.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "expression/tree/ExpressionPool.h"

namespace reka {

/// The codes of the tokens that both grammars declare. A token of a single character has the character as its code.
namespace token {
constexpr int endOfInput = 0;
constexpr int realNumber = 258;
constexpr int functionName = 259;
constexpr int pi = 261;
constexpr int r = 262;
}  // namespace token

/// What a token carries besides its code.
union TokenValue {
    double number;       // of a number
    std::int32_t index;  // of a function: row of `FunctionTable`; of a compound: index into `compounds`
};

/// What can be said about a token, as it is noted while tokens are read: the words are found when somebody asks.
struct TokenNote {
    enum class Kind : std::uint8_t { Text, Word, Invalid, Integer, IntegerAsDouble, Real };
    Kind kind = Kind::Text;
    std::u16string_view text;  // itself, or the word in the source, or the invalid character
    std::int64_t integer = 0;
    double number = 0.0;
};

/// The description that a note stands for, such as "integer 7", or a word in upper case.
std::u16string DescribeToken(const TokenNote& note);

struct ExpressionParser {
    static constexpr std::size_t charactersPerNode = 2;  // of a formula without blanks
    static constexpr std::size_t leastExpectedNodes = 8;
    static constexpr std::size_t mostExpectedNodes = 256;

    /// The expression is `text` up to its first zero character. `text` outlives the parser.
    explicit ExpressionParser(std::u16string_view text)
        : source(text),
          arena(MakeArena(std::clamp(text.size() / charactersPerNode, leastExpectedNodes, mostExpectedNodes))) {}

    std::u16string TokenDescription() const { return DescribeToken(tokenNote); }

    /// Adds `message` and a line end to `errorBuffer`. Every message of lexer and grammar goes through here.
    void ReportParseError(std::u16string_view message);
    /// The same for a word that nobody knows, which may be as long as the text.
    void ReportUnknownWord(std::u16string_view word);

    /// Whether the parse is going to deliver no tree, whatever else is read.
    bool HasFailed() const { return isOutOfMemory || !errorBuffer.empty(); }

    // The actions of the grammar. Each makes a node that the pool knows; a node that goes in becomes an argument of the
    // new one. Null, and `isOutOfMemory` is set, when memory runs out. Once the parse has failed, the actions do
    // nothing: the rest of the text is read for its messages alone.
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

    std::u16string_view source;  // the expression, and what may stand behind its end
    std::size_t position = 0;    // of the next character
    TokenValue tokenValue{};
    TokenNote tokenNote;  // of the token read last, for diagnostics
    std::u16string errorBuffer;
    ExpressionArena arena;
    ExpressionPool pool;
    bool isOutOfMemory = false;  // no exception may pass through the generated parser
};

}  // namespace reka
