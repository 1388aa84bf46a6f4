// SPDX-License-Identifier: MIT
// The documents are written by hand, so the first fault is told by the path of its member and everything after it is
// passed over: the reader keeps it, and the fields are read one below the other without a test after each. A misspelt
// member would otherwise be a missing one, which for those that may be left out is no fault at all.

#include "material/ReadMaterial.h"

#include <cmath>
#include <initializer_list>
#include <set>

#include "FormatNumber.h"
#include "text/LetterCase.h"
#include "text/Utf8.h"

namespace rekasim {

namespace {

/// Reads the members of one object and keeps the first fault, named by the member's path.
class CMemberReader {
public:
    CMemberReader(const packagetext::Json& readObject, std::string objectPath)
        : object(readObject), path(std::move(objectPath)) {
        if (!object.is_object()) errorText = path + ": an object is expected";
    }

    const std::string& ErrorText() const { return errorText; }

    void AllowOnly(std::initializer_list<std::string_view> names) {
        if (!errorText.empty()) return;
        for (const auto& member : object.items()) {
            bool isKnown = member.key() == "comment";
            for (const std::string_view name : names) isKnown = isKnown || member.key() == name;
            if (!isKnown) Fail(member.key(), "rekasim knows no such member");
        }
    }

    std::u16string ReadText(const char* name, bool mustBeThere) {
        const packagetext::Json* value = Find(name, mustBeThere, "a text");
        if (!value) return {};
        if (!value->is_string()) {
            Fail(name, "a text is expected");
            return {};
        }
        std::u16string text = reka::Utf16FromUtf8(value->get_ref<const std::string&>());
        if (mustBeThere && text.empty()) Fail(name, "the text is empty");
        return text;
    }

    /// A number above 0.
    std::optional<double> ReadPositive(const char* name, bool mustBeThere) {
        const std::optional<double> number = ReadNumber(name, mustBeThere);
        if (number && !(*number > 0)) Fail(name, "a number above 0 is expected");
        return number;
    }

    std::optional<double> ReadNumber(const char* name, bool mustBeThere) {
        const packagetext::Json* value = Find(name, mustBeThere, "a number");
        if (value && value->is_number()) return value->get<double>();
        if (value) Fail(name, "a number is expected");
        return {};
    }

    void Fail(const std::string& name, const std::string& reason) {
        if (errorText.empty()) errorText = path + "." + name + ": " + reason;
    }

private:
    const packagetext::Json* Find(const char* name, bool mustBeThere, const char* kind) {
        if (!errorText.empty()) return nullptr;
        const auto found = object.find(name);
        if (found != object.end()) return &*found;
        if (mustBeThere) Fail(name, std::string("the member is missing, ") + kind + " is expected");
        return nullptr;
    }

    const packagetext::Json& object;
    std::string path;
    std::string errorText;
};

bool ReadCompound(const packagetext::Json& object, const std::string& path, MaterialCompound& compound,
                  std::string& errorText) {
    CMemberReader reader(object, path);
    reader.AllowOnly({"id", "moleFraction", "casNumber", "formula", "molecularWeight", "activityCoefficient",
                      "molarVolume", "vapourPressure", "heatCapacity"});
    compound.id = reader.ReadText("id", true);
    compound.moleFraction = reader.ReadNumber("moleFraction", true).value_or(0);
    if (!(compound.moleFraction >= 0)) reader.Fail("moleFraction", "a number from 0 to 1 is expected");
    compound.casNumber = reader.ReadText("casNumber", false);
    compound.formula = reader.ReadText("formula", false);
    compound.molecularWeight = reader.ReadPositive("molecularWeight", false);
    compound.activityCoefficient = reader.ReadPositive("activityCoefficient", false).value_or(1);
    compound.molarVolume = reader.ReadPositive("molarVolume", false);
    compound.vapourPressure = reader.ReadPositive("vapourPressure", false);
    compound.heatCapacity = reader.ReadPositive("heatCapacity", false);
    errorText = reader.ErrorText();
    return errorText.empty();
}

bool ReadCompounds(const packagetext::Json& material, MaterialState& state, std::string& errorText) {
    const auto list = material.find("compounds");
    if (list == material.end() || !list->is_array() || list->empty()) {
        errorText = "material.compounds: a list of compounds is expected";
        return false;
    }
    double sum = 0;
    std::set<std::u16string> ids;
    for (std::size_t i = 0; i < list->size(); ++i) {
        const std::string path = "material.compounds[" + std::to_string(i) + "]";
        if (!ReadCompound((*list)[i], path, state.compounds.emplace_back(), errorText)) return false;
        sum += state.compounds.back().moleFraction;
        if (ids.insert(reka::UpperCase(state.compounds.back().id)).second) continue;
        errorText = path + ".id: the compound is there twice";
        return false;
    }
    constexpr double tolerance = 1e-6;
    if (std::fabs(sum - 1) <= tolerance) return true;
    errorText = "material.compounds: the mole fractions add up to " + FormatNumber(sum, 10) + ", not to 1";
    return false;
}

}  // namespace

bool ReadMaterial(const packagetext::Json& document, MaterialState& state, std::string& errorText) {
    state = MaterialState();
    const auto material = document.find("material");
    if (material == document.end()) {
        errorText = "material: the member is missing";
        return false;
    }
    CMemberReader reader(*material, "material");
    reader.AllowOnly({"phase", "model", "temperature", "pressure", "standardPressure", "molarDensity", "compounds"});
    state.phase = reader.ReadText("phase", true);
    const std::u16string model = reader.ReadText("model", true);
    if (model != u"ideal gas" && model != u"liquid") reader.Fail("model", "\"ideal gas\" or \"liquid\" is expected");
    state.model = model == u"liquid" ? PhaseModel::Liquid : PhaseModel::IdealGas;
    state.temperature = reader.ReadPositive("temperature", true).value_or(0);
    state.pressure = reader.ReadPositive("pressure", true).value_or(0);
    state.standardPressure = reader.ReadPositive("standardPressure", false).value_or(state.standardPressure);
    state.molarDensity = reader.ReadPositive("molarDensity", false);
    errorText = reader.ErrorText();
    return errorText.empty() && ReadCompounds(*material, state, errorText);
}

}  // namespace rekasim
