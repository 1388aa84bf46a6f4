// SPDX-License-Identifier: MIT
// muParser has neither compounds nor this language's spelling of functions, so a formula is translated: each mention of
// a compound becomes a variable that points at the same working value, and a function gets muParser's name for it. Both
// then read the same memory and compute the same number, which is checked before anything is measured.

#include "bench/MuFormula.h"

#include <cctype>
#include <string_view>
#include <utility>

#include "text/Utf8.h"

namespace reka::bench {

namespace {

bool IsWordCharacter(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0;
}

/// The compound of that name, or with that one letter to begin with; as many as there are for none.
std::size_t FindCompound(const std::string& name, const ReactionPackDefinition& definition) {
    std::size_t i = 0;
    for (; i < definition.compounds.size(); ++i) {
        const std::string compound = Utf8FromUtf16(definition.compounds[i]->name.View());
        if (compound == name || (name.size() == 1 && compound[0] == name[0])) break;
    }
    return i;
}

/// What is left of a text as it is translated.
class CTranslation {
public:
    CTranslation(std::string_view text, const ReactionPackDefinition& usedDefinition)
        : rest(text), definition(usedDefinition) {}

    std::string Run() {
        while (!rest.empty()) {
            if (std::isdigit(static_cast<unsigned char>(rest[0]))) {
                Take(NumberLength());
            } else if (!TakeCompound() && !TakeWord()) {
                Take(1);
            }
        }
        return written;
    }

private:
    void Take(std::size_t count) {
        written += rest.substr(0, count);
        rest.remove_prefix(count);
    }

    std::size_t NumberLength() const {
        std::size_t length = 0;
        while (length < rest.size() && (IsWordCharacter(rest[length]) || rest[length] == '.' ||
                                        (length > 0 && rest[length] == '-' && std::toupper(rest[length - 1]) == 'E'))) {
            ++length;
        }
        return length;
    }

    bool TakeCompound() {
        const std::size_t end = rest.find(')');
        const bool isLeaf = rest.size() > 1 && std::string_view("ACFX").find(rest[0]) != std::string_view::npos &&
                            rest[1] == '(' && end != std::string_view::npos;
        if (!isLeaf) return false;
        std::string name(rest.substr(2, end - 2));
        if (name[0] == '"') name = name.substr(1, name.size() - 2);
        written += rest[0] + ("_" + std::to_string(FindCompound(name, definition)));
        rest.remove_prefix(end + 1);
        return true;
    }

    bool TakeWord() {
        std::size_t length = 0;
        while (length < rest.size() && IsWordCharacter(rest[length])) ++length;
        const std::string_view word = rest.substr(0, length);
        for (const auto& [own, theirs] : {std::pair{"EXP", "exp"}, {"LOG10", "log10"}, {"LOG", "ln"}}) {
            if (word != own) continue;
            written += theirs;
            rest.remove_prefix(length);
            return true;
        }
        Take(length);
        return length > 0;
    }

    std::string_view rest;
    const ReactionPackDefinition& definition;
    std::string written;
};

}  // namespace

CMuFormula::CMuFormula(std::u16string_view text, ReactionPackDefinition& definition) {
    parser.DefineVar("T", &definition.temperature);
    parser.DefineVar("P", &definition.pressure);
    parser.DefineVar("R", &gasConstant);
    const std::pair<char, double*> arrays[] = {{'A', definition.activity.Get()},
                                               {'C', definition.molarity.Get()},
                                               {'F', definition.fugacity.Get()},
                                               {'X', definition.moleFraction.Get()}};
    for (const auto& [letter, values] : arrays) {
        for (std::size_t i = 0; i < definition.compounds.size(); ++i) {
            parser.DefineVar(letter + ("_" + std::to_string(i)), values + i);
        }
    }
    const std::string narrow = Utf8FromUtf16(text);
    source = CTranslation(narrow, definition).Run();
    Compile();
}

void CMuFormula::Compile() {
    parser.SetExpr(source);
    parser.Eval();  // the first evaluation compiles
}

}  // namespace reka::bench
