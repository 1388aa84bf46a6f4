// SPDX-License-Identifier: MIT
// What was read from anybody's bytes is used to the end here, as a package would use it: at ordinary values, at zero,
// below zero, at infinities and NaN. Both evaluators must agree to the bit and to the word, what was stored must be
// stored the same again, and what a bag has once led to it must lead to again. So the fuzzers find wrong results, not
// only crashes.

#include "QuietMessages.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "expression/run/EvaluateExpression.h"
#include "packagetext/PropertyBag.h"
#include "persistence/ReadBag.h"
#include "persistence/ReadStoredDefinition.h"
#include "persistence/WriteBag.h"
#include "persistence/WriteStoredDefinition.h"
#include "platform/UserMessages.h"

namespace reka::fuzz {

namespace {

class CNoMessages : public IUserMessages {
public:
    MessageAnswer Show(const UserMessage&) noexcept override { return MessageAnswer::Yes; }
};

/// Whether two values are the same bit for bit; one NaN is as good as another.
bool IsSameValue(double first, double second) {
    if (std::isnan(first) || std::isnan(second)) return std::isnan(first) && std::isnan(second);
    return std::bit_cast<std::uint64_t>(first) == std::bit_cast<std::uint64_t>(second);
}

/// Both evaluators must come to the same value, or fail with the same text.
void Evaluate(const ExpressionRef* expression, const ReactionPackDefinition& definition) {
    if (!expression) return;
    double byProgram = 0;
    double byNodes = 0;
    std::u16string programText;
    std::u16string nodeText;
    const bool isDone = EvaluateExpression(*expression, byProgram, definition, programText);
    if (EvaluateExpression(*expression->root, byNodes, definition, nodeText) != isDone || nodeText != programText ||
        !IsSameValue(byProgram, byNodes)) {
        std::abort();
    }
}

void Require(bool holds) {
    if (!holds) std::abort();
}

bool IsSameText(BSTR first, BSTR second) {
    return TextOf(first) == TextOf(second) && (first == nullptr) == (second == nullptr);
}

/// Whether two values that a package has written to bags are the same.
bool IsSameEntry(const VARIANT& first, const VARIANT& second) {
    if (first.vt != second.vt) return false;
    if (first.vt == VT_EMPTY) return true;
    if (first.vt == VT_BSTR) return IsSameText(first.bstrVal, second.bstrVal);
    const ULONG count = first.parray->rgsabound[0].cElements;
    if (second.parray->rgsabound[0].cElements != count) return false;
    for (ULONG i = 0; i < count; ++i) {
        const bool isSame =
            first.vt == (VT_ARRAY | VT_BSTR)
                ? IsSameText(static_cast<BSTR*>(first.parray->pvData)[i], static_cast<BSTR*>(second.parray->pvData)[i])
                : IsSameValue(static_cast<double*>(first.parray->pvData)[i],
                              static_cast<double*>(second.parray->pvData)[i]);
        if (!isSame) return false;
    }
    return true;
}

/// The definition that a bag leads to, written to another one.
bool CopyBag(packagetext::CPropertyBag& from, packagetext::CPropertyBag& to) {
    ReactionPackDefinition definition(nullptr);
    return ReadDefinitionFromBag(definition, {&from, nullptr, u"fuzz"}) && WriteDefinitionToBag(definition, to);
}

/// A bag can't say all that a block can: what it lacks shows at the first reading, and from then on nothing changes.
void GoThroughBags(const ReactionPackDefinition& definition) {
    const auto first = packagetext::MakeObject<packagetext::CPropertyBag>();
    const auto second = packagetext::MakeObject<packagetext::CPropertyBag>();
    const auto third = packagetext::MakeObject<packagetext::CPropertyBag>();
    if (!WriteDefinitionToBag(definition, *first) || !CopyBag(*first, *second)) return;
    Require(CopyBag(*second, *third));
    const auto& expected = second->Entries();
    const auto& found = third->Entries();
    Require(expected.size() == found.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        Require(expected[i].key == found[i].key && IsSameEntry(expected[i].value.Get(), found[i].value.Get()));
    }
}

}  // namespace

void SilenceMessages() {
    static CNoMessages messages;
    ReplaceUserMessages(&messages);
}

void UseDefinition(ReactionPackDefinition& definition) {
    ReactionPackDefinition copy(nullptr);
    copy.CopyFrom(definition);
    copy.AllocateWorkArrays();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [temperature, amount] :
         {std::pair{300.0, 0.5}, {0.0, -0.0}, {-1.0, 1e200}, {2.0, notANumber}, {-infinity, infinity}}) {
        copy.temperature = temperature;
        copy.pressure = 1e5 + temperature;
        for (std::size_t i = 0; i < copy.workArraySize; ++i) {
            const double own = amount * (1.0 + static_cast<double>(i));  // no two operands alike
            copy.moleFraction[i] = own;
            copy.molarity[i] = own * 1.25;
            copy.activity[i] = own * 1.5;
            copy.fugacity[i] = own * 1.75;
        }
        for (const auto& reaction : copy.reactions) {
            Evaluate(reaction->rateExpression.get(), copy);
            Evaluate(reaction->equilibriumConstantExpression.get(), copy);
            Evaluate(reaction->heatExpression.get(), copy);
        }
    }
    GoThroughBags(copy);
    std::vector<std::uint8_t> first;
    std::vector<std::uint8_t> second;
    std::u16string errorText;
    if (!WriteStoredDefinition(copy, first, errorText)) std::abort();
    ReactionPackDefinition again(nullptr);
    if (!ReadStoredDefinition(again, first, errorText)) std::abort();
    if (!WriteStoredDefinition(again, second, errorText) || first != second) std::abort();
}

}  // namespace reka::fuzz
