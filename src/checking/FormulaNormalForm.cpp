// Folding a formula into its normal form. Open brackets are kept on a stack of element lists, and nothing recurses.

#include "checking/FormulaNormalForm.h"

#include <cmath>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "checking/FormulaText.h"
#include "checking/NumberText.h"

namespace reka {

namespace {

constexpr double countTolerance = 1e-6;  // a count this near to 1 is 1

/// Counts by symbol. Sorted, which is the order of the normal form.
using ElementCounts = std::map<std::u16string, double, std::less<>>;

/// Reads a count at `position`: 1 where none stands.
bool ReadCount(std::u16string_view text, std::size_t& position, double& count) {
    const std::u16string_view digits = CountAt(text, position);
    position += digits.size();
    count = 1.0;
    return digits.empty() || ScanNumber(digits, count);
}

/// Adds the counts of the innermost group, times `count`, to those around it. There are 702 symbols at most, so deep
/// brackets cost no more than their number.
void CloseGroup(std::vector<ElementCounts>& groups, double count) {
    ElementCounts group = std::move(groups.back());
    groups.pop_back();
    if (std::fabs(count - 1.0) > countTolerance) {
        for (auto& element : group) element.second *= count;
    }
    for (const auto& [symbol, amount] : group) groups.back()[symbol] += amount;
}

std::u16string WriteElement(const std::u16string& symbol, double count) {
    return symbol + FormatFormulaCount(count);
}

std::u16string WriteNormalForm(ElementCounts& elements) {
    std::u16string text;
    for (const char16_t* const first : {u"C", u"H"}) {
        const auto found = elements.find(std::u16string_view(first));
        if (found == elements.end()) continue;
        text += WriteElement(found->first, found->second);
        elements.erase(found);
    }
    for (const auto& [symbol, count] : elements) text += WriteElement(symbol, count);
    return text;
}

}  // namespace

std::u16string NormalizePcdFormula(std::u16string_view text) {
    std::vector<ElementCounts> groups(1);
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
            groups.back()[std::u16string(symbol)] += count;
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
