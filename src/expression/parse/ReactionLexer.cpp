// The words of reaction expressions: properties and compounds.

#include <string_view>

#include "expression/parse/ReactionExpressionParser.h"
#include "text/LetterCase.h"

namespace reka {

namespace {

struct ReservedWord {
    char16_t letter;
    int code;
};

// In the order in which they are compared, after PI and R and before the compounds.
constexpr ReservedWord reservedWords[] = {{u'P', token::p}, {u'T', token::t}, {u'X', token::x},
                                          {u'C', token::c}, {u'A', token::a}, {u'F', token::f}};

}  // namespace

int ReactionExpressionParser::FindOtherWord(std::u16string_view word) {
    if (word.size() == 1) {
        for (const ReservedWord& reserved : reservedWords) {
            if (reserved.letter == UpperCase(word[0])) return reserved.code;
        }
    }
    const std::int32_t compoundIndex = compounds.Find(word);
    if (compoundIndex < 0) return token::endOfInput;
    tokenValue.index = compoundIndex;
    return token::component;
}

}  // namespace reka
