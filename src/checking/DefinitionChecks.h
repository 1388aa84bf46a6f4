// SPDX-License-Identifier: MIT
// The single checks of a definition. `RunDefinitionChecks` runs them in their order up to the first that fails; a
// program that reports all faults of a package runs each. All may throw std::bad_alloc, and all but the parsing ones
// leave what they check as it is.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "checking/RunDefinitionChecks.h"
#include "expression/parse/CompoundLookup.h"
#include "formula/StructureFormula.h"
#include "platform/UserMessages.h"
#include "records/Definition.h"

namespace reka {

/// True if the package has a name; otherwise the reason is in `errorText`, as in all that follow.
bool CheckName(const ReactionPackDefinition& definition, std::u16string& errorText);

/// True if the name of the package is none of those that are taken.
bool CheckNameIsFree(const ReactionPackDefinition& definition, const TakenNames& taken, std::u16string& errorText);

/// True for two compounds or more.
bool CheckCompounds(const ReactionPackDefinition& definition, std::u16string& errorText);

bool CheckPhase(const ReactionDefinition& reaction, std::u16string& errorText);

/// Whether every compound has a formula. One without turns the element balance of all reactions off.
bool HasAllFormulas(const ReactionPackDefinition& definition);

/// The formulas of a definition, each read once for all reactions. The definition stays as it is meanwhile.
class CDefinitionFormulas {
public:
    explicit CDefinitionFormulas(const ReactionPackDefinition& checked)
        : definition(checked), formulas(checked.compounds.size()) {}

    const ReactionPackDefinition& Definition() const { return definition; }
    /// The parts of one compound's formula; null for one that can't be read. May throw std::bad_alloc.
    const std::vector<FormulaPart>* PartsOf(std::size_t compound);

private:
    struct Formula {
        bool isKnown = false;
        bool isRead = false;
        std::vector<FormulaPart> parts;
    };

    const ReactionPackDefinition& definition;
    std::vector<Formula> formulas;
};

/// True if each element is balanced to 0.001 atoms per reaction as written. A formula that can't be read is told as a
/// warning, and the reaction then goes without this check. Charges don't take part. `formulas` are those of the
/// reaction's definition.
bool CheckElementBalance(CDefinitionFormulas& formulas, const ReactionDefinition& reaction, IUserMessages& ui,
                         std::u16string& errorText);

/// True if a compound takes part and the molecular weights are balanced to 0.05 g/mol per reaction as written.
bool CheckMassBalance(const ReactionPackDefinition& definition, const ReactionDefinition& reaction,
                      std::u16string& errorText);

/// Parses the text that belongs to the type of the reaction, and makes its tree. True without a text as well, which
/// gives no tree; the text of the other type gets none in any case. `compounds` is that of the reaction's definition,
/// one for all its reactions.
bool ParseTypeExpression(CCompoundLookup& compounds, ReactionDefinition& reaction, std::u16string& errorText);

/// The same for the heat of reaction.
bool ParseHeat(CCompoundLookup& compounds, ReactionDefinition& reaction, std::u16string& errorText);

/// Has the user confirm each quantity of the material that the heat of reaction depends on. A fugacity goes without a
/// question. False for the first that isn't confirmed.
bool ConfirmHeatDependencies(const ReactionDefinition& reaction, IUserMessages& ui, std::u16string& errorText);

}  // namespace reka
