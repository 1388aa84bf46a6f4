// SPDX-License-Identifier: MIT
// A grid is walked point by point, its last axis fastest. At each point the working values of the definition are set,
// as far as the expressions read them and they have changed, and the programs of the expressions run on them: no call
// goes out, and nothing is allocated.

#include "python/native/GridCalculation.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include "expression/run/EvaluateExpression.h"
#include "platform/HostArithmetic.h"
#include "text/Utf8.h"

namespace rekapython {

namespace {

constexpr double molarGasConstant = 8.314462618;  // J/(mol K), CODATA 2018, the digits that rekasim calculates with
constexpr double standardPressure = 1e5;          // Pa

double At(const char* place) {
    double value = 0;
    std::memcpy(&value, place, sizeof value);
    return value;
}

/// Walks the inputs of a grid from point to point.
class CWalk {
public:
    explicit CWalk(const GridState& gridState)
        : state(gridState),
          inputs{&state.temperature, &state.pressure, &state.moleFraction,
                 &state.molarity,    &state.activity, &state.fugacity},
          indices(state.shape.size()) {
        for (std::size_t i = 0; i < inputCount; ++i) places[i] = inputs[i]->first;
    }

    /// Goes to the next point; after the last one, to the first.
    void Advance() {
        for (std::size_t axis = state.shape.size(); axis-- > 0;) {
            if (++indices[axis] < state.shape[axis]) {
                Move(axis, 1);
                return;
            }
            indices[axis] = 0;
            Move(axis, 1 - static_cast<std::ptrdiff_t>(state.shape[axis]));
        }
    }

    /// Forgets what the working values are: others may have set them.
    void Forget() { std::fill(std::begin(taken), std::end(taken), nullptr); }

    /// Sets the working values that are in `wanted`, bits of `reka::dependency`.
    void Apply(std::uint32_t wanted, reka::ReactionPackDefinition& values) {
        using namespace reka::dependency;
        bool isChanged = Take(temperatureInput);
        isChanged = Take(pressureInput) || isChanged;
        isChanged = Take(fractionInput) || isChanged;
        if (places[temperatureInput]) values.temperature = At(places[temperatureInput]);
        if (places[pressureInput]) values.pressure = At(places[pressureInput]);
        if (isChanged && places[fractionInput]) Copy(fractionInput, values.moleFraction.Get(), values.workArraySize);
        if (wanted & molarity) {
            const double density = state.isIdealGas ? values.pressure / (molarGasConstant * values.temperature) : 0;
            Fill(molarityInput, isChanged, density, values.molarity.Get(), values);
        }
        if (wanted & activity) {
            Fill(activityInput, isChanged, values.pressure / standardPressure, values.activity.Get(), values);
        }
        if (wanted & fugacity) Fill(fugacityInput, isChanged, values.pressure, values.fugacity.Get(), values);
    }

private:
    enum Input : unsigned char {
        temperatureInput,
        pressureInput,
        fractionInput,
        molarityInput,
        activityInput,
        fugacityInput,
        inputCount
    };

    void Move(std::size_t axis, std::ptrdiff_t by) {
        for (std::size_t i = 0; i < inputCount; ++i) {
            if (places[i]) places[i] += by * inputs[i]->steps[axis];
        }
    }

    /// Whether the values of `input` lie elsewhere than at the point before.
    bool Take(Input input) { return std::exchange(taken[input], places[input]) != places[input]; }

    void Copy(Input input, double* target, std::size_t count) const {
        const char* place = places[input];
        for (std::size_t i = 0; i < count; ++i, place += inputs[input]->compoundStep) target[i] = At(place);
    }

    /// What is given, or else the mole fractions times `factor`.
    void Fill(Input input, bool isChanged, double factor, double* target, const reka::WorkingValues& values) {
        if (places[input]) {
            if (Take(input)) Copy(input, target, values.workArraySize);
        } else if (isChanged) {
            for (std::size_t i = 0; i < values.workArraySize; ++i) target[i] = values.moleFraction[i] * factor;
        }
    }

    const GridState& state;
    const GridInput* const inputs[inputCount];
    const char* places[inputCount];      // of the values at the present point
    const char* taken[inputCount] = {};  // of those that the working values have
    std::vector<std::size_t> indices;    // of the point
};

}  // namespace

std::size_t CountPoints(const GridState& state) {
    std::size_t count = 1;
    for (const std::size_t size : state.shape) count *= size;
    return count;
}

CGridPackage::CGridPackage(std::unique_ptr<reka::ReactionPackDefinition> loaded) : definition(std::move(loaded)) {
    definition->AllocateWorkArrays();
}

std::uint32_t CGridPackage::Dependencies(const reka::ReactionProperty& property,
                                         const std::vector<std::size_t>& reactions,
                                         const std::optional<std::u16string>& phase) const {
    const reka::CBstr asked = reka::CBstr::Make(phase.value_or(u""));
    std::uint32_t dependencies = 0;
    for (const std::size_t index : reactions) {
        const reka::ReactionDefinition& reaction = *definition->reactions[index];
        const BSTR wanted = phase ? asked.Get() : reaction.phase.Get();
        if (!reka::CanBeCalculated(property, reaction, wanted)) {
            throw PackageError(reka::Utf8FromUtf16(reka::RefusalOf(property, reaction, wanted).description));
        }
        dependencies |= (reaction.*property.expression)->dependencies;
    }
    return dependencies;
}

void CGridPackage::Calculate(const reka::ReactionProperty& property, const std::vector<std::size_t>& reactions,
                             const GridState& state, bool isTolerant, double* results,
                             const std::function<void()>& pause) {
    constexpr std::size_t pointsBetweenPauses = 1 << 16;
    if (reactions.empty()) return;
    std::unique_lock guard(atWork);
    const std::uint32_t wanted = Dependencies(property, reactions, {});
    const std::size_t count = CountPoints(state);
    CWalk walk(state);
    std::u16string errorText;
    for (std::size_t point = 0; point < count;) {
        const reka::COwnArithmetic arithmetic;
        const std::size_t end = std::min(count, point + pointsBetweenPauses);
        for (; point < end; ++point, walk.Advance()) {
            walk.Apply(wanted, *definition);
            for (const std::size_t index : reactions) {
                const reka::ReactionDefinition& reaction = *definition->reactions[index];
                errorText.clear();
                if (!reka::EvaluateExpression(*(reaction.*property.expression), *results++, *definition, errorText) &&
                    !isTolerant) {
                    const reka::CBstr name = reka::CBstr::Make(property.name);
                    throw PackageError(
                        reka::Utf8FromUtf16(reka::TextOfFailedCalculation(name.Get(), reaction.id.Get(), errorText)));
                }
            }
        }
        // Who pauses may calculate with this package.
        guard.unlock();
        arithmetic.Outside(pause);
        guard.lock();
        walk.Forget();
    }
}

}  // namespace rekapython
