// SPDX-License-Identifier: MIT
// The parser itself tells whether a compound can be named by a text: so the words of the language, the beginnings of
// words and names that stand twice need no second set of rules here.

#include "editor/ExpressionOffers.h"

#include <algorithm>
#include <utility>

#include "expression/parse/ParseExpression.h"
#include "expression/tree/NodeKinds.h"

namespace reka {

namespace {

struct Quantity {
    const char16_t* text;
    const char16_t* meaning;
};
constexpr Quantity quantities[] = {
    {u"T", u"temperature [K]"},
    {u"P", u"pressure [Pa]"},
    {u"C()", u"molarity of a compound [mol/m\u00B3]"},
    {u"X()", u"mole fraction of a compound"},
    {u"A()", u"activity of a compound"},
    {u"F()", u"fugacity of a compound [Pa]"},
    {u"R", u"gas constant [J/(mol K)]"},
    {u"PI", u"circle number"},
};

constexpr std::size_t mostCompounds = 5000;    // of a menu
constexpr std::size_t longestMenuLabel = 100;  // characters

bool IsWordCharacter(char16_t character) {
    return (character >= u'A' && character <= u'Z') || (character >= u'a' && character <= u'z') ||
           (character >= u'0' && character <= u'9') || character == u'_';
}

/// Whether the range is all that stands in the brackets of a quantity of a compound, as in "C()".
bool IsWholeArgument(std::u16string_view text, std::size_t first, std::size_t end) {
    if (first < 2 || end >= text.size() || text[first - 1] != u'(' || text[end] != u')') return false;
    constexpr std::u16string_view letters = u"CXAFcxaf";
    const bool isLetter = letters.find(text[first - 2]) != std::u16string_view::npos;
    return isLetter && (first == 2 || !IsWordCharacter(text[first - 3]));
}

bool NamesACompound(CCompoundLookup& compounds, const std::u16string& written) {
    std::u16string errorText;
    return ParseExpression(compounds, u"X(" + written + u")", errorText, nullptr) != nullptr;
}

std::vector<ExpressionOffer> CompoundOffers(const ReactionPackDefinition& definition) {
    CCompoundLookup lookup(definition);
    std::vector<ExpressionOffer> offers;
    for (std::size_t i = 0; i < definition.compounds.size() && offers.size() < mostCompounds; ++i) {
        const std::u16string_view name = definition.compounds[i]->name.View();
        if (lookup.Find(name) != static_cast<std::int32_t>(i)) continue;  // another one is meant by it
        std::u16string written = WrittenName(lookup, name);
        if (!written.empty()) offers.push_back({std::move(written), {}});
    }
    return offers;
}

std::vector<ExpressionOffer> QuantityOffers() {
    std::vector<ExpressionOffer> offers;
    for (const Quantity& quantity : quantities) offers.push_back({quantity.text, quantity.meaning});
    return offers;
}

std::vector<ExpressionOffer> FunctionOffers() {
    std::vector<ExpressionOffer> offers;
    for (const NodeKindRow& row : FunctionTable) {
        offers.push_back({std::u16string(row.word) + (row.operandCount == 2 ? u"(,)" : u"()"), {}});
    }
    std::sort(offers.begin(), offers.end(),
              [](const ExpressionOffer& left, const ExpressionOffer& right) { return left.text < right.text; });
    return offers;
}

}  // namespace

std::vector<OfferGroup> ExpressionOffers(const ReactionPackDefinition& definition) {
    std::vector<OfferGroup> groups;
    groups.push_back({u"Insert compoun&d", CompoundOffers(definition)});
    groups.push_back({u"Insert &quantity", QuantityOffers()});
    groups.push_back({u"Insert &function", FunctionOffers()});
    return groups;
}

std::u16string WrittenName(CCompoundLookup& compounds, std::u16string_view name) {
    if (name.empty()) return {};
    std::u16string written(name);
    if (std::all_of(name.begin(), name.end(), IsWordCharacter) && NamesACompound(compounds, written)) return written;
    written = u"\"" + written + u"\"";
    if (name.find(u'"') != std::u16string_view::npos || !NamesACompound(compounds, written)) return {};
    return written;
}

TextReplacement InsertOffer(std::u16string_view text, TextRange selection, const ExpressionOffer& offer) {
    const auto length = static_cast<std::int32_t>(text.size());
    const std::int32_t first = std::clamp(selection.first, 0, length);
    const std::int32_t end = std::clamp(selection.end, first, length);
    const std::u16string_view selected =
        text.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first));
    std::u16string inserted = offer.text;
    const std::size_t bracket = inserted.find(u'(');
    // The one argument is complete: what comes next stands behind its bracket.
    const bool isWhole = IsWholeArgument(text, static_cast<std::size_t>(first), static_cast<std::size_t>(end));
    std::size_t caret = inserted.size() + (isWhole ? 1 : 0);
    if (bracket != std::u16string::npos && inserted.front() != u'"') {
        inserted.insert(bracket + 1, selected);
        const std::size_t comma = inserted.find(u',', bracket + 1 + selected.size());
        if (selected.empty()) {
            caret = bracket + 1;
        } else {
            caret = comma == std::u16string::npos ? inserted.size() : comma + 1;
        }
    }
    const std::int32_t place = first + static_cast<std::int32_t>(caret);
    return {{first, end}, std::move(inserted), {place, place}};
}

std::u16string MenuLabel(const ExpressionOffer& offer) {
    std::u16string label;
    for (const char16_t character : offer.text) {
        if (label.size() >= longestMenuLabel) {
            label += u"...";
            break;
        }
        if (character == u'&') label += character;  // which makes it one that is shown
        label += character < u' ' ? u' ' : character;
    }
    if (!offer.meaning.empty()) label += u"\t" + offer.meaning;
    return label;
}

}  // namespace reka
