// SPDX-License-Identifier: MIT
// A package in use: what a simulator does with it, call by call, through its interfaces alone.

#pragma once

#include <string>
#include <vector>

#include "CReactionResults.h"
#include "Failure.h"
#include "material/CMaterial.h"
#include "packagetext/PropertyBag.h"

namespace rekasim {

struct Participant {
    std::u16string id;
    std::u16string casNumber;
    double charge = 0;
    double coefficient = 0;  // reactants negative
};

/// What the interfaces tell of a reaction.
struct Reaction {
    std::u16string id;
    std::u16string phase;
    bool isKinetic = false;
    bool isHeterogeneous = false;       // the rate counts per mass of catalyst
    std::u16string concentrationBasis;  // of an equilibrium constant
    std::vector<Participant> participants;
};

/// The names of the packages that the manager offers, in its order. False with the manager's words in `failure`.
bool ListPackages(std::vector<std::u16string>& names, Failure& failure);

enum class ThermoVersion : unsigned char { Version10, Version11 };

/// The operations go in the order of declaration. Each returns false when a call fails, with the package's own words in
/// `failure`. The destructor ends and releases the package.
class CPackageSession {
public:
    CPackageSession() = default;
    CPackageSession(const CPackageSession&) = delete;
    CPackageSession& operator=(const CPackageSession&) = delete;
    ~CPackageSession();

    /// Has the manager make the package of that name, and initialises it.
    bool Resolve(const std::u16string& name, Failure& failure);
    /// Has the manager make a new package, loads it from the bag and initialises it. `log` gets what it reports on the
    /// way.
    bool Load(packagetext::CPropertyBag& bag, packagetext::CErrorLog& log, Failure& failure);
    bool ReadIdentity(std::u16string& name, std::u16string& description, Failure& failure);
    /// Binds the material through the context of one thermo version; afterwards the package speaks of compounds by the
    /// material's identifiers.
    bool SetMaterial(CMaterial& material, ThermoVersion version, Failure& failure);
    bool SetReactionObject(CReactionResults& results, Failure& failure);
    bool ReadReactions(std::vector<Reaction>& reactions, Failure& failure);
    /// Has one property of the reactions calculated, which are all of `phase`, and reads the numbers back from the
    /// reaction object.
    bool Calculate(const char16_t* property, const std::u16string& phase,
                   const std::vector<std::u16string>& reactionIds, std::vector<double>& values, Failure& failure);
    bool Save(packagetext::CPropertyBag& bag, Failure& failure);

private:
    bool TakePackage(const reka::CComRef<IDispatch>& made, Failure& failure);
    bool Initialize(Failure& failure);
    bool ReadReaction(reka::ICapeReactionChemistry& chemistry, Reaction& reaction, Failure& failure);
    bool ReadParticipants(reka::ICapeReactionChemistry& chemistry, BSTR id, Reaction& reaction, Failure& failure);

    reka::CComRef<IPersistPropertyBag> package;
    CReactionResults* reactionResults = nullptr;  // held by the package while it is bound
    bool isLoaded = false;
};

}  // namespace rekasim
