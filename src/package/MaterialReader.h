// SPDX-License-Identifier: MIT
// What expressions read from the material, fetched for one calculation.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "capeopen/CapeOpenInterfaces.h"
#include "package/LentArray.h"
#include "platform/HostArithmetic.h"
#include "records/Definition.h"

namespace reka {

/// The strings that every request to a material needs, made once.
struct MaterialWords {
    CBstr temperature = CBstr::Make(u"temperature");
    CBstr pressure = CBstr::Make(u"pressure");
    CBstr fraction = CBstr::Make(u"fraction");
    CBstr activity = CBstr::Make(u"activity");
    CBstr fugacity = CBstr::Make(u"fugacity");
    CBstr density = CBstr::Make(u"density");
    CBstr mole = CBstr::Make(u"mole");
    CBstr mixture = CBstr::Make(u"mixture");
    CBstr overall = CBstr::Make(u"overall");
    CVariant emptyCompoundList;  // passed where a value doesn't belong to a compound; never filled
};

/// Fills the working values of a definition from a material, through the interfaces that the definition's
/// `thermoVersion` selects. Lives during one call, on a material that is lent to it, and holds no interface of the
/// material's between two requests.
class CMaterialReader {
public:
    /// `materialCompoundCount` and `compoundMap` (per compound of the definition its index in the material's list) are
    /// those of the binding. All arguments are lent and outlive the reader, and `arithmetic` is in force.
    CMaterialReader(ReactionPackDefinition& definition, IDispatch* material, const MaterialWords& words,
                    const std::vector<std::int32_t>& compoundMap, std::int32_t materialCompoundCount,
                    CCallArrays& arrays, const COwnArithmetic& arithmetic);

    /// Reads what the bits of `dependencies` ask for, each quantity once, in SI units. False with the reason in
    /// `errorText` at the first request that fails; what was filled before stays filled. No bits, no request.
    bool FetchExpressionInputs(std::uint32_t dependencies, BSTR phase, std::u16string& errorText) {
        return (dependencies == 0 && material) || FetchInputs(dependencies, phase, errorText);
    }

private:
    bool FetchInputs(std::uint32_t dependencies, BSTR phase, std::u16string& errorText);
    bool ReadInputs(std::uint32_t dependencies, BSTR phase, std::u16string& errorText);

    /// One property as it is asked for.
    struct Request {
        BSTR property;
        bool calculateFirst;
        const VARIANT* compoundList;
        std::int32_t expectedCount;
        bool omitCalcType;  // otherwise "mixture"
        bool moleBasis;     // otherwise without a basis
    };

    bool ReadMaterialProperty(const Request& request, BSTR phase, double* results, std::u16string& errorText);
    bool ReadScalar(BSTR property, BSTR phase, double& result, std::u16string& errorText);
    bool ReadPerCompound(BSTR property, BSTR phase, double* results, std::u16string& errorText);
    bool ReadDensity(BSTR phase, std::u16string& errorText);
    void MakeMolarities();
    bool MakeCompoundList(std::u16string& errorText);

    bool RequestByVersion10(const Request& request, BSTR phase, VARIANT& answer, std::u16string& errorText);
    bool RequestByVersion11(const Request& request, BSTR phase, VARIANT& answer, std::u16string& errorText);
    bool TakeValues(const Request& request, BSTR phase, const VARIANT& answer, double* results,
                    std::u16string& errorText) const;

    /// An interface of the material for the time of a request.
    template <class Interface>
    CComRef<Interface> AskMaterial(const char16_t* interfaceName, std::u16string& errorText) const;
    bool IsTemperatureOrPressure(BSTR property) const;

    ReactionPackDefinition& definition;
    IDispatch* const material;
    const MaterialWords& words;
    const std::vector<std::int32_t>& compoundMap;
    const std::int32_t materialCompoundCount;
    CCallArrays& arrays;
    const COwnArithmetic& arithmetic;
    const VARIANT* compoundList;  // the material's identifiers of the package's compounds; empty until they are needed
    double density = 0.0;         // mol/m3
    bool hasDensity = false;      // it was asked for, for the present property
};

}  // namespace reka
