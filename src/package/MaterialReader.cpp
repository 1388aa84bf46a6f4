// SPDX-License-Identifier: MIT
// The requests to the material. A version 1.0 material is asked by the identifiers of the package's compounds; one of
// version 1.1 answers for all of its own compounds, and the map of the binding picks the package's.

#include "package/MaterialReader.h"

#include <charconv>
#include <cstddef>
#include <cstring>

#include "capeopen/ArrayHelpers.h"
#include "capeopen/ErrorTexts.h"

namespace reka {

namespace {

bool IsVersion11(const ReactionPackDefinition& definition) {
    return definition.thermoVersion == ThermoVersion::Version11;
}

std::u16string Decimal(std::int32_t number) {
    char digits[16];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, number);
    return std::u16string(digits, end.ptr);
}

/// Whether `answer` holds an array of doubles, of whatever shape.
bool IsDoubleArray(const VARIANT& answer) {
    return answer.vt == (VT_ARRAY | VT_R8) && answer.parray && HoldsElements(answer.parray, VT_R8);
}

/// The elements of a double array, if it is one-dimensional and holds the indices from 0 to `count` - 1; otherwise
/// null.
const double* ElementsOf(const VARIANT& answer, std::int32_t count) {
    const SAFEARRAY& array = *answer.parray;
    const bool fits = array.cDims == 1 && array.rgsabound[0].lLbound == 0 &&
                      array.rgsabound[0].cElements == static_cast<ULONG>(count);
    return fits ? static_cast<const double*>(array.pvData) : nullptr;
}

}  // namespace

CMaterialReader::CMaterialReader(ReactionPackDefinition& packageDefinition, IDispatch* boundMaterial,
                                 const MaterialWords& materialWords, const std::vector<std::int32_t>& map,
                                 std::int32_t compoundCount, CCallArrays& lentArrays,
                                 const COwnArithmetic& ownArithmetic)
    : definition(packageDefinition),
      material(boundMaterial),
      words(materialWords),
      compoundMap(map),
      materialCompoundCount(compoundCount),
      arrays(lentArrays),
      arithmetic(ownArithmetic),
      compoundList(&materialWords.emptyCompoundList.Get()) {}

bool CMaterialReader::FetchInputs(std::uint32_t dependencies, BSTR phase, std::u16string& errorText) {
    if (!material) {
        errorText = u"Material not set";
        return false;
    }
    hasDensity = false;
    // To ask costs less than to change the settings for each question; nothing is calculated in between.
    const bool areRead = arithmetic.Outside([&] { return ReadInputs(dependencies, phase, errorText); });
    if (hasDensity) MakeMolarities();
    return areRead;
}

bool CMaterialReader::ReadInputs(std::uint32_t dependencies, BSTR phase, std::u16string& errorText) {
    const std::uint32_t compoundBits = dependencies & ~(dependency::temperature | dependency::pressure);
    if ((dependencies & dependency::temperature) &&
        !ReadScalar(words.temperature.Get(), phase, definition.temperature, errorText)) {
        return false;
    }
    if ((dependencies & dependency::pressure) &&
        !ReadScalar(words.pressure.Get(), phase, definition.pressure, errorText)) {
        return false;
    }
    if (compoundBits == 0) return true;
    if (!MakeCompoundList(errorText)) return false;
    if (dependencies & (dependency::moleFraction | dependency::molarity)) {
        const Request fraction = {words.fraction.Get(),
                                  false,
                                  compoundList,
                                  static_cast<std::int32_t>(definition.compounds.size()),
                                  true,
                                  true};
        if (!ReadMaterialProperty(fraction, phase, definition.moleFraction.Get(), errorText)) return false;
    }
    if ((dependencies & dependency::molarity) && !ReadDensity(phase, errorText)) return false;
    if ((dependencies & dependency::activity) &&
        !ReadPerCompound(words.activity.Get(), phase, definition.activity.Get(), errorText)) {
        return false;
    }
    return !(dependencies & dependency::fugacity) ||
           ReadPerCompound(words.fugacity.Get(), phase, definition.fugacity.Get(), errorText);
}

bool CMaterialReader::MakeCompoundList(std::u16string& errorText) {
    if (IsVersion11(definition)) return true;
    const auto idAt = [this](std::size_t i) { return definition.compounds[i]->id.Get(); };
    compoundList = arrays.Compounds().LendTexts(definition.compounds.size(), idAt);
    if (!compoundList) errorText = u"out of memory";
    return compoundList != nullptr;
}

bool CMaterialReader::ReadScalar(BSTR property, BSTR phase, double& result, std::u16string& errorText) {
    const Request request = {property, false, &words.emptyCompoundList.Get(), 1, true, false};
    return ReadMaterialProperty(request, phase, &result, errorText);
}

bool CMaterialReader::ReadPerCompound(BSTR property, BSTR phase, double* results, std::u16string& errorText) {
    const auto count = static_cast<std::int32_t>(definition.compounds.size());
    return ReadMaterialProperty({property, true, compoundList, count, false, false}, phase, results, errorText);
}

bool CMaterialReader::ReadDensity(BSTR phase, std::u16string& errorText) {
    const Request request = {words.density.Get(), true, &words.emptyCompoundList.Get(), 1, false, true};
    hasDensity = ReadMaterialProperty(request, phase, &density, errorText);
    return hasDensity;
}

void CMaterialReader::MakeMolarities() {
    for (std::size_t i = 0; i < definition.compounds.size(); ++i) {
        definition.molarity[i] = definition.moleFraction[i] * density;
    }
}

bool CMaterialReader::ReadMaterialProperty(const Request& request, BSTR phase, double* results,
                                           std::u16string& errorText) {
    CVariant answer;
    const bool answered = IsVersion11(definition) ? RequestByVersion11(request, phase, answer.Get(), errorText)
                                                  : RequestByVersion10(request, phase, answer.Get(), errorText);
    return answered && TakeValues(request, phase, answer.Get(), results, errorText);
}

template <class Interface>
CComRef<Interface> CMaterialReader::AskMaterial(const char16_t* interfaceName, std::u16string& errorText) const {
    void* found = nullptr;
    HRESULT result = material->QueryInterface(InterfaceId<Interface>(), &found);
    if (FAILED(result)) found = nullptr;
    if (SUCCEEDED(result) && !found) result = E_NOINTERFACE;
    if (!found) {
        errorText = std::u16string(u"Failed to obtain ") + interfaceName + u" from material object: " +
                    GetSystemErrorText(result);
    }
    CComRef<Interface> owned;
    owned.Reset(static_cast<Interface*>(found));
    return owned;
}

bool CMaterialReader::RequestByVersion10(const Request& request, BSTR phase, VARIANT& answer,
                                         std::u16string& errorText) {
    const auto object = AskMaterial<ICapeThermoMaterialObject>(u"ICapeThermoMaterialObject", errorText);
    if (!object) return false;
    const BSTR calcType = request.omitCalcType ? nullptr : words.mixture.Get();
    const auto calcTypeText = [calcType] {
        return calcType ? u" (calcType " + StringFromBstr(calcType) + u")" : std::u16string();
    };
    if (request.calculateFirst) {
        const VARIANT* const props = arrays.LendProperty(request.property);
        const VARIANT* const phases = props ? arrays.LendPhase(phase) : nullptr;
        if (!phases) {
            errorText = u"out of memory";
            return false;
        }
        const HRESULT result = object->CalcProp(*props, *phases, calcType);
        if (FAILED(result)) {
            errorText = u"Failed to calculate " + StringFromBstr(request.property) + u" for phase " +
                        StringFromBstr(phase) + calcTypeText() + u": " + GetCapeErrorText(object.Get(), result);
            return false;
        }
    }
    // To a material of version 1.0 temperature and pressure are properties of the whole, whatever the phase.
    const BSTR askedPhase = IsTemperatureOrPressure(request.property) ? words.overall.Get() : phase;
    const BSTR basis = request.moleBasis ? words.mole.Get() : nullptr;
    const HRESULT result =
        object->GetProp(request.property, askedPhase, *request.compoundList, calcType, basis, &answer);
    if (SUCCEEDED(result)) return true;
    errorText = u"Failed to obtain " + StringFromBstr(request.property) + u" for phase " + StringFromBstr(askedPhase) +
                calcTypeText() + u": " + GetCapeErrorText(object.Get(), result);
    return false;
}

bool CMaterialReader::RequestByVersion11(const Request& request, BSTR phase, VARIANT& answer,
                                         std::u16string& errorText) {
    if (request.calculateFirst) {
        const auto routine = AskMaterial<ICapeThermoPropertyRoutine>(u"ICapeThermoPropertyRoutine", errorText);
        if (!routine) return false;
        const VARIANT* const props = arrays.LendProperty(request.property);
        if (!props) {
            errorText = u"out of memory";
            return false;
        }
        const HRESULT result = routine->CalcSinglePhaseProp(*props, phase);
        if (FAILED(result)) {
            errorText = u"CalcSinglePhaseProp failed for property " + StringFromBstr(request.property) + u", phase " +
                        StringFromBstr(phase) + u": " + GetCapeErrorText(routine.Get(), result);
            return false;
        }
    }
    const auto object = AskMaterial<ICapeThermoMaterial>(u"ICapeThermoMaterial", errorText);
    if (!object) return false;
    const BSTR basis = request.moleBasis ? words.mole.Get() : nullptr;
    const HRESULT result = object->GetSinglePhaseProp(request.property, phase, basis, &answer);
    if (SUCCEEDED(result)) return true;
    errorText = u"Failed to obtain " + StringFromBstr(request.property) + u" for phase " + StringFromBstr(phase) +
                u": " + GetCapeErrorText(object.Get(), result);
    return false;
}

bool CMaterialReader::TakeValues(const Request& request, BSTR phase, const VARIANT& answer, double* results,
                                 std::u16string& errorText) const {
    const bool isMapped = IsVersion11(definition) && request.expectedCount > 1;
    const bool isDoubleArray = IsDoubleArray(answer);
    const std::int32_t count = isMapped ? materialCompoundCount : request.expectedCount;
    const double* const values = isDoubleArray ? ElementsOf(answer, count) : nullptr;
    bool taken = values != nullptr;
    for (std::int32_t i = 0; taken && i < request.expectedCount; ++i) {
        const auto compound = static_cast<std::size_t>(i);
        // A map of an earlier definition may be too short or point behind the material's list.
        taken = !isMapped || compound < compoundMap.size();
        const std::int32_t index = taken && isMapped ? compoundMap[compound] : i;
        taken = taken && index >= 0 && index < count;
        if (taken) std::memcpy(&results[compound], values + index, sizeof(double));
    }
    if (taken) return true;
    errorText = u"Invalid values for " + StringFromBstr(request.property);
    if (!IsTemperatureOrPressure(request.property)) errorText += u" for phase " + StringFromBstr(phase);
    if (!IsVersion11(definition) && !request.omitCalcType) {
        errorText += u" (calcType " + StringFromBstr(words.mixture.Get()) + u")";
    }
    // An answer of another type is told the count of the material's compounds where those were asked for.
    errorText += u": expected a double array with " +
                 Decimal(isMapped && !isDoubleArray ? materialCompoundCount : request.expectedCount) + u" elements";
    return false;
}

bool CMaterialReader::IsTemperatureOrPressure(BSTR property) const {
    return property == words.temperature.Get() || property == words.pressure.Get();
}

}  // namespace reka
