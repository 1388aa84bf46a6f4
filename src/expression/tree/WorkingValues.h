// SPDX-License-Identifier: MIT
// What an evaluation reads: the state of the material, as the expressions of one definition see it.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace reka {

/// The working values of one quantity, an element for each compound: a part of the one block that `WorkingValues`
/// allocates. Null without that.
class CWorkArray {
public:
    double* Get() const { return values; }
    double& operator[](std::size_t i) const { return values[i]; }
    explicit operator bool() const { return values != nullptr; }
    bool operator==(std::nullptr_t) const { return values == nullptr; }

private:
    friend struct WorkingValues;
    double* values = nullptr;
};

/// The environment of an evaluation. Fresh only where the expressions of the property at hand read it. For one
/// calculation at a time.
struct WorkingValues {
    WorkingValues();
    WorkingValues(const WorkingValues&) = delete;
    WorkingValues& operator=(const WorkingValues&) = delete;

    double pressure = 0.0;     // Pa
    double temperature = 0.0;  // K
    CWorkArray molarity;       // mol/m3
    CWorkArray activity;
    CWorkArray fugacity;  // Pa
    CWorkArray moleFraction;
    std::size_t workArraySize = 0;  // elements of each working array

    void ReleaseWorkArrays();

    /// Above 0, and another one for every object and whenever its arrays are made or released, or the definition that
    /// they belong to is emptied: while it stays, so do the places of all values.
    std::uint64_t WorkStamp() const { return workStamp; }

protected:
    ~WorkingValues() = default;

    /// Makes the four arrays afresh, `size` elements each, all zero. May throw std::bad_alloc, which leaves none.
    void AllocateArrays(std::size_t size);
    /// Takes another stamp, for who has changed what an index of it counts on.
    void RenewWorkStamp();

private:
    std::unique_ptr<double[]> workBlock;
    std::uint64_t workStamp;
};

}  // namespace reka
