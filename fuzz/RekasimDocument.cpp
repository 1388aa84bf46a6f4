// SPDX-License-Identifier: MIT
// Any text as a document of rekasim's. What is parsed is written and parsed again to the same; a material that is read
// makes sense; and a package that loads out of its members saves members that lead to the same ones again.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "QuietMessages.h"
#include "capeopen/CapeOpenInterfaces.h"
#include "material/ReadMaterial.h"
#include "package/CreateReactionPack.h"
#include "packagetext/BagMembers.h"
#include "packagetext/DocumentShape.h"
#include "packagetext/LoadFaults.h"

namespace {

using packagetext::Json;

void Require(bool holds) {
    if (!holds) std::abort();
}

void ReadMaterial(const Json& content) {
    rekasim::MaterialState state;
    std::string errorText;
    if (!rekasim::ReadMaterial(content, state, errorText)) return Require(!errorText.empty());
    double sum = 0;
    for (const rekasim::MaterialCompound& compound : state.compounds) {
        Require(compound.moleFraction >= 0);
        sum += compound.moleFraction;
    }
    Require(state.temperature > 0 && state.pressure > 0 && std::isfinite(state.temperature + state.pressure));
    Require(std::fabs(sum - 1) < 1e-3);
}

/// Loads the members and saves them; false if they don't load.
bool LoadAndSave(const Json& members, Json& saved) {
    const auto bag = packagetext::MakeObject<packagetext::CPropertyBag>();
    const auto log = packagetext::MakeObject<packagetext::CErrorLog>();
    const auto target = packagetext::MakeObject<packagetext::CPropertyBag>();
    std::string errorText;
    if (!packagetext::FillBag(members, *bag, errorText)) return false;
    reka::CComRef<IPersistPropertyBag> package;
    void* made = nullptr;
    Require(reka::CreateReactionPack(IID_IPersistPropertyBag, &made) == S_OK);
    package.Reset(static_cast<IPersistPropertyBag*>(made));
    const bool isLoaded = SUCCEEDED(package->Load(bag.Get(), log.Get()));
    packagetext::FindLoadFaults(members, *bag, *log);
    if (!isLoaded) return false;
    Require(package->Save(target.Get(), 1, 1) == S_OK);
    saved = packagetext::MembersFromBag(*target);
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reka::fuzz::SilenceMessages();
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::string errorText;
    if (!packagetext::CheckShape(text, {64, 10'000}, errorText)) return 0;
    const Json content = Json::parse(text, nullptr, false);
    if (!content.is_object()) return 0;
    Require(Json::parse(packagetext::TextOfDocument(content)) == content);
    ReadMaterial(content);
    const auto package = content.find("package");
    Json saved;
    Json savedAgain;
    if (package == content.end() || !package->is_object() || !LoadAndSave(*package, saved)) return 0;
    Require(LoadAndSave(saved, savedAgain) && savedAgain == saved);
    return 0;
}
