// SPDX-License-Identifier: MIT
// The evaluation of one formula: by the component, by the C++ compiler, by muParser. Each evaluation has another
// temperature and pressure. In the form "throughput" evaluations don't wait for each other; in the form "latency" the
// temperature takes in the result before it.

#include "bench/Evaluation_bench.h"

#include <cmath>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/AllocationCount.h"
#include "bench/Formulas.h"
#include "bench/MuFormula.h"
#include "bench/ShippedFormulas.h"
#include "bench/laws/Law.h"
#include "expression/parse/ParseExpression.h"
#include "expression/run/EvaluateExpression.h"
#include "text/Utf8.h"

namespace reka::bench {

namespace {

/// What one formula is evaluated with.
struct Sides {
    Sides(std::unique_ptr<ReactionPackDefinition> usedDefinition, std::u16string_view text, NativeFormula nativeForm)
        : definition(std::move(usedDefinition)), native(nativeForm), muParser(text, *definition) {
        std::u16string parseErrors;
        ExpressionTree tree = ParseExpression(*definition, text, parseErrors, nullptr);
        if (!tree) throw std::runtime_error(Utf8FromUtf16(text) + ": " + Utf8FromUtf16(parseErrors));
        expression = std::make_unique<ExpressionRef>(std::move(tree));
    }

    void SetState(std::size_t n, double before) {
        definition->temperature = TemperatureAt(n) + before * 1e-300;
        definition->pressure = PressureAt(n) + before * 1e-300;
    }
    double Reka() {
        double value = 0.0;
        EvaluateExpression(*expression, value, *definition, errorText);
        return value;
    }
    double Native() {
        double value = 0.0;
        native(value, *definition, errorText);
        return value;
    }
    double MuParser() { return muParser.Evaluate(); }

    std::unique_ptr<ReactionPackDefinition> definition;
    std::unique_ptr<ExpressionRef> expression;
    volatile NativeFormula native;
    CMuFormula muParser;
    std::u16string errorText;
};

template <double (Sides::*evaluate)()>
void MeasureThroughput(benchmark::State& state, Sides& sides) {
    std::size_t n = 0;
    for (auto _ : state) {
        sides.SetState(n++, 0.0);
        benchmark::DoNotOptimize((sides.*evaluate)());
    }
}

template <double (Sides::*evaluate)()>
void MeasureLatency(benchmark::State& state, Sides& sides) {
    std::size_t n = 0;
    double value = 0.0;
    for (auto _ : state) {
        sides.SetState(n++, value);
        value = (sides.*evaluate)();
    }
    benchmark::DoNotOptimize(value);
}

template <double (Sides::*evaluate)()>
void Register(const std::string& formula, const char* side, const std::shared_ptr<Sides>& sides) {
    benchmark::RegisterBenchmark((formula + "/throughput/" + side).c_str(),
                                 [sides](benchmark::State& state) { MeasureThroughput<evaluate>(state, *sides); });
    benchmark::RegisterBenchmark((formula + "/latency/" + side).c_str(),
                                 [sides](benchmark::State& state) { MeasureLatency<evaluate>(state, *sides); });
}

/// An exponent that is the small difference of great numbers loses some digits, on each side others.
bool IsNear(double a, double b) {
    return std::abs(a - b) <= 1e-10 * std::abs(b);
}

bool CheckFormula(const char* name, Sides& sides) {
    for (std::size_t n = 0; n < 256; ++n) {
        sides.SetState(n, 0.0);
        const std::size_t before = AllocationCount();
        const double own = sides.Reka();
        if (AllocationCount() != before) {
            std::fprintf(stderr, "%s: the evaluation has allocated memory\n", name);
            return false;
        }
        const double native = sides.Native();
        const double muParser = sides.MuParser();
        if (IsNear(own, native) && IsNear(muParser, native)) continue;
        std::fprintf(stderr, "%s differs: REKA %.17g, C++ %.17g, muParser %.17g\n", name, own, native, muParser);
        return false;
    }
    return true;
}

}  // namespace

bool RegisterEvaluation() {
    bool isAllWell = true;
    const auto add = [&](const std::string& name, std::unique_ptr<ReactionPackDefinition> definition,
                         std::u16string_view text, NativeFormula native) {
        const auto sides = std::make_shared<Sides>(std::move(definition), text, native);
        isAllWell = CheckFormula(name.c_str(), *sides) && isAllWell;
        Register<&Sides::Reka>(name, "reka", sides);
        Register<&Sides::Native>(name, "native", sides);
        Register<&Sides::MuParser>(name, "muparser", sides);
    };
    for (const Formula& formula : Formulas()) {
        add(std::string("known:") + formula.name, MakeBenchDefinition(), DoubleCompounds(formula.text), formula.native);
    }
    const std::vector<std::u16string> compoundNames = {u"aa", u"bb", u"cc", u"dd", u"ee", u"ff"};
    for (const Law& law : FirstLaws()) {
        add(std::string("first:") + law.name, MakeBenchDefinition(compoundNames), law.text, law.native);
    }
    for (const Law& law : SecondLaws()) {
        add(std::string("second:") + law.name, MakeBenchDefinition(compoundNames), law.text, law.native);
    }
    for (const ShippedFormula& formula : ShippedFormulas()) {
        add("shipped:" + formula.name, MakeBenchDefinition(formula.compoundNames), formula.text, formula.native);
    }
    return isAllWell;
}

}  // namespace reka::bench
