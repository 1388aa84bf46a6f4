// SPDX-License-Identifier: MIT
// The same figures in every build: numbers read from texts, folded constants, results of evaluation and stored bytes.
//
//   reka_figures FILE             writes the figures of this build
//   reka_figures --compare FILE   compares them with those that another build has written
//
// What is made of + - * / and SQRT, of digits and of bytes has to be equal bit for bit, the other functions within one
// unit in the last place. The arguments come from a generator of fixed numbers.

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "expression/parse/ParseExpression.h"
#include "expression/run/EvaluateExpression.h"
#include "persistence/WriteStoredDefinition.h"
#include "records/Definition.h"

namespace reka {
namespace {

constexpr int drawsOfEach = 2000;
constexpr std::size_t mostReported = 20;

/// One figure. Those that aren't exact may differ by one unit in the last place.
struct Figure {
    bool isExact;
    std::string name;
    std::uint64_t bits;
};

using Figures = std::vector<Figure>;

/// A generator by the constants of Knuth's MMIX.
class CDraws {
public:
    std::uint64_t Bits() {
        state = state * 6364136223846793005U + 1442695040888963407U;
        return state >> 11;  // 53 bits
    }
    std::size_t Below(std::size_t count) { return static_cast<std::size_t>(Bits() % count); }
    double Between(double low, double high) {
        return low + (high - low) * (static_cast<double>(Bits()) / 9007199254740992.0);
    }
    /// Any magnitude that leaves room for a product.
    double AnySize() {
        const auto exponent = static_cast<std::uint64_t>(1023 - 500) + Bits() % 1000;
        const double size = std::bit_cast<double>(exponent << 52 | (Bits() >> 1));
        return Bits() % 2 ? size : -size;
    }

private:
    std::uint64_t state = 20;
};

std::u16string Wide(const std::string& text) {
    return {text.begin(), text.end()};
}

/// A decimal number with as many digits as the draws give.
std::string DrawDecimal(CDraws& draws) {
    std::string text = std::to_string(draws.Bits());
    text.resize(1 + draws.Below(text.size()));
    text.insert(draws.Below(text.size()) + 1, ".");
    if (draws.Bits() % 2) text += "E" + std::to_string(static_cast<int>(draws.Bits() % 600) - 300);
    return text;
}

class CCollector {
public:
    CCollector() {
        auto compound = std::make_unique<CompoundDefinition>();
        compound->id = CBstr::Make(u"First");
        compound->name = CBstr::Make(u"First");
        definition.compounds.push_back(std::move(compound));
        definition.AllocateWorkArrays();
    }

    Figures Collect() {
        AddNumbers();
        AddFolded();
        for (const char* text : {"T+P", "T-P", "T*P", "T/P", "SQRT(ABS(T))", "T*P+T/P-T"}) AddEvaluated(text, true);
        AddFunctions();
        AddStoredBytes();
        return std::move(figures);
    }

private:
    void AddNumbers() {
        for (int i = 0; i < drawsOfEach; ++i) {
            const std::string text = DrawDecimal(draws);
            AddValue(true, text, Wide(text));
        }
    }

    void AddFolded() {
        for (int i = 0; i < drawsOfEach; ++i) {
            const std::string first = DrawDecimal(draws);
            const std::string second = DrawDecimal(draws);
            for (const char* operation : {"+", "-", "*", "/"}) {
                const std::string text = first + operation + second;
                AddValue(true, text, Wide(text));
            }
            AddValue(true, "SQRT(" + first + ")", Wide("SQRT(" + first + ")"));
            AddValue(false, "EXP(-" + first + "/1E3)", Wide("EXP(-" + first + "/1E3)"));
        }
    }

    /// The value of a text without variables, or the check sum of its error text.
    void AddValue(bool isExact, const std::string& name, const std::u16string& text) {
        std::u16string errorText;
        const ExpressionTree tree = ParseExpression(definition, text, errorText, nullptr);
        if (!tree || tree->kind != NodeKind::RealConstant) {
            AddBytes(name, errorText.data(), errorText.size() * sizeof(char16_t));
        } else {
            figures.push_back({isExact, name, std::bit_cast<std::uint64_t>(tree->value)});
        }
    }

    void AddEvaluated(const std::string& text, bool isExact) {
        std::u16string errorText;
        const ExpressionTree tree = ParseExpression(definition, Wide(text), errorText, nullptr);
        for (int i = 0; tree && i < drawsOfEach; ++i) {
            definition.temperature = draws.AnySize();
            definition.pressure = draws.AnySize();
            AddResult(text, isExact, *tree);
        }
    }

    void AddResult(const std::string& text, bool isExact, const ExpressionNode& tree) {
        double value = 0;
        std::u16string errorText;
        EvaluateExpression(tree, value, definition, errorText);
        figures.push_back({isExact, text, std::bit_cast<std::uint64_t>(value)});
    }

    void AddFunctions() {
        struct Range {
            const char* text;
            double low;
            double high;
        };
        constexpr Range ranges[] = {
            {"EXP(T)", -700, 700},  {"LOG(T)", 0, 1e5},     {"LOG10(T)", 0, 1e5},   {"SIN(T)", -1e4, 1e4},
            {"COS(T)", -1e4, 1e4},  {"TAN(T)", -1e4, 1e4},  {"ASIN(T)", -1, 1},     {"ACOS(T)", -1, 1},
            {"ATAN(T)", -1e3, 1e3}, {"SINH(T)", -700, 700}, {"COSH(T)", -700, 700}, {"TANH(T)", -20, 20},
            {"T^0.3", 0, 1e5},      {"1.7^T", -100, 100},   {"T^P", 0, 50},         {"EXP(-5000/T)", 100, 3000}};
        for (const Range& range : ranges) {
            std::u16string errorText;
            const ExpressionTree tree = ParseExpression(definition, Wide(range.text), errorText, nullptr);
            for (int i = 0; tree && i < drawsOfEach; ++i) {
                definition.temperature = draws.Between(range.low, range.high);
                definition.pressure = draws.Between(-20, 20);
                AddResult(range.text, false, *tree);
            }
        }
        // These round nothing.
        for (const char* text : {"FLOOR(T)", "CEIL(T)", "ROUND(T)", "MOD(T,P)", "MIN(T,P)", "MAX(T,P)"}) {
            AddEvaluated(text, true);
        }
    }

    void AddStoredBytes() {
        definition.name = CBstr::Make(u"Figures");
        definition.pcdFile = u"";  // not where this program lies
        for (int i = 0; i < 100; ++i) {
            auto reaction = std::make_unique<ReactionDefinition>(1);
            const std::string factor = DrawDecimal(draws);
            const std::u16string rate = Wide(factor + "*C(First)/T-" + DrawDecimal(draws));
            reaction->id = CBstr::Make(Wide("R" + std::to_string(i)));
            reaction->rateEquation = rate;
            std::u16string errorText;
            ExpressionTree tree = ParseExpression(definition, rate, errorText, nullptr);
            if (tree) reaction->rateExpression = std::make_unique<ExpressionRef>(std::move(tree));
            definition.reactions.push_back(std::move(reaction));
        }
        std::vector<std::uint8_t> block;
        std::u16string errorText;
        WriteStoredDefinition(definition, block, errorText);
        figures.push_back({true, "stored size", block.size()});
        for (std::size_t i = 0; i < block.size(); i += 64) {
            AddBytes("stored bytes from " + std::to_string(i), block.data() + i,
                     std::min<std::size_t>(64, block.size() - i));
        }
    }

    /// A check sum (FNV-1a, 64 bits).
    void AddBytes(const std::string& name, const void* bytes, std::size_t count) {
        std::uint64_t sum = 14695981039346656037U;
        const auto* next = static_cast<const unsigned char*>(bytes);
        for (std::size_t i = 0; i < count; ++i) sum = (sum ^ next[i]) * 1099511628211U;
        figures.push_back({true, name, sum});
    }

    ReactionPackDefinition definition{nullptr};
    CDraws draws;
    Figures figures;
};

/// How many doubles lie between two of them; far apart where one is not a number and the other is.
std::uint64_t DistanceOf(std::uint64_t left, std::uint64_t right) {
    const auto ordered = [](std::uint64_t bits) { return bits >> 63 ? ~bits : bits | std::uint64_t{1} << 63; };
    const std::uint64_t low = std::min(ordered(left), ordered(right));
    return std::max(ordered(left), ordered(right)) - low;
}

bool IsSame(const Figure& own, const Figure& other) {
    if (own.isExact != other.isExact || own.name != other.name) return false;
    return own.isExact ? own.bits == other.bits : DistanceOf(own.bits, other.bits) <= 1;
}

bool Write(const Figures& figures, const char* path) {
    std::ofstream file(path, std::ios::binary);
    for (const Figure& figure : figures) {
        char bits[17] = {};
        std::snprintf(bits, sizeof bits, "%08x%08x", static_cast<unsigned>(figure.bits >> 32),
                      static_cast<unsigned>(figure.bits));
        file << (figure.isExact ? "exact " : "close ") << bits << ' ' << figure.name << '\n';
    }
    return static_cast<bool>(file.flush());
}

Figures Read(const char* path) {
    std::ifstream file(path, std::ios::binary);
    Figures figures;
    for (std::string kind, bits, name; file >> kind >> bits && file.get() == ' ' && std::getline(file, name);) {
        figures.push_back({kind == "exact", name, std::stoull(bits, nullptr, 16)});
    }
    return figures;
}

int Compare(const Figures& own, const Figures& other) {
    if (other.empty()) {
        std::cout << "there is nothing to compare with: run the native tests first\n";
        return 1;
    }
    std::size_t different = own.size() == other.size() ? 0 : 1;
    std::size_t lastBits = 0;
    for (std::size_t i = 0; i < std::min(own.size(), other.size()); ++i) {
        if (IsSame(own[i], other[i])) {
            if (own[i].bits != other[i].bits) ++lastBits;
        } else if (++different <= mostReported) {
            std::cout << "different: " << own[i].name << '\n';
        }
    }
    std::cout << own.size() << " figures, " << different << " different, " << lastBits
              << " functions off by one unit in the last place\n";
    return different == 0 && !own.empty() ? 0 : 1;
}

}  // namespace
}  // namespace reka

int main(int argc, char** argv) {
    using namespace reka;
    if (argc == 2) return Write(CCollector().Collect(), argv[1]) ? 0 : 1;
    if (argc == 3 && std::strcmp(argv[1], "--compare") == 0) return Compare(CCollector().Collect(), Read(argv[2]));
    std::cerr << "usage: reka_figures [--compare] FILE\n";
    return 2;
}
