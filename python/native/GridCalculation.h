// SPDX-License-Identifier: MIT
// Properties of the reactions of a package at the points of a grid: what a package calculates, without a simulator in
// between.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "package/ReactionProperty.h"
#include "python/native/Packages.h"
#include "records/Definition.h"

namespace rekapython {

/// An array of doubles spread over a grid, lent by its owner; the steps are in bytes, and 0 where it doesn't vary.
struct GridInput {
    const char* first = nullptr;        // null for none; needs no alignment
    std::vector<std::ptrdiff_t> steps;  // for each axis of the grid
    std::ptrdiff_t compoundStep = 0;    // from one compound to the next, of what there is for each compound
};

/// The state at each point, in SI units. What is none isn't read.
struct GridState {
    std::vector<std::size_t> shape;  // of the grid; no axis for one point
    GridInput temperature;           // K
    GridInput pressure;              // Pa
    GridInput moleFraction;
    GridInput molarity;  // mol/m3
    GridInput activity;
    GridInput fugacity;  // Pa
    /// What isn't given of the last three follows from the first three: molarity x P/(R T), fugacity x P, activity
    /// x P/(1e5 Pa).
    bool isIdealGas = false;
};

/// The points of a grid; 1 without an axis, 0 where one has no points.
std::size_t CountPoints(const GridState& state);

/// A package in service for calculations, one at a time: a second one waits for the first.
class CGridPackage {
public:
    explicit CGridPackage(std::unique_ptr<reka::ReactionPackDefinition> loaded);

    const reka::ReactionPackDefinition& Definition() const { return *definition; }

    /// What `reactions`, indices of the definition, read for `property`: bits of `reka::dependency`. Each is asked for
    /// in `phase`, or in its own. Throws a PackageError with the component's words for the first that it would refuse.
    std::uint32_t Dependencies(const reka::ReactionProperty& property, const std::vector<std::size_t>& reactions,
                               const std::optional<std::u16string>& phase) const;

    /// Computes `property` of `reactions`, which `Dependencies` has let pass, at each point, reactions varying fastest,
    /// into `results`: the same bits as a package gives. Where there is no value, throws a PackageError with the
    /// component's words, or with `isTolerant` puts a NaN there. `pause` is called now and then; it may throw, and may
    /// calculate with this package.
    void Calculate(const reka::ReactionProperty& property, const std::vector<std::size_t>& reactions,
                   const GridState& state, bool isTolerant, double* results, const std::function<void()>& pause);

private:
    const std::unique_ptr<reka::ReactionPackDefinition> definition;
    std::mutex atWork;
};

}  // namespace rekapython
