// SPDX-License-Identifier: MIT
// The files that ship beside the module: templates that the editor would accept, and compounds that make sense.

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <set>

#include "DocumentFixture.h"
#include "checking/DefinitionChecks.h"
#include "compounds/LoadPcdFile.h"
#include "expression/parse/ParseExpression.h"
#include "formula/FormulaNormalForm.h"
#include "formula/StructureFormula.h"
#include "manager/ValidateDefinition.h"
#include "persistence/ReadStoredDefinition.h"
#include "persistence/StoredExpression.h"
#include "persistence/WriteStoredDefinition.h"
#include "support/TestFiles.h"
#include "text/Utf8.h"

namespace rekasim {

namespace {

std::string ShippedPath(const std::string& name) {
    return reka::test::TestFile(REKA_SHIPPED_DATA) + "/" + name;
}

std::vector<std::uint8_t> ReadShipped(const std::string& name) {
    std::ifstream file(ShippedPath(name), std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::uint32_t WordAt(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
    std::uint32_t word = 0;
    for (std::size_t i = 4; i-- > 0;) word = word << 8 | bytes.at(offset + i);
    return word;
}

class CStrictUi : public reka::IUserMessages {
public:
    reka::MessageAnswer Show(const reka::UserMessage& message) noexcept override {
        const std::string text = reka::Utf8FromUtf16(message.text);
        const bool isQuestion = (message.style & reka::messagestyle::buttons) == reka::messagestyle::okCancel;
        if (isQuestion) questions.push_back(text);
        if (!isQuestion) ADD_FAILURE() << text;
        return reka::MessageAnswer::Ok;
    }
    std::vector<std::string> questions;
};

using Definitions = std::vector<std::unique_ptr<reka::ReactionPackDefinition>>;

Definitions ReadTemplates(std::vector<std::vector<std::uint8_t>>* blocks = nullptr) {
    const auto bytes = ReadShipped("REKAConfig.dat");
    Definitions definitions;
    std::size_t offset = 4;
    for (std::uint32_t left = WordAt(bytes, 0); left > 0; --left) {
        const std::size_t size = WordAt(bytes, offset);
        offset += 4;
        std::u16string errorText;
        definitions.push_back(std::make_unique<reka::ReactionPackDefinition>(nullptr));
        const std::span block = std::span(bytes).subspan(offset, size);
        EXPECT_TRUE(reka::ReadStoredDefinition(*definitions.back(), block, errorText))
            << reka::Utf8FromUtf16(errorText);
        if (blocks) blocks->emplace_back(block.begin(), block.end());
        offset += size;
    }
    EXPECT_EQ(offset, bytes.size());
    return definitions;
}

TEST(ShippedTemplates, AreThePackagesOfTheDocuments) {
    std::set<std::string> expected;
    for (const std::string& name : ExampleNames()) expected.insert(ReadExample(name)["package"]["Name"]);
    std::set<std::string> names;
    for (const auto& definition : ReadTemplates()) names.insert(reka::Utf8FromUtf16(definition->name.View()));
    EXPECT_EQ(names, expected);
    EXPECT_GE(names.size(), 9U);
}

TEST(ShippedTemplates, AreWhatTheEditorWouldAccept) {
    reka::TemplateStore store;
    for (auto& definition : ReadTemplates()) {
        const std::u16string name(definition->name.View());
        const std::u16string description(definition->description.View());
        CStrictUi ui;
        std::u16string errorText;
        EXPECT_TRUE(reka::ValidateDefinition(*definition, &store, false, name, description,
                                             static_cast<std::int32_t>(definition->thermoVersion), errorText, ui))
            << reka::Utf8FromUtf16(name) << ": " << reka::Utf8FromUtf16(errorText);
        EXPECT_TRUE(reka::HasAllFormulas(*definition)) << reka::Utf8FromUtf16(name);
        EXPECT_FALSE(description.empty());
        EXPECT_TRUE(definition->pcdFile.empty());  // the path of no machine
        store.templates.push_back(std::move(definition));
    }
}

TEST(ShippedTemplates, HaveTheTreesOfTheirTexts) {
    std::vector<std::vector<std::uint8_t>> blocks;
    const Definitions definitions = ReadTemplates(&blocks);
    for (std::size_t i = 0; i < definitions.size(); ++i) {
        for (const auto& reaction : definitions[i]->reactions) {
            const std::pair<const std::u16string*, const reka::ExpressionRef*> pairs[] = {
                {&reaction->rateEquation, reaction->rateExpression.get()},
                {&reaction->equilibriumConstantEquation, reaction->equilibriumConstantExpression.get()},
                {&reaction->heatEquation, reaction->heatExpression.get()}};
            for (const auto& [text, expression] : pairs) {
                if (!expression) continue;
                EXPECT_EQ(text->find_first_not_of(u"\t\r\n !\"#$%&'()*+,-./0123456789:;<=>?@"
                                                  u"ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~"),
                          std::u16string::npos);
                std::u16string errorText;
                const reka::ExpressionRef parsed(reka::ParseExpression(*definitions[i], *text, errorText, nullptr));
                std::vector<std::uint8_t> expected;
                std::vector<std::uint8_t> stored;
                reka::CByteWriter expectedWriter(expected);
                reka::CByteWriter storedWriter(stored);
                reka::WriteStoredExpression(&parsed, expectedWriter);
                reka::WriteStoredExpression(expression, storedWriter);
                EXPECT_EQ(stored, expected) << reka::Utf8FromUtf16(*text);
            }
        }
        std::vector<std::uint8_t> block;
        std::u16string errorText;
        EXPECT_TRUE(reka::WriteStoredDefinition(*definitions[i], block, errorText));
        EXPECT_EQ(block, blocks[i]);
    }
}

/// Abridged standard atomic weights (IUPAC 2021).
const std::map<std::u16string, double> atomicWeights = {
    {u"H", 1.008},   {u"He", 4.0026}, {u"B", 10.81},   {u"C", 12.011},  {u"N", 14.007},  {u"O", 15.999},
    {u"F", 18.998},  {u"Ne", 20.180}, {u"Na", 22.990}, {u"Al", 26.982}, {u"Si", 28.085}, {u"P", 30.974},
    {u"S", 32.06},   {u"Cl", 35.45},  {u"Ar", 39.95},  {u"K", 39.098},  {u"Ca", 40.078}, {u"Br", 79.904},
    {u"Kr", 83.798}, {u"I", 126.90},  {u"Xe", 131.29}, {u"Rn", 222.0},
};

class ShippedCompounds : public testing::Test {
protected:
    ShippedCompounds() {
        std::u16string errorText;
        EXPECT_TRUE(reka::LoadPcdFile(reka::Utf16FromUtf8(ShippedPath("Korvex1.pcd")), compounds, errorText))
            << reka::Utf8FromUtf16(errorText);
    }
    reka::CompoundList compounds;
};

TEST_F(ShippedCompounds, AreMany) {
    EXPECT_GE(compounds.size(), 500U);
    std::ifstream table(reka::test::TestFile(REKA_COMPOUND_TABLE));
    std::size_t lines = 0;
    for (std::string line; std::getline(table, line);) ++lines;
    EXPECT_EQ(compounds.size() + 1, lines);
}

TEST_F(ShippedCompounds, HaveFormulasThatWeighWhatIsSaid) {
    for (const auto& compound : compounds) {
        const std::u16string formula(compound->formula.View());
        EXPECT_FALSE(formula.empty()) << reka::Utf8FromUtf16(compound->name.View());
        EXPECT_EQ(reka::NormalizePcdFormula(formula), formula);
        reka::CElementBalance balance;
        EXPECT_TRUE(reka::ReadStructureFormula(formula, 1.0, balance));
        double weight = 0;
        for (const reka::ElementAmount& element : balance) {
            const auto atom = atomicWeights.find(element.symbol);
            ASSERT_NE(atom, atomicWeights.end()) << reka::Utf8FromUtf16(element.symbol);
            weight += element.amount * atom->second;
        }
        EXPECT_NEAR(compound->molecularWeight, weight, 6e-4) << reka::Utf8FromUtf16(compound->name.View());
        EXPECT_EQ(compound->charge, 0.0);
    }
}

TEST_F(ShippedCompounds, HaveCasNumbersWithTheirCheckDigit) {
    for (const auto& compound : compounds) {
        const std::u16string number(compound->casNumber.View());
        ASSERT_GE(number.size(), 7U);
        EXPECT_EQ(number[number.size() - 2], u'-');
        EXPECT_EQ(number[number.size() - 5], u'-');
        int sum = 0;
        int place = 0;
        for (std::size_t i = number.size() - 1; i-- > 0;) {
            if (number[i] == u'-') continue;
            ASSERT_TRUE(number[i] >= u'0' && number[i] <= u'9');
            sum += ++place * (number[i] - u'0');
        }
        EXPECT_EQ(sum % 10, number.back() - u'0') << reka::Utf8FromUtf16(number);
    }
}

TEST_F(ShippedCompounds, AreThereOnce) {
    std::set<std::u16string> names;
    std::set<std::u16string> numbers;
    for (const auto& compound : compounds) {
        std::u16string name(compound->name.View());
        for (char16_t& character : name) {
            if (character >= u'A' && character <= u'Z') character = static_cast<char16_t>(character + 32);
        }
        EXPECT_TRUE(names.insert(name).second) << reka::Utf8FromUtf16(name);
        EXPECT_TRUE(numbers.insert(std::u16string(compound->casNumber.View())).second) << reka::Utf8FromUtf16(name);
    }
}

TEST_F(ShippedCompounds, IncludeThoseOfTheTemplates) {
    std::map<std::u16string, const reka::CompoundDefinition*> byNumber;
    for (const auto& compound : compounds) byNumber[std::u16string(compound->casNumber.View())] = compound.get();
    for (const auto& definition : ReadTemplates()) {
        for (const auto& compound : definition->compounds) {
            const auto found = byNumber.find(std::u16string(compound->casNumber.View()));
            ASSERT_NE(found, byNumber.end()) << reka::Utf8FromUtf16(compound->name.View());
            EXPECT_EQ(found->second->formula.View(), reka::NormalizePcdFormula(compound->formula.View()));
            EXPECT_NEAR(found->second->molecularWeight, compound->molecularWeight, 0.02);
        }
    }
}

}  // namespace

}  // namespace rekasim
