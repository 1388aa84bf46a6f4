// SPDX-License-Identifier: MIT
// The definition records: making, copying and destroying them. A copy is written out field by field, because what must
// not be copied is as important: the context belongs to the object that holds the definition, the working values to the
// calculation, and the row in the compound file to the record that was read from it.

#include "records/Definition.h"

#include <utility>

#include "platform/ModuleFile.h"

namespace reka {

namespace {

std::unique_ptr<CompoundDefinition> CopyCompound(const CompoundDefinition& source) {
    auto copy = std::make_unique<CompoundDefinition>();
    copy->id = CBstr::CopyOf(source.id.Get());
    copy->name = CBstr::CopyOf(source.name.Get());
    copy->casNumber = CBstr::CopyOf(source.casNumber.Get());
    copy->formula = CBstr::CopyOf(source.formula.Get());
    copy->molecularWeight = source.molecularWeight;
    copy->charge = source.charge;
    return copy;  // without databaseIndex: a copy no longer stands for a row of the compound file
}

std::unique_ptr<ExpressionRef> CopyExpression(const std::unique_ptr<ExpressionRef>& source) {
    return source ? source->Clone() : nullptr;
}

std::unique_ptr<ReactionDefinition> CopyReaction(const ReactionDefinition& source) {
    auto copy = std::make_unique<ReactionDefinition>(0);
    copy->id = CBstr::CopyOf(source.id.Get());
    copy->phase = CBstr::CopyOf(source.phase.Get());
    copy->equilibriumBasis = source.equilibriumBasis;
    copy->type = source.type;
    copy->rateBasis = source.rateBasis;
    copy->rateEquation = source.rateEquation;
    copy->equilibriumConstantEquation = source.equilibriumConstantEquation;
    copy->heatEquation = source.heatEquation;
    copy->stoichiometry = source.stoichiometry;
    copy->rateExpression = CopyExpression(source.rateExpression);
    copy->equilibriumConstantExpression = CopyExpression(source.equilibriumConstantExpression);
    copy->heatExpression = CopyExpression(source.heatExpression);
    return copy;
}

}  // namespace

void ReactionDefinition::DiscardExpressions() {
    rateExpression.reset();
    equilibriumConstantExpression.reset();
    heatExpression.reset();
}

ReactionPackDefinition::ReactionPackDefinition(IDispatch* context)
    : pcdFile(ComponentFolder() + u"data" + pathSeparator + u"Korvex1.pcd"), simulationContext(context) {}

void ReactionPackDefinition::Clear() {
    RenewWorkStamp();
    name.Reset();
    description.Reset();
    reactions.clear();
    compounds.clear();
}

void ReactionPackDefinition::CopyFrom(const ReactionPackDefinition& source) {
    if (&source == this) return;
    Clear();
    name = CBstr::CopyOf(source.name.Get());
    description = CBstr::CopyOf(source.description.Get());
    thermoVersion = source.thermoVersion;
    pcdFile = source.pcdFile;
    for (const auto& compound : source.compounds) compounds.push_back(CopyCompound(*compound));
    for (const auto& reaction : source.reactions) reactions.push_back(CopyReaction(*reaction));
}

std::u16string ComponentFolder() {
    const std::u16string path = ModuleFilePath();
    const std::size_t separator = path.find_last_of(u"/\\");
    return separator == std::u16string::npos ? std::u16string() : path.substr(0, separator + 1);
}

}  // namespace reka
