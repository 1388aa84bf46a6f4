// SPDX-License-Identifier: MIT
// The checks are the editor's own, so that what this program finds is what the editor would say; but where the editor
// stops at the first fault, here each check runs and its fault is noted. Questions are answered yes, which is what lets
// the checks go on, and become warnings. Stored trees are compared as bytes with what their texts give, since a loaded
// package calculates with the tree, whatever the text beside it says.

#include "CheckPackages.h"

#include <memory>

#include "PackageLints.h"
#include "RateGrid.h"
#include "checking/DefinitionChecks.h"
#include "expression/parse/ParseExpression.h"
#include "packagetext/PrintableName.h"
#include "persistence/ReadStoredDefinition.h"
#include "persistence/StoredExpression.h"
#include "platform/SameText.h"
#include "platform/UserMessages.h"
#include "text/Utf8.h"

namespace rekatool {

namespace {

using packagetext::OnOneLine;
using Definitions = std::vector<std::unique_ptr<reka::ReactionPackDefinition>>;

Bytes FieldOf(const reka::ExpressionRef* expression) {
    Bytes bytes;
    reka::CByteWriter writer(bytes);
    reka::WriteStoredExpression(expression, writer);
    return bytes;
}

/// The checking of one package. It is the user of the reader and of the checks, whose questions it answers yes; all
/// that it is told becomes warnings.
class CPackageCheck : public reka::IUserMessages {
public:
    CPackageCheck(std::vector<Finding>& target, std::size_t place)
        : findings(target), package("package " + std::to_string(place + 1)), before(reka::ReplaceUserMessages(this)) {}
    ~CPackageCheck() override { reka::ReplaceUserMessages(before); }
    CPackageCheck(const CPackageCheck&) = delete;
    CPackageCheck& operator=(const CPackageCheck&) = delete;

    /// The definition, or null for a block that can't be read.
    std::unique_ptr<reka::ReactionPackDefinition> Read(const Bytes& block) {
        auto definition = std::make_unique<reka::ReactionPackDefinition>(nullptr);
        std::u16string errorText;
        const bool isRead = reka::ReadStoredDefinition(*definition, block, errorText);
        if (!definition->name.View().empty()) package = OnOneLine(definition->name.View());
        isNamed = true;
        for (const std::u16string& warning : boxes) Warn(warning);
        if (isRead) return definition;
        Fault(errorText);
        return nullptr;
    }

    void Check(reka::ReactionPackDefinition& definition, const Definitions& others) {
        std::u16string errorText;
        const bool isNameGood = reka::CheckName(definition, errorText) &&
                                reka::CheckNameIsFree(definition, {others, &definition}, errorText);
        if (!isNameGood) Fault(errorText);
        if (!reka::CheckCompounds(definition, errorText)) Fault(errorText);
        CheckCompoundUse(definition);
        CheckCompoundNames(definition);
        CheckCasNumbers(definition);
        definition.AllocateWorkArrays();
        const bool hasAllFormulas = reka::HasAllFormulas(definition);
        reka::CDefinitionFormulas formulas(definition);
        reka::CCompoundLookup compounds(definition);
        for (const auto& checked : definition.reactions) {
            reaction = OnOneLine(checked->id.View());
            isInReaction = true;
            CheckReaction(definition, compounds, *checked, hasAllFormulas ? &formulas : nullptr);
            isInReaction = false;
        }
    }

    reka::MessageAnswer Show(const reka::UserMessage& message) noexcept override {
        try {
            if (isNamed) {
                Warn(message.text);
            } else {
                boxes.push_back(message.text);
            }
        } catch (...) {
            return reka::MessageAnswer::None;
        }
        return reka::MessageAnswer::Ok;
    }

private:
    void Add(bool isFault, std::u16string_view text) {
        findings.push_back({package, isInReaction ? reaction : "", isFault, OnOneLine(text)});
    }
    void Fault(std::u16string_view text) { Add(true, text); }
    void Warn(std::u16string_view text) { Add(false, text); }

    void CheckReaction(reka::ReactionPackDefinition& definition, reka::CCompoundLookup& compounds,
                       reka::ReactionDefinition& checked, reka::CDefinitionFormulas* formulas) {
        std::u16string errorText;
        const bool isKinetic = checked.type == reka::ReactionType::Kinetic;
        auto& expression = isKinetic ? checked.rateExpression : checked.equilibriumConstantExpression;
        const Bytes storedExpression = FieldOf(expression.get());
        const Bytes storedHeat = FieldOf(checked.heatExpression.get());
        checked.DiscardExpressions();
        if (!reka::CheckPhase(checked, errorText)) Fault(errorText);
        if (formulas && !reka::CheckElementBalance(*formulas, checked, *this, errorText)) Fault(errorText);
        if (!reka::CheckMassBalance(definition, checked, errorText)) Fault(errorText);
        if (!reka::ParseTypeExpression(compounds, checked, errorText)) Fault(errorText);
        if (!reka::ParseHeat(compounds, checked, errorText)) Fault(errorText);
        reka::ConfirmHeatDependencies(checked, *this, errorText);
        CompareTrees(storedExpression, expression.get(),
                     isKinetic ? checked.rateEquation : checked.equilibriumConstantEquation,
                     isKinetic ? u"rate" : u"equilibrium constant");
        CompareTrees(storedHeat, checked.heatExpression.get(), checked.heatEquation, u"heat of reaction");
        CheckLongIntegers(checked);
        CheckValues(definition, checked);
        const std::u16string contradiction = CompareHeatWithConstant(definition, checked);
        if (!contradiction.empty()) Warn(contradiction);
    }

    /// A loaded package calculates with what is stored, whatever its text says. A text that doesn't parse is a fault
    /// already.
    void CompareTrees(const Bytes& stored, const reka::ExpressionRef* fresh, const std::u16string& text,
                      const std::u16string& what) {
        const Bytes none = FieldOf(nullptr);
        if ((!fresh && !text.empty()) || FieldOf(fresh) == stored) return;
        if (stored == none) {
            Warn(u"no tree is stored for the " + what + u", which can't be calculated until the package is edited");
        } else {
            Warn(u"the stored tree of the " + what + u" isn't what its text gives");
        }
    }

    void CheckValues(reka::ReactionPackDefinition& definition, const reka::ReactionDefinition& checked) {
        const bool isKinetic = checked.type == reka::ReactionType::Kinetic;
        if (isKinetic ? checked.rateExpression != nullptr : checked.equilibriumConstantExpression != nullptr) {
            for (const std::u16string& text : TryReaction(definition, checked)) Warn(text);
        } else if ((isKinetic ? checked.rateEquation : checked.equilibriumConstantEquation).empty()) {
            Warn(isKinetic ? u"there is no rate" : u"there is no equilibrium constant");
        }
    }

    void CheckCompoundUse(const reka::ReactionPackDefinition& definition) {
        if (definition.reactions.empty()) return;
        for (std::size_t i = 0; i < definition.compounds.size(); ++i) {
            bool takesPart = false;
            for (const auto& other : definition.reactions) takesPart = takesPart || other->stoichiometry[i] != 0;
            if (takesPart) continue;
            Warn(u"compound " + std::u16string(definition.compounds[i]->name.View()) + u" takes part in no reaction");
        }
    }

    /// A name is good if a molarity with it, as it stands or in quotes, is that of this compound.
    void CheckCompoundNames(const reka::ReactionPackDefinition& definition) {
        reka::CCompoundLookup compounds(definition);
        for (std::size_t i = 0; i < definition.compounds.size(); ++i) {
            const std::u16string name(definition.compounds[i]->name.View());
            const auto index = static_cast<std::int32_t>(i);
            if (IsAddressed(compounds, u"C(" + name + u")", index) ||
                IsAddressed(compounds, u"C(\"" + name + u"\")", index)) {
                continue;
            }
            Warn(u"compound " + name + u" can't be named in an expression");
        }
    }

    void CheckCasNumbers(const reka::ReactionPackDefinition& definition) {
        for (const auto& compound : definition.compounds) {
            const std::u16string_view number = compound->casNumber.View();
            const std::u16string text = LintCasNumber(number);
            if (text.empty()) continue;
            Warn(u"compound " + std::u16string(compound->name.View()) + u": " + std::u16string(number) + u" " + text);
        }
    }

    void CheckLongIntegers(const reka::ReactionDefinition& checked) {
        const std::pair<const std::u16string*, const char16_t*> texts[] = {
            {&checked.rateEquation, u"rate"},
            {&checked.equilibriumConstantEquation, u"equilibrium constant"},
            {&checked.heatEquation, u"heat of reaction"}};
        for (const auto& [text, what] : texts) {
            const std::u16string number = FindLongInteger(*text);
            if (number.empty()) continue;
            Warn(std::u16string(u"the ") + what + u" has the whole number " + number +
                 u": beyond 18 digits such numbers wrap around; write it with an exponent");
        }
    }

    static bool IsAddressed(reka::CCompoundLookup& compounds, const std::u16string& text, std::int32_t index) {
        std::u16string errorText;
        const reka::ExpressionTree tree = reka::ParseExpression(compounds, text, errorText, nullptr);
        return tree && tree->kind == reka::NodeKind::Molarity && tree->compoundIndex == index;
    }

    std::vector<Finding>& findings;
    std::string package;
    std::string reaction;
    bool isInReaction = false;
    bool isNamed = false;               // the package is, as far as it will be
    std::vector<std::u16string> boxes;  // shown before that
    reka::IUserMessages* before;
};

}  // namespace

std::string TextOf(const Finding& finding) {
    std::string text = finding.package + ": ";
    if (!finding.reaction.empty()) text += "reaction " + finding.reaction + ": ";
    return text + (finding.isFault ? "fault: " : "warning: ") + finding.text;
}

std::vector<Finding> CheckPackages(const PackageFile& file) {
    std::vector<Finding> findings;
    if (!file.rest.empty()) {
        findings.push_back(
            {"file", "", false,
             "bytes behind the last template, which nothing reads: " + std::to_string(file.rest.size())});
    }
    Definitions definitions;
    for (std::size_t i = 0; i < file.blocks.size(); ++i) {
        CPackageCheck check(findings, i);
        auto definition = check.Read(file.blocks[i]);
        if (!definition) continue;
        definitions.push_back(std::move(definition));
        check.Check(*definitions.back(), definitions);
    }
    return findings;
}

}  // namespace rekatool
