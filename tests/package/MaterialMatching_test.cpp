// SPDX-License-Identifier: MIT
// Which compound of a material is found for which of the package, held against the rule written down as loops over both
// lists.

#include <iterator>
#include <random>
#include <utility>

#include "capeopen/ArrayHelpers.h"
#include "package/BindingFixture.h"
#include "platform/SameText.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

/// Of a text that may be absent.
std::u16string_view ViewOf(const char16_t* text) {
    return text ? text : u"";
}

/// An identifier in quotes; nothing for an absent one, which is none.
std::string Quoted(const char16_t* identifier) {
    return identifier ? "'" + Utf8FromUtf16(identifier) + "'" : "";
}

/// A list of strings, of which one may be null and another empty.
CVariant ListOf(const std::vector<const char16_t*>& texts) {
    CVariant list;
    CreateListVariant(list.Get(), texts.size(), VT_BSTR, [&](SAFEARRAY& array, LONG index) {
        const char16_t* const text = texts[static_cast<std::size_t>(index)];
        return PutString(array, index, (text ? CBstr::Make(text) : CBstr()).Get());
    });
    return list;
}

/// The binding as it is defined: two passes of two loops each. The text of the failure, or the identifiers.
std::string BindByLoops(const ReactionPackDefinition& definition, std::vector<const char16_t*> identifiers,
                        const std::vector<const char16_t*>& casNumbers) {
    const std::size_t count = identifiers.size();
    std::vector<bool> isFree(count, true);
    std::vector<std::string> resolved(definition.compounds.size());
    for (std::size_t i = 0; i < resolved.size(); ++i) {
        const CBstr& wanted = definition.compounds[i]->casNumber;
        std::size_t j = 0;
        const auto matches = [&](std::size_t k) { return SameText(ViewOf(casNumbers[k]), wanted.View()); };
        while (j < count && !(isFree[j] && casNumbers[j] && matches(j))) ++j;
        if (wanted.IsAbsent() || j == count) continue;
        for (std::size_t k = j + 1; k < count; ++k) {
            if (!matches(k)) continue;
            return "CAS number " + Utf8FromUtf16(ViewOf(casNumbers[k])) + " for compound " +
                   Utf8FromUtf16(ViewOf(identifiers[j])) +
                   " is present more than once; unable to determine which compound is which";
        }
        resolved[i] = Quoted(std::exchange(identifiers[j], nullptr));
        isFree[j] = false;
    }
    for (std::size_t i = 0; i < resolved.size(); ++i) {
        const std::u16string_view wanted = definition.compounds[i]->name.View();
        std::size_t j = 0;
        while (j < count && !(isFree[j] && SameText(ViewOf(identifiers[j]), wanted))) ++j;
        if (!resolved[i].empty() || j == count) continue;
        for (std::size_t k = j + 1; k < count; ++k) {
            if (!SameText(ViewOf(identifiers[k]), ViewOf(identifiers[j]))) continue;
            return "compound ID " + Utf8FromUtf16(ViewOf(identifiers[k])) +
                   " is present more than once; unable to determine which compound is which";
        }
        resolved[i] = Quoted(std::exchange(identifiers[j], nullptr));
        isFree[j] = false;
    }
    std::string ids;
    for (std::size_t i = 0; i < resolved.size(); ++i) {
        if (resolved[i].empty()) {
            return "unable to resolve reaction compound " + Utf8FromUtf16(TextOf(definition.compounds[i]->name.Get()));
        }
        ids += resolved[i];
    }
    return ids;
}

/// What the material has no name for can't be asked of it.
TEST_F(MaterialBinding, FindsNoCompoundWithoutAnIdentifier) {
    CFakeMaterial& material = NewMaterial({u"Ethanol", u"Water", u"Argon"});
    material.componentIds = ListOf({nullptr, u"Water", u"Argon"});
    material.SetCasNumber(0, u"64-17-5");
    EXPECT_EQ(package->SetMaterial(material.Dispatch()), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Unknown()).description, "unable to resolve reaction compound Ethanol");
    EXPECT_EQ(material.references.Held(), 0);
    material.componentIds = ListOf({u"", u"Water", u"Argon"});
    EXPECT_EQ(package->SetMaterial(material.Dispatch()), S_OK);  // an empty one is one
    EXPECT_EQ(Ids(), "'''Water''Argon'");
}

TEST_F(MaterialBinding, FindsWhatLoopsOverBothListsFind) {
    const char16_t* const words[] = {nullptr, u"", u"Aa", u"aA", u"Bb", u"bb", u"Cc", u"Dd", u"Ee", u"Ff"};
    std::mt19937 random(29);
    const auto word = [&] { return words[random() % std::size(words)]; };
    int boundCount = 0;
    for (int round = 0; round < 2000; ++round) {
        definition = MakePackage({});
        for (std::size_t i = 1 + random() % 3; i > 0; --i) {
            auto compound = std::make_unique<CompoundDefinition>();
            compound->name = CBstr::Make(ViewOf(word()));
            if (random() % 2) compound->casNumber = CBstr::Make(ViewOf(word()));
            definition->compounds.push_back(std::move(compound));
        }
        std::vector<const char16_t*> identifiers(1 + random() % 5);
        std::vector<const char16_t*> casNumbers(identifiers.size());
        CFakeMaterial& material = NewMaterial({});
        material.casAnswers.resize(identifiers.size());
        for (std::size_t j = 0; j < identifiers.size(); ++j) {
            identifiers[j] = word();
            if (random() % 3 == 0) continue;
            casNumbers[j] = word();
            if (casNumbers[j]) material.SetCasNumber(j, casNumbers[j]);
        }
        material.componentIds = ListOf(identifiers);
        Assign();
        const std::string expected = BindByLoops(*definition, identifiers, casNumbers);
        const bool isBound = package->SetMaterial(material.Dispatch()) == S_OK;
        ASSERT_EQ(isBound ? Ids() : ErrorOf(package.Unknown()).name, expected) << "round " << round;
        boundCount += isBound;
    }
    EXPECT_GT(boundCount, 200);
    EXPECT_LT(boundCount, 1800);
}

}  // namespace
}  // namespace reka::test
