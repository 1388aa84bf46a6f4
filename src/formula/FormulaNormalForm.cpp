// SPDX-License-Identifier: MIT
// Folding a formula into its normal form. Open brackets are kept on a stack of element lists, and nothing recurses: a
// text may be brackets from end to end. Where a group is closed the shorter list goes into the longer one, so brackets
// around brackets move no element. Counts are multiplied as the groups close, from the inside to the outside.

#include "formula/FormulaNormalForm.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "formula/FormulaText.h"
#include "text/NumberText.h"

namespace reka {

namespace {

constexpr double countTolerance = 1e-6;  // a count this near to 1 is 1

struct ElementCount {
    std::u16string_view symbol;
    double count;
};

/// One of each symbol, sorted, which is the order of the normal form. A plain row, since a group of hundreds of symbols
/// may stand in a hundred thousand brackets that multiply it.
using ElementList = std::vector<ElementCount>;

/// Where `symbol` stands in the list, or would stand.
ElementList::iterator FindPlace(ElementList& list, std::u16string_view symbol) {
    return std::lower_bound(
        list.begin(), list.end(), symbol,
        [](const ElementCount& element, std::u16string_view wanted) { return element.symbol < wanted; });
}

bool IsElementAt(const ElementList& list, ElementList::iterator place, std::u16string_view symbol) {
    return place != list.end() && place->symbol == symbol;
}

void AddElement(ElementList& list, const ElementCount& element) {
    const auto place = FindPlace(list, element.symbol);
    if (IsElementAt(list, place, element.symbol)) {
        place->count += element.count;
    } else {
        list.insert(place, element);
    }
}

/// Reads a count at `position`: 1 where none stands.
bool ReadCount(std::u16string_view text, std::size_t& position, double& count) {
    const std::u16string_view digits = CountAt(text, position);
    position += digits.size();
    count = 1.0;
    return digits.empty() || ScanNumber(digits, count);
}

/// Adds the counts of the innermost group, times `count`, to those around it. The shorter list goes into the longer
/// one, whichever was outside: the sums are the same, and brackets with nothing else in them move no element.
void CloseGroup(std::vector<ElementList>& groups, double count) {
    ElementList group = std::move(groups.back());
    groups.pop_back();
    if (std::fabs(count - 1.0) > countTolerance) {
        for (ElementCount& element : group) element.count *= count;
    }
    ElementList& outer = groups.back();
    if (outer.size() < group.size()) outer.swap(group);
    for (const ElementCount& element : group) AddElement(outer, element);
}

std::u16string WriteElement(const ElementCount& element) {
    return std::u16string(element.symbol) + FormatFormulaCount(element.count);
}

std::u16string WriteNormalForm(ElementList& elements) {
    std::u16string text;
    for (const char16_t* const first : {u"C", u"H"}) {
        const auto place = FindPlace(elements, first);
        if (!IsElementAt(elements, place, first)) continue;
        text += WriteElement(*place);
        elements.erase(place);
    }
    for (const ElementCount& element : elements) text += WriteElement(element);
    return text;
}

}  // namespace

std::u16string NormalizePcdFormula(std::u16string_view text) {
    std::vector<ElementList> groups(1);
    for (std::size_t position = 0; position < text.size();) {
        double count = 1.0;
        if (text[position] == u'(') {
            groups.emplace_back();
            ++position;
        } else if (text[position] == u')') {
            if (groups.size() == 1) return {};
            if (!ReadCount(text, ++position, count)) return {};
            CloseGroup(groups, count);
        } else if (const std::u16string_view symbol = SymbolAt(text, position); !symbol.empty()) {
            position += symbol.size();
            if (!ReadCount(text, position, count)) return {};
            AddElement(groups.back(), {symbol, count});
        } else {
            ++position;
        }
    }
    if (groups.size() > 1) return {};
    return WriteNormalForm(groups.back());
}

std::u16string FormatFormulaCount(double count) {
    if (std::fabs(count - 1.0) < countTolerance) return {};
    std::u16string text = FormatFixed(count);
    if (text.find(u'.') == std::u16string::npos) return text;  // infinity
    while (text.ends_with(u'0')) text.pop_back();
    if (text.ends_with(u'.')) text.pop_back();
    return text;
}

}  // namespace reka
