// SPDX-License-Identifier: MIT
// Whether what a process holds stays the same over many operations: samples of it, their slope, and what grew.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace soak {

/// Something that is counted, and by how much it may be more at the end than behind the warm-up.
struct Quantity {
    std::string name;  // such as "heap bytes"
    double mostGrowth;
};

class CFlatness {
public:
    explicit CFlatness(std::vector<Quantity> counted) : quantities(std::move(counted)) {}

    /// A sample behind so many operations: a value for each quantity, in their order.
    void Add(double operations, std::vector<double> values);

    /// The names of the quantities that could not be counted each time, which a negative value tells.
    std::vector<std::string> Uncounted() const;
    /// How much a quantity grows in a thousand operations: the slope of the line of least squares through the samples.
    double SlopePerThousand(std::size_t quantity) const;
    /// A sentence for each quantity that grew beyond its bound from the first sample to the last; one, too, if there
    /// are fewer than two samples.
    std::vector<std::string> Growths() const;

private:
    struct Sample {
        double operations;
        std::vector<double> values;
    };
    std::vector<Quantity> quantities;
    std::vector<Sample> samples;
};

}  // namespace soak
