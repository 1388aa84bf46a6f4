// SPDX-License-Identifier: MIT
// The shortest definitions that are complete: a test says what it is about, and all else has one default here. Texts
// are parsed at once, and one that doesn't parse fails the test that wrote it.

#include "support/Builders.h"

#include <gtest/gtest.h>

#include "capeopen/ComObject.h"
#include "expression/parse/ParseExpression.h"
#include "text/Utf8.h"

namespace reka::test {

namespace {

ReactionDefinition& AddReaction(ReactionPackDefinition& definition, const char16_t* id) {
    definition.reactions.push_back(std::make_unique<ReactionDefinition>(definition.compounds.size()));
    ReactionDefinition& reaction = *definition.reactions.back();
    reaction.id = CBstr::Make(id);
    reaction.phase = CBstr::Make(u"Liquid");
    return reaction;
}

}  // namespace

std::unique_ptr<ReactionPackDefinition> MakePackage(std::initializer_list<const char16_t*> compoundNames) {
    auto definition = std::make_unique<ReactionPackDefinition>(nullptr);
    definition->name = CBstr::Make(u"Test package");
    for (const char16_t* name : compoundNames) {
        auto compound = std::make_unique<CompoundDefinition>();
        compound->name = CBstr::Make(name);
        compound->id = CBstr::Make(name);
        definition->compounds.push_back(std::move(compound));
    }
    definition->AllocateWorkArrays();
    return definition;
}

std::unique_ptr<ExpressionRef> Parse(const ReactionPackDefinition& definition, const std::u16string& text) {
    std::u16string errorText;
    ExpressionTree tree = ParseExpression(definition, text, errorText, nullptr);
    EXPECT_NE(tree, nullptr) << Utf8FromUtf16(text) << ": " << Utf8FromUtf16(errorText);
    return tree ? std::make_unique<ExpressionRef>(std::move(tree)) : nullptr;
}

ReactionDefinition& AddKinetic(ReactionPackDefinition& definition, const char16_t* id, const char16_t* rate) {
    ReactionDefinition& reaction = AddReaction(definition, id);
    reaction.rateEquation = rate;
    if (!reaction.rateEquation.empty()) reaction.rateExpression = Parse(definition, rate);
    return reaction;
}

ReactionDefinition& AddEquilibrium(ReactionPackDefinition& definition, const char16_t* id, const char16_t* constant) {
    ReactionDefinition& reaction = AddReaction(definition, id);
    reaction.type = ReactionType::Equilibrium;
    reaction.equilibriumConstantEquation = constant;
    if (!reaction.equilibriumConstantEquation.empty()) {
        reaction.equilibriumConstantExpression = Parse(definition, constant);
    }
    return reaction;
}

void SetHeat(ReactionPackDefinition& definition, ReactionDefinition& reaction, const char16_t* heat) {
    reaction.heatEquation = heat;
    reaction.heatExpression = Parse(definition, heat);
}

CPackageHolder::CPackageHolder() : package(new CComObject<CReactionPack>()) {
    Unknown()->AddRef();
}

CPackageHolder::CPackageHolder(const ReactionPackDefinition& definition) : CPackageHolder() {
    package->AssignDefinition(&definition);
}

CPackageHolder::~CPackageHolder() {
    Unknown()->Release();
}

}  // namespace reka::test
