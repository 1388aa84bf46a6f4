// SPDX-License-Identifier: MIT
// What was read from anybody's bytes is used to the end here, as a package would use it: at ordinary values, at zero,
// below zero, at infinities and NaN. Both evaluators must agree to the bit and to the word, and what was stored must be
// stored the same again. So the fuzzers find wrong results, not only crashes.

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
#include "persistence/ReadStoredDefinition.h"
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
    std::vector<std::uint8_t> first;
    std::vector<std::uint8_t> second;
    std::u16string errorText;
    if (!WriteStoredDefinition(copy, first, errorText)) std::abort();
    ReactionPackDefinition again(nullptr);
    if (!ReadStoredDefinition(again, first, errorText)) std::abort();
    if (!WriteStoredDefinition(again, second, errorText) || first != second) std::abort();
}

}  // namespace reka::fuzz
