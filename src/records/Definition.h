// SPDX-License-Identifier: MIT
// The records that a reaction package is made of. A definition is also what its expressions are parsed against and
// evaluated with: it lists the compounds, and the values that expressions read from the material are kept in it.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "expression/tree/ExpressionRef.h"
#include "expression/tree/NamedCompounds.h"
#include "expression/tree/WorkingValues.h"
#include "platform/Holders.h"

namespace reka {

// The words for each enum, by value, are what property bags and documents hold; those of the equilibrium bases are
// reported to the simulator, too.

enum class ReactionType : std::int32_t { Equilibrium = 0, Kinetic = 1 };  // stored
constexpr const char16_t* reactionTypeWords[] = {u"Equilibrium", u"Kinetic"};

enum class RateBasis : std::int32_t { Homogeneous = 0, Heterogeneous = 1 };  // stored
constexpr const char16_t* rateBasisWords[] = {u"Homogeneous", u"Heterogeneous"};

enum class ThermoVersion : std::int32_t { Version10 = 0, Version11 = 1 };  // stored
constexpr const char16_t* thermoVersionWords[] = {u"1.0", u"1.1"};

enum class EquilibriumBasis : std::int32_t {  // stored
    Molarity = 0,
    Concentration = 1,
    MoleFraction = 2,
    MassFraction = 3,
    Fugacity = 4,
    Activity = 5,
};
constexpr const char16_t* equilibriumBasisWords[] = {u"Molarity",     u"Concentration", u"MoleFraction",
                                                     u"MassFraction", u"Fugacity",      u"Activity"};
constexpr std::int32_t equilibriumBasisCount = 6;

/// The word for a value, with any other than 1 of the enums that have two values counting as 0.
template <class Enum>
constexpr const char16_t* WordOf(Enum value, const char16_t* const (&words)[2]) {
    return words[value == Enum{1} ? 1 : 0];
}

/// One compound of a package.
struct CompoundDefinition {
    CBstr name;                       // as shown to the user, used by expressions and by the binding to a material
    CBstr id;                         // replaced by the material's own identifier when a material is bound
    CBstr casNumber;                  // CAS registry number
    CBstr formula;                    // structure formula in canonical form
    double molecularWeight = 0.0;     // g/mol
    double charge = 0.0;              // elementary charges
    std::int32_t databaseIndex = -1;  // position in the compound file that it was taken from, -1 for none; not copied
};

/// One reaction of a package. The texts are the source; a tree exists only where its text isn't empty and was parsed.
struct ReactionDefinition {
    /// A kinetic, homogeneous reaction with as many zero coefficients as there are compounds.
    explicit ReactionDefinition(std::size_t compoundCount) : stoichiometry(compoundCount, 0.0) {}

    /// The coefficient of a compound, as it lies there: a signalling NaN doesn't survive being a result in 32-bit code.
    /// A compound that the list has no entry for takes no part, as with 0.
    const double& CoefficientOf(std::size_t compound) const {
        static constexpr double noPart = 0.0;
        return compound < stoichiometry.size() ? stoichiometry[compound] : noPart;
    }

    /// Destroys the three parsed expressions; the texts stay.
    void DiscardExpressions();

    CBstr id;     // the only name of a reaction
    CBstr phase;  // the phase in which it runs, free text such as "Liquid" or "Vapor"
    EquilibriumBasis equilibriumBasis = EquilibriumBasis::Molarity;  // a label for the simulator: nothing is converted
    ReactionType type = ReactionType::Kinetic;
    RateBasis rateBasis = RateBasis::Homogeneous;  // rate in mol/s/m3, or in mol/s/kg catalyst when heterogeneous
    std::u16string rateEquation;                   // rate expression, used by a kinetic reaction
    std::u16string equilibriumConstantEquation;    // used by an equilibrium reaction, in the unit of its basis
    std::u16string heatEquation;                   // heat of reaction, J/mol
    std::vector<double> stoichiometry;             // per compound: reactants negative, products positive, 0 for no part
    std::unique_ptr<ExpressionRef> rateExpression;
    std::unique_ptr<ExpressionRef> equilibriumConstantExpression;
    std::unique_ptr<ExpressionRef> heatExpression;
};

/// A reaction package: its compounds, its reactions, and the working values of a calculation. One owner at a time,
/// which serves one calculation at a time.
struct ReactionPackDefinition final : WorkingValues, INamedCompounds {
    /// An empty package with the default path of the compound file. Takes a count on `context`, which may be null.
    explicit ReactionPackDefinition(IDispatch* context);
    ReactionPackDefinition(const ReactionPackDefinition&) = delete;
    ReactionPackDefinition& operator=(const ReactionPackDefinition&) = delete;
    ~ReactionPackDefinition() = default;

    /// Empties name, description, reactions and compounds. `pcdFile`, `thermoVersion`, the context and the working
    /// values stay.
    void Clear();

    /// Makes this record an independent deep copy of `source`. `databaseIndex` becomes -1 in every compound; the
    /// context and the working values are not copied. A record that is copied onto itself stays as it is.
    void CopyFrom(const ReactionPackDefinition& source);

    /// Makes the four working arrays afresh, one element per compound, all zero: a stored mask may hide what its tree
    /// reads, and then nobody fills it. Every owner that takes a new or copied definition into service calls it. While
    /// its stamp stays, the reactions of a definition in service stay as well, which an index of them counts on.
    void AllocateWorkArrays() { AllocateArrays(compounds.size()); }

    std::size_t CompoundCount() const override { return compounds.size(); }
    BSTR CompoundName(std::size_t index) const override { return compounds[index]->name.Get(); }
    double MolecularWeight(std::size_t index) const override { return compounds[index]->molecularWeight; }

    CBstr name;  // the key of a template, and the name of the package object
    CBstr description;
    std::vector<std::unique_ptr<ReactionDefinition>> reactions;  // in the user's order, which the simulator sees
    std::vector<std::unique_ptr<CompoundDefinition>> compounds;  // in the user's order
    std::u16string pcdFile;                                      // full path of the pure compound data file
    ThermoVersion thermoVersion = ThermoVersion::Version10;
    CComRef<IDispatch> simulationContext;
};

/// The folder of the loaded module file, with the separator at its end. Empty if the system doesn't tell.
std::u16string ComponentFolder();

}  // namespace reka
