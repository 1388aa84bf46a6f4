// SPDX-License-Identifier: MIT
// Allocations of the methods fail in turn. The stand-in's strings and arrays can be made to fail, which the system's
// own can't.

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <utility>

#include "capeopen/ErrorTexts.h"
#include "package/CreateReactionPack.h"
#include "posix/AllocationFailures.h"
#include "support/AllocationCounter.h"
#include "support/Builders.h"
#include "support/FakeBag.h"
#include "support/FakeMaterial.h"
#include "support/FakeReactionObject.h"

namespace reka::test {
namespace {

/// A bag that takes no memory of its own to answer.
class CQuietBag : public CFakeBag {
public:
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR property, VARIANT* value, IErrorLog*) override {
        const int left = std::exchange(automationAllocationsLeft, 0);
        const auto entry = values.find(TextOf(property));
        const HRESULT result = entry == values.end() ? E_FAIL : CopyVariant(value, entry->second.Get());
        automationAllocationsLeft = left;
        return result;
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR property, VARIANT* value) override {
        return CopyVariant(values[std::u16string(TextOf(property))].Receive(), *value);
    }
    std::map<std::u16string, CVariant, std::less<>> values;
};

/// A package of two compounds, a material and a reaction object that keeps only what costs no memory.
class OutOfMemory : public testing::Test {
protected:
    class CQuietReactionObject : public CFakeReactionObject {
    public:
        HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR, BSTR, VARIANT, BSTR, VARIANT) override {
            ++written;
            return S_OK;
        }
        int written = 0;
    };
    class CQuietMaterial : public CFakeMaterial {
    public:
        using CFakeMaterial::CFakeMaterial;
        // The material's own memory is not what is tested: it answers with what was made beforehand.
        HRESULT STDMETHODCALLTYPE GetProp(BSTR, BSTR, VARIANT, BSTR, BSTR, VARIANT* values) override {
            *values = next.back().Detach();
            next.pop_back();
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE CalcProp(VARIANT, VARIANT, BSTR) override { return S_OK; }
        HRESULT STDMETHODCALLTYPE get_ComponentIds(VARIANT* values) override {
            *values = next.back().Detach();
            next.pop_back();
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE GetComponentConstant(VARIANT, VARIANT, VARIANT* values) override {
            *values = next.back().Detach();
            next.pop_back();
            return S_OK;
        }
        std::vector<CVariant> next;  // answers, the last one first
    };

    OutOfMemory() : definition(MakePackage({u"A1", u"B1"})), material({u"A1", u"B1"}) {
        for (const auto& compound : definition->compounds) compound->casNumber = CBstr::Make(u"1-1-1");
        definition->compounds[1]->casNumber = CBstr::Make(u"2-2-2");
        ReactionDefinition& reaction = AddKinetic(*definition, u"r", u"C(A1)*T");
        reaction.stoichiometry = {-1.0, 1.0};
        AddEquilibrium(*definition, u"e", u"EXP(T)").stoichiometry = {1.0, 1.0};
        package->AssignDefinition(definition.get());
        IDispatch* pointer = results.Dispatch();
        package->SetReactionObject(&pointer);
    }
    ~OutOfMemory() override { package->Terminate(); }

    static CVariant CasAnswer(const char16_t* number) {
        std::vector<CVariant> elements;
        elements.push_back(Text(number));
        return Variants(std::move(elements));
    }
    void PrepareBinding() {
        material.next.clear();
        material.next.push_back(CasAnswer(u"1-1-1"));
        material.next.push_back(CasAnswer(u"2-2-2"));
        material.next.push_back(Strings({u"b", u"a"}));
    }

    std::unique_ptr<ReactionPackDefinition> definition;
    CQuietMaterial material;
    CQuietReactionObject results;
    CPackageHolder package;
};

TEST_F(OutOfMemory, EndsACalculationWithItsText) {
    const CVariant props = Strings({u"ReactionRate"});
    const CVariant ids = Strings({u"r"});
    const CBstr phase = CBstr::Make(u"Liquid");
    std::unique_ptr<CPackageHolder> fresh;  // what a call makes is kept for the next one
    ForEachFailure(
        [&] {
            if (fresh) (*fresh)->Terminate();
            fresh = std::make_unique<CPackageHolder>(*definition);
            IDispatch* pointer = results.Dispatch();
            (*fresh)->SetReactionObject(&pointer);
            PrepareBinding();
            ASSERT_EQ((*fresh)->SetMaterial(material.Dispatch()), S_OK);
            material.next.clear();
            material.next.push_back(Numbers({100.0}));
            material.next.push_back(Numbers({0.5, 0.5}));
            material.next.push_back(Numbers({300.0}));
        },
        [&] { return (*fresh)->CalcReactionProp(props.Get(), phase.Get(), ids.Get(), nullptr); },
        [&](HRESULT result, bool isReached) {
            EXPECT_EQ(result, isReached ? ECapeUnknownHR : S_OK);
            if (!isReached) return;
            const ReportedError error = ErrorOf(fresh->Unknown());
            EXPECT_TRUE(error.description == "out of memory" ||
                        error.description == "Failed to calculate ReactionRate for reaction r: out of memory")
                << error.description;
            EXPECT_EQ(error.name, error.description);
            EXPECT_EQ(error.scope, "CalcReactionProp");
        });
    EXPECT_EQ(material.references.Held(), 1);
    (*fresh)->Terminate();
}

TEST_F(OutOfMemory, EndsABindingWithItsText) {
    ForEachFailure(
        [&] {
            package->UnsetMaterial();
            package->AssignDefinition(definition.get());
            PrepareBinding();
        },
        [&] { return package->SetMaterial(material.Dispatch()); },
        [&](HRESULT result, bool isReached) {
            EXPECT_EQ(result, isReached ? ECapeUnknownHR : S_OK);
            EXPECT_EQ(Show(package->Definition()->compounds[0]->id.Get()), isReached ? "'A1'" : "'a'");
            if (!isReached) return;
            EXPECT_EQ(ErrorOf(package.Unknown()),
                      (ReportedError{"out of memory", "out of memory", "SetMaterial", "ICapeThermoContext"}));
        });
    package->UnsetMaterial();
    EXPECT_EQ(material.references.Held(), 0);
}

TEST_F(OutOfMemory, EndsTheListOfReactionsWithItsText) {
    automationAllocate = AllocateUntilTold;
    for (int n = 1; n <= 4; ++n) {  // the array's record, its elements, two strings
        CVariant ids;
        automationAllocationsLeft = n;
        const HRESULT result = package->GetReactionsIds(&ids.Get());
        automationAllocationsLeft = 0;
        EXPECT_EQ(result, ECapeUnknownHR);
        EXPECT_EQ(Show(ids.Get()), "empty");
        EXPECT_EQ(ErrorOf(package.Unknown()),
                  (ReportedError{"Out of memory", "Out of memory", "GetReactionsIds", "ICapeReactionChemistry"}));
    }
    automationAllocate = nullptr;
}

TEST_F(OutOfMemory, EndsTheListOfParticipantsWithItsText) {
    const CBstr id = CBstr::Make(u"r");
    CVariant ids;
    CVariant charges;
    CVariant casNumbers;
    CVariant coefficients;
    ForEachFailure(
        [&] { ids = Strings({u"left"}); },
        [&] { return package->GetReactionCompoundIds(id.Get(), &ids.Get(), &charges.Get(), &casNumbers.Get()); },
        [&](HRESULT result, bool isReached) {
            EXPECT_EQ(result, isReached ? ECapeUnknownHR : S_OK);
            EXPECT_EQ(Show(ids.Get()), isReached ? "empty" : "['A1', 'B1']");
            if (!isReached) return;
            EXPECT_EQ(Show(charges.Get()), "empty");
            EXPECT_EQ(ErrorOf(package.Unknown()), (ReportedError{"out of memory", "out of memory",
                                                                 "GetReactionCompoundIds", "ICapeReactionChemistry"}));
        });
    ForEachFailure([&] { coefficients.Reset(); },
                   [&] { return package->GetStoichiometricCoefficients(id.Get(), &coefficients.Get()); },
                   [&](HRESULT result, bool isReached) {
                       EXPECT_EQ(result, isReached ? ECapeUnknownHR : S_OK);
                       EXPECT_EQ(Show(coefficients.Get()), isReached ? "empty" : "[-1, 1]");
                   });
}

TEST_F(OutOfMemory, LeavesThePackageAsItWasWhenALoadFails) {
    CQuietBag bag;
    ASSERT_EQ(package->Save(&bag, 0, 0), S_OK);
    std::unique_ptr<CPackageHolder> fresh;
    ForEachFailure([&] { fresh = std::make_unique<CPackageHolder>(); }, [&] { return (*fresh)->Load(&bag, nullptr); },
                   [&](HRESULT result, bool isReached) {
                       // Room that is merely given back may stay taken: then the load is whole all the same.
                       if (!isReached) {
                           EXPECT_EQ(result, S_OK);
                       }
                       if (FAILED(result)) {
                           EXPECT_EQ(result, E_FAIL);
                           EXPECT_EQ((*fresh)->Definition(), nullptr);
                           return;
                       }
                       ASSERT_EQ((*fresh)->Definition()->reactions.size(), 2U);
                       EXPECT_NE((*fresh)->Definition()->reactions[0]->rateExpression, nullptr);
                       EXPECT_NE((*fresh)->Definition()->reactions[1]->equilibriumConstantExpression, nullptr);
                       EXPECT_EQ(Show((*fresh)->Definition()->compounds[1]->casNumber.Get()), "'2-2-2'");
                   });
}

TEST_F(OutOfMemory, EndsASaveWithoutClearingTheFlag) {
    class CForgetfulBag : public CFakeBag {
    public:
        HRESULT STDMETHODCALLTYPE Write(LPCOLESTR, VARIANT*) override { return S_OK; }
    };
    CForgetfulBag bag;
    ForEachFailure([&] { package->AssignDefinition(definition.get()); }, [&] { return package->Save(&bag, 1, 0); },
                   [&](HRESULT result, bool isReached) {
                       EXPECT_EQ(result, isReached ? E_FAIL : S_OK);
                       EXPECT_EQ(package->IsDirty() == S_OK, isReached);
                   });
}

/// Fails the n-th automation allocation of `method`.
template <class Method>
HRESULT FailAutomation(int n, Method&& method) {
    automationAllocate = AllocateUntilTold;
    automationAllocationsLeft = n;
    const HRESULT result = method();
    EXPECT_EQ(automationAllocationsLeft, 0);
    automationAllocationsLeft = 0;
    automationAllocate = nullptr;
    return result;
}

TEST_F(OutOfMemory, EndsTheTextQueriesWithItsText) {
    const CBstr kinetic = CBstr::Make(u"r");
    const CBstr equilibrium = CBstr::Make(u"e");
    CBstr text;
    EXPECT_EQ(FailAutomation(1, [&] { return package->GetReactionPhase(kinetic.Get(), text.Receive()); }),
              ECapeUnknownHR);
    EXPECT_TRUE(text.IsAbsent());
    EXPECT_EQ(ErrorOf(package.Unknown()),
              (ReportedError{"out of memory", "out of memory", "GetReactionPhase", "ICapeReactionChemistry"}));
    EXPECT_EQ(FailAutomation(1, [&] { return package->GetReactionConcBasis(equilibrium.Get(), text.Receive()); }),
              ECapeUnknownHR);
    EXPECT_TRUE(text.IsAbsent());
    EXPECT_EQ(ErrorOf(package.Unknown()).scope, "GetReactionConcBasis");
}

TEST_F(OutOfMemory, KeepsTheIdentification) {
    const CBstr name = CBstr::Make(u"other");
    CBstr text;
    EXPECT_EQ(FailAutomation(1, [&] { return package->put_ComponentName(name.Get()); }), ECapeUnknownHR);
    EXPECT_EQ(package->Definition()->name.View(), u"Test package");
    EXPECT_EQ(FailAutomation(1, [&] { return package->put_ComponentDescription(name.Get()); }), ECapeUnknownHR);
    EXPECT_TRUE(package->Definition()->description.IsAbsent());
    EXPECT_EQ(FailAutomation(1, [&] { return package->get_ComponentName(text.Receive()); }), E_OUTOFMEMORY);
    EXPECT_TRUE(text.IsAbsent());
}

TEST_F(OutOfMemory, LeavesOutATextOfAnError) {
    const ReportedError whole = {"A", "B", "C", "D"};
    for (int n = 1; n <= 4; ++n) {
        FailAutomation(n, [&] {
            package->SetError(u"A", u"B", u"C", u"D");
            return S_OK;
        });
        ReportedError expected = whole;
        (n == 1   ? expected.name
         : n == 2 ? expected.description
         : n == 3 ? expected.scope
                  : expected.interfaceName) = "<null>";
        EXPECT_EQ(ErrorOf(package.Unknown()), expected);
    }
}

TEST_F(OutOfMemory, LeavesAPackageWithoutADefinitionThatCannotBeMade) {
    const CPackageHolder fresh;
    FailAllocation(1);
    const HRESULT result = fresh->Initialize();
    FailAllocation(0);
    EXPECT_EQ(result, ECapeUnknownHR);
    EXPECT_EQ(fresh->Definition(), nullptr);
    EXPECT_EQ(ErrorOf(fresh.Unknown()),
              (ReportedError{"out of memory", "out of memory", "Initialize", "ICapeUtilitites"}));
}

TEST(SystemErrorText, IsUnknownWithoutMemoryForIt) {
    FailAllocation(1);
    const std::u16string text = GetSystemErrorText(E_FAIL);
    FailAllocation(0);
    EXPECT_EQ(text, u"<unknown error>");
}

TEST_F(OutOfMemory, MakesNoPackage) {
    void* none = &package;
    FailAllocation(1);
    const HRESULT failed = CreateReactionPack(IID_IUnknown, &none);
    FailAllocation(0);
    EXPECT_EQ(failed, E_OUTOFMEMORY);
    EXPECT_EQ(none, nullptr);
    automationAllocate = AllocateUntilTold;
    for (int n = 1; n <= 9; ++n) {  // the nine words of the requests to a material
        void* made = &package;
        automationAllocationsLeft = n;
        const HRESULT result = CreateReactionPack(IID_IUnknown, &made);
        automationAllocationsLeft = 0;
        EXPECT_EQ(result, E_OUTOFMEMORY);
        EXPECT_EQ(made, nullptr);
    }
    automationAllocate = nullptr;
}

}  // namespace
}  // namespace reka::test
