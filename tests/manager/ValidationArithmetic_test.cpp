// SPDX-License-Identifier: MIT
// The checks calculate under settings of their own, whatever traps the host has unmasked.

#include "manager/ValidationFixture.h"
#include "platform/HostArithmetic.h"

namespace reka::test {
namespace {

/// Something that a host's traps would end the process for: each row needs another part of the checks to mask them.
struct ArithmeticCase {
    const char* name;
    const char16_t* formulas;  // of both compounds; null for none
    double weight;             // of both
    std::vector<double> stoichiometry;
    const char16_t* errorText;
};
void PrintTo(const ArithmeticCase& row, std::ostream* stream) {
    *stream << row.name;
}

const std::u16string countWithoutBounds = u"C" + std::u16string(400, u'9');

const ArithmeticCase arithmeticCases[] = {
    {"OverflowOfTheMass", nullptr, 1e308, {10.0, 10.0}, u"Mass balance error in reaction R1"},
    {"InexactMass", nullptr, 0.1, {-3.0, 3.0}, u""},
    {"InexactCount", u"C.1", 0.0, {-3.0, 3.0}, u""},
    {"AmountThatIsNone", countWithoutBounds.c_str(), 0.0, {-1.0, 1.0}, u""},  // infinity less infinity
    {"AmountOutOfBalance", u"C.1", 0.0, {3.0, 3.0}, u"Element balance mismatch detected for C (0.6) in reaction R1"},
};

class ValidationUnderTraps : public Validation, public testing::WithParamInterface<ArithmeticCase> {};

TEST_P(ValidationUnderTraps, RunsUnderItsOwnArithmetic) {
    const ArithmeticCase& row = GetParam();
    SetCompound(0, row.formulas, row.weight);
    SetCompound(1, row.formulas, row.weight);
    reaction->stoichiometry = row.stoichiometry;
    const ArithmeticSettings before = CurrentArithmetic();
    SetArithmetic({before.sse & ~0x1F80U, static_cast<std::uint16_t>(before.x87 & ~0x3FU)});
    std::u16string errorText;
    const bool isValid = ValidateDefinition(*definition, &store, false, u"P", u"", 0, errorText, ui);
    const ArithmeticSettings after = CurrentArithmetic();
    SetArithmetic(before);
    EXPECT_EQ(isValid, *row.errorText == 0);
    EXPECT_EQ(errorText, row.errorText);
    EXPECT_EQ(after.sse & 0x1F80U, 0U);  // the host's again
}
INSTANTIATE_TEST_SUITE_P(Table, ValidationUnderTraps, testing::ValuesIn(arithmeticCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace reka::test
