// SPDX-License-Identifier: MIT
// Paths in the tests are UTF-8, as the programs take them; the library of the language has its own form of them.

#include "DocumentFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

#include "CPackageSession.h"
#include "RunRekasim.h"
#include "material/ReadMaterial.h"
#include "packagetext/BagMembers.h"
#include "support/TestFiles.h"

namespace rekasim {

namespace {

std::filesystem::path NativePath(const std::string& path) {
    return {std::u8string(path.begin(), path.end())};
}

std::string Utf8Path(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string ReadWhole(const std::string& path) {
    std::ifstream file(NativePath(path), std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

}  // namespace

std::string ExamplePath(const std::string& name) {
    return reka::test::TestFile(REKASIM_DOCUMENTS) + "/" + name;
}

std::vector<std::string> ExampleNames() {
    std::vector<std::string> names;
    for (const auto& file : std::filesystem::directory_iterator(NativePath(reka::test::TestFile(REKASIM_DOCUMENTS)))) {
        if (file.path().extension() == ".json") names.push_back(Utf8Path(file.path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string ReadGuide() {
    return ReadWhole(reka::test::TestFile(REKASIM_GUIDE));
}

std::string ReadExampleText(const std::string& name) {
    return ReadWhole(ExamplePath(name));
}

packagetext::Json ReadExample(const std::string& name) {
    packagetext::Json content;
    std::string errorText;
    EXPECT_TRUE(packagetext::ReadDocument(ExamplePath(name), content, errorText)) << errorText;
    return content;
}

RunResult RunProgram(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    RunResult result;
    result.status = RunRekasim(arguments, out, err);
    result.out = out.str();
    result.err = err.str();
    return result;
}

double CalculateExample(const std::string& name, const char16_t* property, const std::u16string& reactionId,
                        double temperature) {
    constexpr double missing = std::numeric_limits<double>::quiet_NaN();
    const packagetext::Json content = ReadExample(name);
    const auto bag = packagetext::MakeObject<packagetext::CPropertyBag>();
    const auto log = packagetext::MakeObject<packagetext::CErrorLog>();
    const auto material = packagetext::MakeObject<CMaterial>();
    const auto results = packagetext::MakeObject<CReactionResults>();
    MaterialState state;
    Failure failure;
    CPackageSession session;
    const ThermoVersion version =
        content["package"]["thermoVersion"] == "1.1" ? ThermoVersion::Version11 : ThermoVersion::Version10;
    bool done =
        packagetext::FillBag(content["package"], *bag, failure.text) && ReadMaterial(content, state, failure.text);
    if (temperature > 0) state.temperature = temperature;
    const std::u16string phase = state.phase;
    material->SetState(state);
    std::vector<double> values;
    done = done && session.Load(*bag, *log, failure) && session.SetReactionObject(*results, failure) &&
           session.SetMaterial(*material, version, failure) &&
           session.Calculate(property, phase, {reactionId}, values, failure);
    EXPECT_TRUE(done) << name << ": " << failure.text;
    EXPECT_TRUE(log->Reports().empty()) << name;
    return done ? values[0] : missing;
}

std::u16string LastError(IUnknown* object) {
    reka::CComRef<reka::ECapeUser> user;
    void* found = nullptr;
    if (FAILED(object->QueryInterface(reka::ECapeUser::iid, &found))) return u"(no ECapeUser)";
    user.Reset(static_cast<reka::ECapeUser*>(found));
    reka::CBstr description;
    user->get_description(description.Receive());
    return std::u16string(description.View());
}

MaterialState SampleGas() {
    MaterialState gas;
    gas.phase = u"Vapor";
    gas.temperature = 400;
    gas.pressure = 200000;
    gas.compounds = {{u"Argon", u"7440-37-1", u"Ar", 39.95, 0.5, 1, {}, {}},
                     {u"n-Butane", u"106-97-8", u"C4H10", 58.12, 0.3, 1, {}, {}},
                     {u"Tracer", u"", u"", {}, 0.2, 1, {}, {}}};
    return gas;
}

MaterialState SampleLiquid() {
    MaterialState liquid;
    liquid.phase = u"Liquid";
    liquid.model = PhaseModel::Liquid;
    liquid.temperature = 300;
    liquid.pressure = 100000;
    liquid.compounds = {{u"Water", u"7732-18-5", u"H2O", 18.0, 0.75, 2.0, 2e-5, 4000.0},
                        {u"Ethanol", u"64-17-5", u"C2H5OH", 46.0, 0.25, 1.5, 6e-5, 8000.0}};
    return liquid;
}

}  // namespace rekasim
