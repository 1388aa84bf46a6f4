// SPDX-License-Identifier: MIT
// Everything goes through the interfaces, as in a simulator that has nothing else: so this file is also the shortest
// answer to how a package is used. An interface is asked for where it is needed and given back at once. A call that
// fails is told in the package's own words where it has some; whether they belong to this failure is seen from the
// result code.

#include "CPackageSession.h"

#include "PackageFactory.h"
#include "packagetext/VariantArrays.h"
#include "text/Utf8.h"

namespace rekasim {

namespace {

template <class Interface>
reka::CComRef<Interface> Ask(IUnknown* object) {
    reka::CComRef<Interface> asked;
    void* found = nullptr;
    if (SUCCEEDED(object->QueryInterface(reka::InterfaceId<Interface>(), &found))) {
        asked.Reset(static_cast<Interface*>(found));
    }
    return asked;
}

std::string TextOfResult(HRESULT result) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text = "result code 0x";
    for (int shift = 28; shift >= 0; shift -= 4) text += digits[static_cast<ULONG>(result) >> shift & 0xF];
    return text;
}

template <class Read>
std::string ReadUtf8(Read read) {
    reka::CBstr text;
    read(text.Receive());
    return reka::Utf8FromUtf16(text.View());
}

/// The story of a failed call. The package's error texts belong to the last failure of the standard's own codes only;
/// after any other code they may be older.
bool FailCall(IUnknown* object, HRESULT result, const char* call, Failure& failure) {
    failure = {std::string(call) + " failed: " + TextOfResult(result), call, ""};
    constexpr auto firstCode = static_cast<HRESULT>(0x80040501U);
    constexpr auto lastCode = static_cast<HRESULT>(0x8004051AU);
    const auto user = Ask<reka::ECapeUser>(object);
    if (!user || result < firstCode || result > lastCode) return false;
    const std::string description = ReadUtf8([&user](BSTR* text) { user->get_description(text); });
    if (description.empty()) return false;
    failure.text = description;
    failure.scope = ReadUtf8([&user](BSTR* text) { user->get_scope(text); });
    failure.interfaceName = ReadUtf8([&user](BSTR* text) { user->get_interfaceName(text); });
    if (const auto root = Ask<reka::ECapeRoot>(object)) {
        failure.name = ReadUtf8([&root](BSTR* text) { root->get_name(text); });
    }
    return false;
}

bool FailMissingInterface(const char* name, Failure& failure) {
    failure = {std::string("the package doesn't offer ") + name, "", name};
    return false;
}

/// A failed load tells its reason through the log.
bool FailLoad(HRESULT result, const packagetext::CErrorLog& log, Failure& failure) {
    failure = {"the package can't be loaded: " + TextOfResult(result), "Load", "IPersistPropertyBag"};
    if (!log.Reports().empty()) {
        const packagetext::CErrorLog::Report& last = log.Reports().back();
        failure.text = "the package can't be loaded: " + reka::Utf8FromUtf16(last.property) + ": " +
                       reka::Utf8FromUtf16(last.text);
    } else if (result == E_FAIL) {
        failure.text = "the package can't be loaded: a member of the package is missing";
    }
    return false;
}

/// The manager, which all packages come from.
template <class Interface>
bool MakeManager(reka::CComRef<Interface>& manager, Failure& failure) {
    void* made = nullptr;
    const HRESULT result = CreateManager(reka::InterfaceId<Interface>(), &made);
    if (FAILED(result)) {
        failure = {"the package manager can't be made: " + TextOfResult(result) + AdviceWithoutManager(), "", ""};
        return false;
    }
    manager.Reset(static_cast<Interface*>(made));
    return true;
}

}  // namespace

CPackageSession::~CPackageSession() {
    if (!isLoaded) return;
    if (const auto utilities = Ask<reka::ICapeUtilities>(package.Get())) utilities->Terminate();
}

bool ListPackages(std::vector<std::u16string>& names, Failure& failure) {
    reka::CComRef<reka::ICapeReactionsPackageManager> manager;
    if (!MakeManager(manager, failure)) return false;
    reka::CVariant list;
    const HRESULT result = manager->GetListOfReactionsPackages(&list.Get());
    if (FAILED(result)) return FailCall(manager.Get(), result, "GetListOfReactionsPackages", failure);
    if (!packagetext::ReadTexts(list.Get(), names)) {
        failure = {"GetListOfReactionsPackages gives no list of strings", "GetListOfReactionsPackages", ""};
        return false;
    }
    return true;
}

bool CPackageSession::Resolve(const std::u16string& name, Failure& failure) {
    reka::CComRef<reka::ICapeReactionsPackageManager> manager;
    if (!MakeManager(manager, failure)) return false;
    reka::CComRef<IDispatch> made;
    const reka::CBstr wanted = reka::CBstr::Make(name);
    const HRESULT result = manager->ResolveReactionsPackage(wanted.Get(), made.Receive());
    if (FAILED(result)) return FailCall(manager.Get(), result, "ResolveReactionsPackage", failure);
    if (!TakePackage(made, failure)) return false;
    if (Initialize(failure)) return true;
    // A manager gives a package for an unknown name too, which then can't be initialised.
    failure.text = "\"" + reka::Utf8FromUtf16(name) + "\": " + failure.text + " (rekasim list shows the names)";
    return false;
}

bool CPackageSession::Load(packagetext::CPropertyBag& bag, packagetext::CErrorLog& log, Failure& failure) {
    reka::CComRef<reka::ICapeThermoNewPropertyPackage> manager;
    if (!MakeManager(manager, failure)) return false;
    reka::CComRef<IDispatch> made;
    HRESULT result = manager->NewPropertyPackage(made.Receive());
    if (FAILED(result)) return FailCall(manager.Get(), result, "NewPropertyPackage", failure);
    if (!TakePackage(made, failure)) return false;
    package->InitNew();
    result = package->Load(&bag, &log);
    if (FAILED(result)) return FailLoad(result, log, failure);
    return Initialize(failure);
}

bool CPackageSession::TakePackage(const reka::CComRef<IDispatch>& made, Failure& failure) {
    if (made) package = Ask<IPersistPropertyBag>(made.Get());
    return package || FailMissingInterface("IPersistPropertyBag", failure);
}

bool CPackageSession::Initialize(Failure& failure) {
    isLoaded = true;
    const auto utilities = Ask<reka::ICapeUtilities>(package.Get());
    if (!utilities) return FailMissingInterface("ICapeUtilities", failure);
    const HRESULT result = utilities->Initialize();
    return SUCCEEDED(result) || FailCall(package.Get(), result, "Initialize", failure);
}

bool CPackageSession::ReadIdentity(std::u16string& name, std::u16string& description, Failure& failure) {
    const auto identification = Ask<reka::ICapeIdentification>(package.Get());
    if (!identification) return FailMissingInterface("ICapeIdentification", failure);
    reka::CBstr text;
    HRESULT result = identification->get_ComponentName(text.Receive());
    if (FAILED(result)) return FailCall(package.Get(), result, "ComponentName", failure);
    name = text.View();
    result = identification->get_ComponentDescription(text.Receive());
    if (FAILED(result)) return FailCall(package.Get(), result, "ComponentDescription", failure);
    description = text.View();
    return true;
}

bool CPackageSession::SetMaterial(CMaterial& material, ThermoVersion version, Failure& failure) {
    IDispatch* object = static_cast<reka::ICapeThermoMaterialObject*>(&material);
    HRESULT result = S_OK;
    if (version == ThermoVersion::Version11) {
        const auto context = Ask<reka::ICapeThermoMaterialContext>(package.Get());
        if (!context) return FailMissingInterface("ICapeThermoMaterialContext", failure);
        result = context->SetMaterial(object);
    } else {
        const auto context = Ask<reka::ICapeThermoContext10>(package.Get());
        if (!context) return FailMissingInterface("ICapeThermoContext", failure);
        result = context->SetMaterial(&object);
    }
    return SUCCEEDED(result) || FailCall(package.Get(), result, "SetMaterial", failure);
}

bool CPackageSession::SetReactionObject(CReactionResults& results, Failure& failure) {
    const auto context = Ask<reka::ICapeKineticReactionContext>(package.Get());
    if (!context) return FailMissingInterface("ICapeKineticReactionContext", failure);
    IDispatch* object = static_cast<reka::ICapeReactionProperties*>(&results);
    const HRESULT result = context->SetReactionObject(&object);
    if (FAILED(result)) return FailCall(package.Get(), result, "SetReactionObject", failure);
    reactionResults = &results;
    return true;
}

bool CPackageSession::ReadReactions(std::vector<Reaction>& reactions, Failure& failure) {
    reactions.clear();
    const auto chemistry = Ask<reka::ICapeReactionChemistry>(package.Get());
    if (!chemistry) return FailMissingInterface("ICapeReactionChemistry", failure);
    reka::CVariant list;
    const HRESULT result = chemistry->GetReactionsIds(list.Receive());
    std::vector<std::u16string> ids;
    if (FAILED(result) || !packagetext::ReadTexts(list.Get(), ids)) {
        return FailCall(package.Get(), result, "GetReactionsIds", failure);
    }
    for (const std::u16string& id : ids) {
        reactions.emplace_back().id = id;
        if (!ReadReaction(*chemistry, reactions.back(), failure)) return false;
    }
    return true;
}

bool CPackageSession::ReadReaction(reka::ICapeReactionChemistry& chemistry, Reaction& reaction, Failure& failure) {
    const reka::CBstr id = reka::CBstr::Make(reaction.id);
    reka::CapeReactionType type = reka::CAPE_EQUILIBRIUM;
    HRESULT result = chemistry.GetReactionType(id.Get(), &type);
    if (FAILED(result)) return FailCall(package.Get(), result, "GetReactionType", failure);
    reaction.isKinetic = type == reka::CAPE_KINETIC;
    reka::CBstr text;
    result = chemistry.GetReactionPhase(id.Get(), text.Receive());
    if (FAILED(result)) return FailCall(package.Get(), result, "GetReactionPhase", failure);
    reaction.phase = text.View();
    reka::CapeReactionRateBasis rateBasis = reka::CAPE_HOMOGENEOUS;
    result = chemistry.GetReactionRateBasis(id.Get(), &rateBasis);
    if (FAILED(result)) return FailCall(package.Get(), result, "GetReactionRateBasis", failure);
    reaction.isHeterogeneous = rateBasis == reka::CAPE_HETEROGENEOUS;
    result = chemistry.GetReactionConcBasis(id.Get(), text.Receive());
    if (FAILED(result)) return FailCall(package.Get(), result, "GetReactionConcBasis", failure);
    reaction.concentrationBasis = text.View();
    return ReadParticipants(chemistry, id.Get(), reaction, failure);
}

bool CPackageSession::ReadParticipants(reka::ICapeReactionChemistry& chemistry, BSTR id, Reaction& reaction,
                                       Failure& failure) {
    reka::CVariant idList;
    reka::CVariant chargeList;
    reka::CVariant casNumberList;
    HRESULT result =
        chemistry.GetReactionCompoundIds(id, idList.Receive(), chargeList.Receive(), casNumberList.Receive());
    if (FAILED(result)) return FailCall(package.Get(), result, "GetReactionCompoundIds", failure);
    reka::CVariant coefficientList;
    result = chemistry.GetStoichiometricCoefficients(id, coefficientList.Receive());
    if (FAILED(result)) return FailCall(package.Get(), result, "GetStoichiometricCoefficients", failure);

    std::vector<std::u16string> ids;
    std::vector<std::u16string> casNumbers;
    std::vector<double> charges;
    std::vector<double> coefficients;
    const bool isReadable = packagetext::ReadTexts(idList.Get(), ids) &&
                            packagetext::ReadTexts(casNumberList.Get(), casNumbers) &&
                            packagetext::ReadNumbers(chargeList.Get(), charges) &&
                            packagetext::ReadNumbers(coefficientList.Get(), coefficients);
    if (!isReadable || casNumbers.size() != ids.size() || charges.size() != ids.size() ||
        coefficients.size() != ids.size()) {
        failure = {"the package's compound lists don't fit together", "GetReactionCompoundIds",
                   "ICapeReactionChemistry"};
        return false;
    }
    for (std::size_t i = 0; i < ids.size(); ++i) {
        reaction.participants.push_back({ids[i], casNumbers[i], charges[i], coefficients[i]});
    }
    return true;
}

bool CPackageSession::Calculate(const char16_t* property, const std::u16string& phase,
                                const std::vector<std::u16string>& reactionIds, std::vector<double>& values,
                                Failure& failure) {
    const auto routine = Ask<reka::ICapeReactionsRoutine>(package.Get());
    if (!routine) return FailMissingInterface("ICapeReactionsRoutine", failure);
    const reka::CVariant properties = packagetext::VariantFromTexts(std::vector<std::u16string>{property});
    const reka::CVariant ids = packagetext::VariantFromTexts(reactionIds);
    const reka::CBstr phaseText = reka::CBstr::Make(phase);
    if (reactionResults) reactionResults->Clear();
    HRESULT result = routine->CalcReactionProp(properties.Get(), phaseText.Get(), ids.Get(), nullptr);
    if (FAILED(result)) return FailCall(package.Get(), result, "CalcReactionProp", failure);
    if (!reactionResults) return FailMissingInterface("ICapeReactionProperties", failure);

    const reka::CBstr propertyText = reka::CBstr::Make(property);
    reka::CVariant numbers;
    result =
        reactionResults->GetReactionProp(propertyText.Get(), phaseText.Get(), ids.Get(), nullptr, numbers.Receive());
    if (SUCCEEDED(result) && packagetext::ReadNumbers(numbers.Get(), values)) return true;
    return FailCall(static_cast<reka::ICapeReactionProperties*>(reactionResults), result, "GetReactionProp", failure);
}

bool CPackageSession::Save(packagetext::CPropertyBag& bag, Failure& failure) {
    const HRESULT result = package->Save(&bag, 1, 1);
    if (SUCCEEDED(result)) return true;
    failure = {"the package can't be saved: " + TextOfResult(result), "Save", "IPersistPropertyBag"};
    return false;
}

}  // namespace rekasim
