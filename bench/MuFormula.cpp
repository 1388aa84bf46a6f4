#include "bench/MuFormula.h"

#include <cctype>

namespace reka::bench {

namespace {

std::string MuText(std::u16string_view text) {
    std::string written;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = static_cast<char>(text[i]);
        const bool isLeaf = i + 3 < text.size() && text[i + 1] == u'(' && text[i + 3] == u')' &&
                            std::string_view("ACFX").find(character) != std::string_view::npos;
        if (isLeaf) {
            written += {character, '_', static_cast<char>(text[i + 2])};
            i += 3;
        } else {
            written += character;
        }
    }
    if (const std::size_t place = written.find("LOG10"); place != std::string::npos) written.replace(place, 5, "log10");
    return written;
}

}  // namespace

CMuFormula::CMuFormula(std::u16string_view text, ReactionPackDefinition& definition) {
    parser.DefineVar("T", &definition.temperature);
    parser.DefineVar("P", &definition.pressure);
    parser.DefineVar("R", &gasConstant);
    const std::pair<char, double*> arrays[] = {{'A', definition.activity.get()},
                                               {'C', definition.molarity.get()},
                                               {'F', definition.fugacity.get()},
                                               {'X', definition.moleFraction.get()}};
    for (const auto& [letter, values] : arrays) {
        for (std::size_t i = 0; i < definition.compounds.size(); ++i) {
            const char compound = static_cast<char>(TextOf(definition.compounds[i]->name.Get()).front());
            parser.DefineVar({letter, '_', compound}, values + i);
        }
    }
    source = MuText(text);
    Compile();
}

void CMuFormula::Compile() {
    parser.SetExpr(source);
    parser.Eval();  // the first evaluation compiles
}

}  // namespace reka::bench
