// SPDX-License-Identifier: MIT
// Where a check leads the user: to the page, the reaction and the field that its complaint speaks of.

#include <limits>
#include <optional>

#include "checking/DefinitionChecks.h"
#include "manager/ValidationFixture.h"

namespace reka::test {
namespace {

struct SubjectCase {
    const char* name;
    void (*spoil)(ReactionPackDefinition& definition, ReactionDefinition& second);
    CheckSubject subject;
};
const SubjectCase subjectCases[] = {
    {"Name",
     [](ReactionPackDefinition& definition, ReactionDefinition&) { definition.name.Reset(); },
     {CheckedPart::Name}},
    {"NameThatIsTaken",
     [](ReactionPackDefinition& definition, ReactionDefinition&) { definition.name = CBstr::Make(u"Taken"); },
     {CheckedPart::Name}},
    {"Compounds",
     [](ReactionPackDefinition& definition, ReactionDefinition&) { definition.compounds.pop_back(); },
     {CheckedPart::Compounds}},
    {"Phase",
     [](ReactionPackDefinition&, ReactionDefinition& second) { second.phase.Reset(); },
     {CheckedPart::Phase, 1}},
    {"Elements",
     [](ReactionPackDefinition&, ReactionDefinition& second) {
         second.stoichiometry = {-1.0, 1.0};
     },
     {CheckedPart::Stoichiometry, 1}},
    {"Mass",
     [](ReactionPackDefinition& definition, ReactionDefinition& second) {
         definition.compounds[0]->formula.Reset();
         second.stoichiometry = {-1.0, 1.0};
     },
     {CheckedPart::Stoichiometry, 1}},
    {"Rate",
     [](ReactionPackDefinition&, ReactionDefinition& second) { second.rateEquation = u"2*"; },
     {CheckedPart::Rate, 1}},
    {"EquilibriumConstant",
     [](ReactionPackDefinition&, ReactionDefinition& second) {
         second.type = ReactionType::Equilibrium;
         second.equilibriumConstantEquation = u"2*";
     },
     {CheckedPart::EquilibriumConstant, 1}},
    {"Heat",
     [](ReactionPackDefinition&, ReactionDefinition& second) { second.heatEquation = u"2*"; },
     {CheckedPart::Heat, 1}},
    {"HeatThatDepends",
     [](ReactionPackDefinition&, ReactionDefinition& second) { second.heatEquation = u"T"; },
     {CheckedPart::Heat, 1}},
};
void PrintTo(const SubjectCase& row, std::ostream* stream) {
    *stream << row.name;
}
class ValidationSubjects : public Validation, public testing::WithParamInterface<SubjectCase> {};

TEST_P(ValidationSubjects, AreToldWithTheReason) {
    store.templates.push_back(MakePackage({}));
    store.templates[0]->name = CBstr::Make(u"taken");
    ReactionDefinition& second = AddKinetic(*definition, u"R2", u"T");
    second.stoichiometry = {-2.0, 1.0};
    definition->name = CBstr::Make(u"Package");
    ui.answersLeft = 0;
    std::u16string errorText;
    std::optional<CheckSubject> subject = CheckSubject{CheckedPart::Heat, 7};
    const auto validate = [&] {
        return ValidateDefinition(*definition, &store, false, std::u16string(definition->name.View()), u"", 0,
                                  errorText, ui, subject);
    };
    EXPECT_TRUE(validate());
    EXPECT_EQ(subject, std::nullopt);
    GetParam().spoil(*definition, second);
    EXPECT_FALSE(validate());
    EXPECT_EQ(subject, GetParam().subject);
    EXPECT_NE(errorText, u"");
}
INSTANTIATE_TEST_SUITE_P(Table, ValidationSubjects, testing::ValuesIn(subjectCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace reka::test
