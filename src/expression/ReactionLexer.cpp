// The words of reaction expressions: properties and compounds.

#include <string_view>

#include "expression/ReactionExpressionParser.h"

namespace reka {

namespace {

struct ReservedWord {
    std::u16string_view word;
    int code;
};

// In the order in which they are compared, after PI and R and before the compounds.
constexpr ReservedWord reservedWords[] = {{u"P", token::p}, {u"T", token::t}, {u"X", token::x},
                                          {u"C", token::c}, {u"A", token::a}, {u"F", token::f}};

}  // namespace

int ReactionExpressionParser::FindOtherWord(const std::u16string& upperCaseWord) {
    for (const ReservedWord& reserved : reservedWords) {
        if (reserved.word == upperCaseWord) return reserved.code;
    }
    const std::int32_t compoundIndex = compounds.Find(upperCaseWord);
    if (compoundIndex < 0) return token::endOfInput;
    tokenValue.index = compoundIndex;
    return token::component;
}

}  // namespace reka
