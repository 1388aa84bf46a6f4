// SPDX-License-Identifier: MIT
// The bound is on the difference of two samples rather than on the slope: something that is kept once, such as a font
// of the system's, isn't a leak, and a leak passes any bound with enough operations.

#include "soak/Flatness.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace soak {

void CFlatness::Add(double operations, std::vector<double> values) {
    samples.push_back({operations, std::move(values)});
}

std::vector<std::string> CFlatness::Uncounted() const {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < quantities.size(); ++i) {
        const auto isMissing = [i](const Sample& sample) { return sample.values[i] < 0; };
        if (std::any_of(samples.begin(), samples.end(), isMissing)) names.push_back(quantities[i].name);
    }
    return names;
}

double CFlatness::SlopePerThousand(std::size_t quantity) const {
    double count = 0;
    double meanOperations = 0;
    double meanValue = 0;
    for (const Sample& sample : samples) {
        ++count;
        meanOperations += (sample.operations - meanOperations) / count;
        meanValue += (sample.values[quantity] - meanValue) / count;
    }
    double squares = 0;
    double products = 0;
    for (const Sample& sample : samples) {
        const double distance = sample.operations - meanOperations;
        squares += distance * distance;
        products += distance * (sample.values[quantity] - meanValue);
    }
    return squares == 0 ? 0 : 1000 * products / squares;
}

std::vector<std::string> CFlatness::Growths() const {
    if (samples.size() < 2) return {"there are too few samples"};
    std::vector<std::string> growths;
    for (std::size_t i = 0; i < quantities.size(); ++i) {
        const double growth = samples.back().values[i] - samples.front().values[i];
        if (growth <= quantities[i].mostGrowth) continue;
        std::ostringstream text;
        text << quantities[i].name << " grew by " << growth << ", more than " << quantities[i].mostGrowth;
        growths.push_back(text.str());
    }
    return growths;
}

}  // namespace soak
