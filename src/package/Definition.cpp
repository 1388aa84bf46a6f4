// The definition records: making, copying and destroying them.

#include "package/Definition.h"

#include <atomic>
#include <utility>

#include "platform/ModuleFile.h"

namespace reka {

namespace {

std::atomic<std::uint64_t> lastWorkStamp = 0;

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
    : pcdFile(ComponentFolder() + u"data" + pathSeparator + u"Korvex1.pcd"),
      simulationContext(context),
      workStamp(++lastWorkStamp) {}

void ReactionPackDefinition::Clear() {
    workStamp = ++lastWorkStamp;
    name.Reset();
    description.Reset();
    reactions.clear();
    compounds.clear();
}

void ReactionPackDefinition::CopyFrom(const ReactionPackDefinition& source) {
    Clear();
    name = CBstr::CopyOf(source.name.Get());
    description = CBstr::CopyOf(source.description.Get());
    thermoVersion = source.thermoVersion;
    pcdFile = source.pcdFile;
    for (const auto& compound : source.compounds) compounds.push_back(CopyCompound(*compound));
    for (const auto& reaction : source.reactions) reactions.push_back(CopyReaction(*reaction));
}

void ReactionPackDefinition::AllocateWorkArrays() {
    ReleaseWorkArrays();
    const std::size_t size = compounds.size();
    workBlock = std::make_unique<double[]>(4 * size);
    molarity.values = workBlock.get();
    activity.values = molarity.values + size;
    fugacity.values = activity.values + size;
    moleFraction.values = fugacity.values + size;
    workArraySize = size;
}

void ReactionPackDefinition::ReleaseWorkArrays() {
    workStamp = ++lastWorkStamp;
    workArraySize = 0;
    for (CWorkArray* array : {&molarity, &activity, &fugacity, &moleFraction}) array->values = nullptr;
    workBlock.reset();
}

std::u16string ComponentFolder() {
    const std::u16string path = ModuleFilePath();
    const std::size_t separator = path.find_last_of(u"/\\");
    return separator == std::u16string::npos ? std::u16string() : path.substr(0, separator + 1);
}

}  // namespace reka
