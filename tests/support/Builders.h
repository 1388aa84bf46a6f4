// SPDX-License-Identifier: MIT
// Definitions and packages for tests, as short as what they are about.

#pragma once

#include <initializer_list>
#include <memory>
#include <string>

#include "package/CReactionPack.h"
#include "records/Definition.h"

namespace reka::test {

/// A package with compounds of these names, which are their identifiers too.
std::unique_ptr<ReactionPackDefinition> MakePackage(std::initializer_list<const char16_t*> compoundNames);

/// Adds a kinetic reaction in phase "Liquid" with the rate `rate`; an empty text makes no tree.
ReactionDefinition& AddKinetic(ReactionPackDefinition& definition, const char16_t* id, const char16_t* rate);
/// Adds an equilibrium reaction in phase "Liquid" with the equilibrium constant `constant`.
ReactionDefinition& AddEquilibrium(ReactionPackDefinition& definition, const char16_t* id, const char16_t* constant);
/// Gives the reaction a heat of reaction.
void SetHeat(ReactionPackDefinition& definition, ReactionDefinition& reaction, const char16_t* heat);

/// The tree of `text`; fails the test if it doesn't parse.
std::unique_ptr<ExpressionRef> Parse(const ReactionPackDefinition& definition, const std::u16string& text);

/// A package object that lives as long as it is held.
class CPackageHolder {
public:
    CPackageHolder();
    /// With a copy of `definition`.
    explicit CPackageHolder(const ReactionPackDefinition& definition);
    ~CPackageHolder();
    CPackageHolder(const CPackageHolder&) = delete;
    CPackageHolder& operator=(const CPackageHolder&) = delete;

    CReactionPack* operator->() const { return package; }
    CReactionPack& operator*() const { return *package; }
    IUnknown* Unknown() const { return static_cast<ICapeUtilities*>(package); }

private:
    CReactionPack* package;
};

}  // namespace reka::test
