// SPDX-License-Identifier: MIT
// The parsing of the two formulas that are most like those of real packages, beside muParser, which compiles a formula
// at its first evaluation; and of texts of all lengths, whose time must grow with the length and no faster.

#include "bench/Parse_bench.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Formulas.h"
#include "bench/MuFormula.h"
#include "expression/parse/ParseExpression.h"
#include "text/Utf8.h"

namespace reka::bench {

namespace {

constexpr std::size_t textSizes[] = {10'000, 100'000, 1'000'000, 10'000'000};

std::u16string Digits(std::size_t number) {
    std::u16string text;
    for (const char digit : std::to_string(number)) text.push_back(static_cast<char16_t>(digit));
    return text;
}

std::unique_ptr<ReactionPackDefinition> MakeCompounds(std::size_t count) {
    auto definition = std::make_unique<ReactionPackDefinition>(nullptr);
    for (std::size_t i = 0; i < count; ++i) {
        auto compound = std::make_unique<CompoundDefinition>();
        compound->name = CBstr::Make(u"Compound" + Digits(i));
        definition->compounds.push_back(std::move(compound));
    }
    return definition;
}

/// A family of texts, of any length.
struct TextFamily {
    const char* name;
    const char* description;
    std::size_t compoundCount;
    bool isWrong;
    bool sharesLookup;  // as texts of one definition are parsed; otherwise each text by itself
    std::u16string (*make)(std::size_t size);
};

std::u16string Repeat(std::size_t size, std::u16string text, const std::function<std::u16string(std::size_t)>& part) {
    for (std::size_t i = 0; text.size() < size; ++i) text += part(i);
    return text;
}

std::u16string MakeSum(std::size_t size) {
    constexpr const char16_t* terms[] = {u"+12.5*T", u"+X(Compound3)*0.25", u"-1.5e-3*P", u"+7*T^2"};
    return Repeat(size, u"T", [&](std::size_t i) { return terms[i % 4]; });
}

std::u16string MakeArgumentList(std::size_t size) {
    return Repeat(size, u"MAX(T", [](std::size_t i) { return u"," + Digits(i % 1000); }) + u")";
}

std::u16string MakeLongName(std::size_t size) {
    return u"X(\"" + std::u16string(size, u'n') + u"\")";
}

std::u16string MakeCompoundSum(std::size_t size) {
    return Repeat(size, u"T",
                  [](std::size_t i) { return u"+X(Compound" + Digits((size_t{i} * 7919) % 10'000) + u")"; });
}

std::u16string MakeErrors(std::size_t size) {
    return Repeat(size, u"T", [](std::size_t) { return u"+SQRT(1,2)"; });
}

std::u16string MakeSyntaxErrors(std::size_t size) {
    return Repeat(size, u"T", [](std::size_t) { return u"+(T T)+T*T*T"; });
}

constexpr TextFamily families[] = {
    {"sum", "a sum", 10, false, false, MakeSum},
    {"arguments", "a list of arguments", 10, true, false, MakeArgumentList},
    {"name", "one name", 10, true, false, MakeLongName},
    {"compounds", "compounds out of 10,000", 10'000, false, false, MakeCompoundSum},
    {"compounds-shared", "the same, one lookup for all texts", 10'000, false, true, MakeCompoundSum},
    {"errors", "calls with a wrong number of arguments", 10, true, false, MakeErrors},
    {"syntax", "syntax errors", 10, true, false, MakeSyntaxErrors},
};

struct ParsedText {
    std::unique_ptr<ReactionPackDefinition> definition;
    std::u16string text;
    std::u16string errorText;

    ExpressionTree Parse() { return ParseExpression(*definition, text, errorText, nullptr); }
    ExpressionTree Parse(CCompoundLookup& compounds) { return ParseExpression(compounds, text, errorText, nullptr); }
};

void RegisterFamily(const TextFamily& family) {
    for (const std::size_t size : textSizes) {
        const std::string name = std::string("parse/") + family.name + "/" + std::to_string(size);
        // Made when it is run, so that a run of other benchmarks doesn't wait for ten million characters.
        benchmark::RegisterBenchmark(name.c_str(), [&family, size](benchmark::State& state) {
            static std::map<std::pair<const TextFamily*, std::size_t>, std::unique_ptr<ParsedText>> texts;
            auto& parsed = texts[{&family, size}];
            if (!parsed) {
                parsed = std::make_unique<ParsedText>();
                parsed->definition = MakeCompounds(family.compoundCount);
                parsed->text = family.make(size);
                if ((parsed->Parse() == nullptr) != family.isWrong) state.SkipWithError("parses otherwise than meant");
            }
            if (family.sharesLookup) {
                CCompoundLookup compounds(*parsed->definition);
                for (auto _ : state) benchmark::DoNotOptimize(parsed->Parse(compounds));
            } else {
                for (auto _ : state) benchmark::DoNotOptimize(parsed->Parse());
            }
        });
    }
}

/// A formula of the evaluation's, in the forms that are compared.
void RegisterFormula(const std::string& name) {
    for (const Formula& formula : Formulas()) {
        if (name != formula.name) continue;
        const auto parsed = std::make_shared<ParsedText>();
        parsed->definition = MakeBenchDefinition();
        parsed->text = DoubleCompounds(formula.text);
        if (!parsed->Parse()) throw std::runtime_error(name + ": " + Utf8FromUtf16(parsed->errorText));
        const auto muParser = std::make_shared<CMuFormula>(formula.text, *parsed->definition);
        const std::string group = "parse/" + name;
        benchmark::RegisterBenchmark((group + "/tree").c_str(), [parsed](benchmark::State& state) {
            for (auto _ : state) benchmark::DoNotOptimize(parsed->Parse());
        });
        benchmark::RegisterBenchmark((group + "/program").c_str(), [parsed](benchmark::State& state) {
            for (auto _ : state) benchmark::DoNotOptimize(ExpressionRef(parsed->Parse()).dependencies);
        });
        benchmark::RegisterBenchmark((group + "/muparser").c_str(), [muParser](benchmark::State& state) {
            for (auto _ : state) muParser->Compile();
        });
    }
}

}  // namespace

void RegisterParse() {
    for (const char* name : {"e2", "e6"}) RegisterFormula(name);
    for (const TextFamily& family : families) RegisterFamily(family);
}

void PrintParse(const CTimes& times) {
    PrintHeading("Parsing");
    for (const std::string name : {"e2", "e6"}) {
        const double tree = times.Median("parse/" + name + "/tree");
        PrintFigure(name + ": tree made and destroyed", tree / 1000, "us", name == "e2" ? "at most 2" : "at most 3.5");
        PrintFigure(name + ": with its program", times.Median("parse/" + name + "/program") / 1000, "us");
        PrintFigure(name + ": muParser", times.Median("parse/" + name + "/muparser") / 1000, "us");
        PrintFigure(name + ": tree to muParser", tree / times.Median("parse/" + name + "/muparser"), "", "at most 0.1");
    }
    for (const TextFamily& family : families) {
        double least = 0;
        double most = 0;
        for (const std::size_t size : textSizes) {
            const double time = times.Median(std::string("parse/") + family.name + "/" + std::to_string(size)) /
                                static_cast<double>(size);
            const bool isSumOfAMegabyte = family.make == MakeSum && size == 1'000'000;
            PrintFigure(std::string(family.description) + ", " + std::to_string(size / 1000) + " kB", 1000 / time,
                        "MB/s", isSumOfAMegabyte ? "at least 30" : "");
            least = least == 0 ? time : std::min(least, time);
            most = std::max(most, time);
        }
        PrintFigure(std::string(family.description) + ", greatest to least time per byte", most / least, "",
                    "at most 1.3");
    }
}

}  // namespace reka::bench
