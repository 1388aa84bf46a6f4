// SPDX-License-Identifier: MIT
// The declarations that the component is compiled with, the ones that the interface compiler makes of the IDL, and the
// published ones must agree: a slot too many or an argument of another width compiles and fails at run time.

#include "capeopen/CapeOpenInterfaces.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>

#include "REKA.h"  // made of the IDL
#include "capeopen/ClassIds.h"
#include "capeopen/win/PublishedInterfaces.h"
#include "support/Values.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

// An enumeration travels as a 32-bit integer, whoever declares it.
template <class Type>
struct Transported {
    using type = Type;
};
template <>
struct Transported<CapeReactionType*> {
    using type = LONG*;
};
template <>
struct Transported<CapeReactionRateBasis*> {
    using type = LONG*;
};
template <>
struct Transported<::CapeReactionType*> {
    using type = LONG*;
};
template <>
struct Transported<::CapeReactionRateBasis*> {
    using type = LONG*;
};

template <class Method>
struct Signature;
template <class Result, class Class, class... Arguments>
struct Signature<Result (STDMETHODCALLTYPE Class::*)(Arguments...)> {
    using type = std::tuple<Result, typename Transported<Arguments>::type...>;
};

/// The place of a virtual operation in its table, from the first word of the pointer to it: one more than its offset.
template <class Method>
int SlotOf(Method method) {
    std::intptr_t word = 0;
    std::memcpy(&word, &method, sizeof word);
    return static_cast<int>((word - 1) / static_cast<std::intptr_t>(sizeof(void*)));
}

struct DeclaredMember {
    const char* interfaceName;
    const char* name;
    int slot;
    int compiledSlot;
    const IID* identifier;
    const IID* compiledIdentifier;
};

template <class Ours, class Compiled>
DeclaredMember Compare(const char* interfaceName, const char* name, Ours ours, Compiled compiled, const IID& identifier,
                       const IID& compiledIdentifier) {
    static_assert(std::is_same_v<typename Signature<Ours>::type, typename Signature<Compiled>::type>);
    return {interfaceName, name, SlotOf(ours), SlotOf(compiled), &identifier, &compiledIdentifier};
}

#define COMPARE(interfaceName, member)                                                                           \
    Compare(#interfaceName, #member, &reka::interfaceName::member, &::interfaceName::member, interfaceName::iid, \
            __uuidof(::interfaceName))

const DeclaredMember declaredMembers[] = {
    COMPARE(ICapeIdentification, get_ComponentName),
    COMPARE(ICapeIdentification, put_ComponentName),
    COMPARE(ICapeIdentification, get_ComponentDescription),
    COMPARE(ICapeIdentification, put_ComponentDescription),
    COMPARE(ICapeUtilities, get_parameters),
    COMPARE(ICapeUtilities, put_simulationContext),
    COMPARE(ICapeUtilities, Initialize),
    COMPARE(ICapeUtilities, Terminate),
    COMPARE(ICapeUtilities, Edit),
    COMPARE(ECapeRoot, get_name),
    COMPARE(ECapeUser, get_code),
    COMPARE(ECapeUser, get_description),
    COMPARE(ECapeUser, get_scope),
    COMPARE(ECapeUser, get_interfaceName),
    COMPARE(ECapeUser, get_operation),
    COMPARE(ECapeUser, get_moreInfo),
    COMPARE(ICapeReactionsPackageManager, GetListOfReactionsPackages),
    COMPARE(ICapeReactionsPackageManager, ResolveReactionsPackage),
    COMPARE(ICapeThermoNewPropertyPackage, NewPropertyPackage),
    COMPARE(ICapeReactionsRoutine, CalcReactionProp),
    COMPARE(ICapeReactionChemistry, GetNumberOfReactions),
    COMPARE(ICapeReactionChemistry, GetReactionsIds),
    COMPARE(ICapeReactionChemistry, GetReactionType),
    COMPARE(ICapeReactionChemistry, GetNumberOfReactionCompounds),
    COMPARE(ICapeReactionChemistry, GetReactionCompoundIds),
    COMPARE(ICapeReactionChemistry, GetStoichiometricCoefficients),
    COMPARE(ICapeReactionChemistry, GetReactionPhase),
    COMPARE(ICapeReactionChemistry, GetReactionRateBasis),
    COMPARE(ICapeReactionChemistry, GetReactionConcBasis),
    COMPARE(ICapeReactionChemistry, GetBaseReactant),
    COMPARE(ICapeReactionChemistry, GetPhaseCompounds),
    COMPARE(ICapeReactionChemistry, GetReactionParameters),
    COMPARE(ICapeKineticReactionContext, SetReactionObject),
    COMPARE(ICapeThermoMaterialContext, SetMaterial),
    COMPARE(ICapeThermoMaterialContext, UnsetMaterial),
    COMPARE(ICapeThermoContext10, SetMaterial),
    COMPARE(ICapeReactionProperties, GetReactionProp),
    COMPARE(ICapeReactionProperties, SetReactionProp),
    COMPARE(ICapeThermoMaterialObject, get_ComponentIds),
    COMPARE(ICapeThermoMaterialObject, get_PhaseIds),
    COMPARE(ICapeThermoMaterialObject, GetUniversalConstant),
    COMPARE(ICapeThermoMaterialObject, GetComponentConstant),
    COMPARE(ICapeThermoMaterialObject, CalcProp),
    COMPARE(ICapeThermoMaterialObject, GetProp),
    COMPARE(ICapeThermoMaterialObject, SetProp),
    COMPARE(ICapeThermoMaterialObject, CalcEquilibrium),
    COMPARE(ICapeThermoMaterialObject, SetIndependentVar),
    COMPARE(ICapeThermoMaterialObject, GetIndependentVar),
    COMPARE(ICapeThermoMaterialObject, PropCheck),
    COMPARE(ICapeThermoMaterialObject, AvailableProps),
    COMPARE(ICapeThermoMaterialObject, RemoveResults),
    COMPARE(ICapeThermoMaterialObject, CreateMaterialObject),
    COMPARE(ICapeThermoMaterialObject, Duplicate),
    COMPARE(ICapeThermoMaterialObject, ValidityCheck),
    COMPARE(ICapeThermoMaterialObject, GetPropList),
    COMPARE(ICapeThermoMaterialObject, GetNumComponents),
    COMPARE(ICapeThermoMaterialTemplate, CreateMaterialObject),
    COMPARE(ICapeThermoMaterialTemplate, SetProp),
    COMPARE(ICapeThermoMaterial, ClearAllProps),
    COMPARE(ICapeThermoMaterial, CopyFromMaterial),
    COMPARE(ICapeThermoMaterial, CreateMaterial),
    COMPARE(ICapeThermoMaterial, GetOverallProp),
    COMPARE(ICapeThermoMaterial, GetOverallTPFraction),
    COMPARE(ICapeThermoMaterial, GetPresentPhases),
    COMPARE(ICapeThermoMaterial, GetSinglePhaseProp),
    COMPARE(ICapeThermoMaterial, GetTPFraction),
    COMPARE(ICapeThermoMaterial, GetTwoPhaseProp),
    COMPARE(ICapeThermoMaterial, SetOverallProp),
    COMPARE(ICapeThermoMaterial, SetPresentPhases),
    COMPARE(ICapeThermoMaterial, SetSinglePhaseProp),
    COMPARE(ICapeThermoMaterial, SetTwoPhaseProp),
    COMPARE(ICapeThermoPropertyRoutine, CalcAndGetLnPhi),
    COMPARE(ICapeThermoPropertyRoutine, CalcSinglePhaseProp),
    COMPARE(ICapeThermoPropertyRoutine, CalcTwoPhaseProp),
    COMPARE(ICapeThermoPropertyRoutine, CheckSinglePhasePropSpec),
    COMPARE(ICapeThermoPropertyRoutine, CheckTwoPhasePropSpec),
    COMPARE(ICapeThermoPropertyRoutine, GetSinglePhasePropList),
    COMPARE(ICapeThermoPropertyRoutine, GetTwoPhasePropList),
    COMPARE(ICapeThermoCompounds, GetCompoundConstant),
    COMPARE(ICapeThermoCompounds, GetCompoundList),
    COMPARE(ICapeThermoCompounds, GetConstPropList),
    COMPARE(ICapeThermoCompounds, GetNumCompounds),
    COMPARE(ICapeThermoCompounds, GetPDependentProperty),
    COMPARE(ICapeThermoCompounds, GetPDependentPropList),
    COMPARE(ICapeThermoCompounds, GetTDependentProperty),
    COMPARE(ICapeThermoCompounds, GetTDependentPropList),
    COMPARE(ICapeMaterialTemplateSystem, get_MaterialTemplates),
    COMPARE(ICapeMaterialTemplateSystem, CreateMaterialTemplate),
};

#undef COMPARE

std::string MemberName(const PublishedMember& member) {
    const char* const prefix = member.kind == INVOKE_PROPERTYGET   ? "get_"
                               : member.kind == INVOKE_PROPERTYPUT ? "put_"
                                                                   : "";
    return std::string(prefix) + member.name;
}

GUID GuidOf(const char* text) {
    GUID guid = {};
    const std::u16string wide = Utf16FromUtf8(text);
    EXPECT_EQ(CLSIDFromString(reinterpret_cast<const wchar_t*>(wide.c_str()), &guid), S_OK) << text;
    return guid;
}

TEST(InterfaceDeclarations, HaveThePublishedSlots) {
    ASSERT_EQ(std::size(declaredMembers), std::size(publishedMembers));
    for (std::size_t i = 0; i < std::size(declaredMembers); ++i) {
        const DeclaredMember& declared = declaredMembers[i];
        const PublishedMember& published = publishedMembers[i];
        EXPECT_STREQ(declared.interfaceName, published.interfaceName);
        EXPECT_EQ(declared.name, MemberName(published));
        EXPECT_EQ(declared.slot, published.slot) << declared.interfaceName << "::" << declared.name;
        EXPECT_EQ(declared.compiledSlot, published.slot) << declared.interfaceName << "::" << declared.name;
    }
}

TEST(InterfaceDeclarations, HaveThePublishedIdentifiers) {
    for (const DeclaredMember& declared : declaredMembers) {
        for (const PublishedInterface& published : publishedInterfaces) {
            if (std::strcmp(declared.interfaceName, published.name) != 0) continue;
            EXPECT_EQ(*declared.identifier, GuidOf(published.identifier)) << published.name;
            EXPECT_EQ(*declared.compiledIdentifier, GuidOf(published.identifier)) << published.name;
        }
    }
    EXPECT_EQ(reka::ECapeUnknown::iid, __uuidof(::ECapeUnknown));
    EXPECT_EQ(reka::ECapeUnknown::iid, GuidOf("{678C0B12-7D66-11D2-A67D-00105A42887F}"));
}

TEST(ClassIdentifiers, AreThoseOfTheTypeLibrary) {
    EXPECT_EQ(reactionPackManagerClassId, __uuidof(::ReactionPackManager));
    EXPECT_EQ(reactionPackClassId, __uuidof(::ReactionPack));
}

// The type library

std::string TypeName(const TYPEDESC& type, ITypeInfo* owner) {
    switch (type.vt) {
        case VT_PTR:
            return TypeName(*type.lptdesc, owner) + "*";
        case VT_I4:
        case VT_INT:
            return "long";
        case VT_R8:
            return "double";
        case VT_BOOL:
            return "VARIANT_BOOL";
        case VT_BSTR:
            return "BSTR";
        case VT_VARIANT:
            return "VARIANT";
        case VT_DISPATCH:
            return "IDispatch*";
        case VT_USERDEFINED: {
            CComRef<ITypeInfo> referred;
            CBstr name;
            if (FAILED(owner->GetRefTypeInfo(type.hreftype, referred.Receive()))) return "<unknown reference>";
            referred->GetDocumentation(MEMBERID_NIL, name.Receive(), nullptr, nullptr, nullptr);
            return Utf8FromUtf16(name.View());
        }
        default:
            return "<type " + std::to_string(type.vt) + ">";
    }
}

/// The argument list of a member in the words of `PublishedMember`.
std::string ArgumentsOf(ITypeInfo& info, const FUNCDESC& member) {
    BSTR names[16] = {};
    UINT count = 0;
    info.GetNames(member.memid, names, 16, &count);
    std::string arguments;
    for (SHORT i = 0; i < member.cParams; ++i) {
        const ELEMDESC& argument = member.lprgelemdescParam[i];
        const USHORT flags = argument.paramdesc.wParamFlags;
        const char* const direction = flags & PARAMFLAG_FRETVAL                             ? "out "
                                      : (flags & PARAMFLAG_FIN) && (flags & PARAMFLAG_FOUT) ? "inout "
                                                                                            : "in ";
        // The value of a property that is put has no name in a type library.
        const std::string name = static_cast<UINT>(i) + 1 < count ? " " + Utf8FromUtf16(TextOf(names[i + 1])) : "";
        arguments += (arguments.empty() ? "" : "; ") + (direction + TypeName(argument.tdesc, &info)) + name;
    }
    for (UINT i = 0; i < count; ++i) SysFreeString(names[i]);
    return arguments;
}

class TypeLibrary : public testing::Test {
protected:
    void SetUp() override {
        wchar_t path[2048];
        ASSERT_NE(GetModuleFileNameW(nullptr, path, 2048), 0U);
        ASSERT_EQ(LoadTypeLibEx(path, REGKIND_NONE, library.Receive()), S_OK);
    }

    /// The vtable view of a dual interface.
    CComRef<ITypeInfo> InterfaceInfo(const PublishedInterface& published) {
        CComRef<ITypeInfo> dual;
        EXPECT_EQ(library->GetTypeInfoOfGuid(GuidOf(published.identifier), dual.Receive()), S_OK) << published.name;
        HREFTYPE reference = 0;
        CComRef<ITypeInfo> info;
        EXPECT_EQ(dual->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
        EXPECT_EQ(dual->GetRefTypeInfo(reference, info.Receive()), S_OK);
        return info;
    }

    CComRef<ITypeLib> library;
};

TEST_F(TypeLibrary, HasThePublishedMembers) {
    for (const PublishedInterface& published : publishedInterfaces) {
        const CComRef<ITypeInfo> info = InterfaceInfo(published);
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
        const UINT count = attributes->cFuncs;
        EXPECT_EQ(attributes->guid, GuidOf(published.identifier));
        EXPECT_EQ(attributes->wTypeFlags & (TYPEFLAG_FDUAL | TYPEFLAG_FDISPATCHABLE),
                  TYPEFLAG_FDUAL | TYPEFLAG_FDISPATCHABLE);
        info->ReleaseTypeAttr(attributes);
        UINT index = 0;
        for (const PublishedMember& member : publishedMembers) {
            if (std::strcmp(member.interfaceName, published.name) != 0) continue;
            SCOPED_TRACE(std::string(member.interfaceName) + "::" + member.name);
            FUNCDESC* function = nullptr;
            ASSERT_EQ(info->GetFuncDesc(index++, &function), S_OK);
            CBstr name;
            UINT named = 0;
            info->GetNames(function->memid, name.Receive(), 1, &named);
            EXPECT_EQ(Utf8FromUtf16(name.View()), member.name);
            EXPECT_EQ(function->memid, member.dispatchId);
            EXPECT_EQ(function->invkind, member.kind);
            EXPECT_EQ(static_cast<std::size_t>(function->oVft), static_cast<std::size_t>(member.slot) * sizeof(void*));
            std::string expected = member.arguments;
            if (member.kind == INVOKE_PROPERTYPUT) expected.resize(expected.rfind(' '));
            std::string actual = ArgumentsOf(*info, *function);
            if (member.kind == INVOKE_PROPERTYPUT && actual.size() > expected.size()) actual.resize(expected.size());
            // A late-bound call names its arguments, but not the result.
            const std::size_t result = expected.rfind("out ");
            if (result != std::string::npos && expected.compare(0, result, "") == 0) {
                EXPECT_EQ(actual.substr(0, actual.rfind(' ')), expected.substr(0, expected.rfind(' ')));
            } else {
                EXPECT_EQ(actual, expected);
            }
            info->ReleaseFuncDesc(function);
        }
        EXPECT_EQ(index, count) << published.name;
    }
}

}  // namespace
}  // namespace reka::test
