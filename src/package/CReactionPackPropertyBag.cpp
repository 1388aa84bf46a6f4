// The package in a simulator's document, by named entries.

#include "capeopen/ClassIds.h"
#include "package/CReactionPack.h"
#include "persistence/PropertyBagForm.h"

namespace reka {

HRESULT CReactionPack::GetClassID(CLSID* classId) {
    if (!classId) return E_POINTER;
    *classId = reactionPackClassId;
    return S_OK;
}

HRESULT CReactionPack::InitNew() {
    return S_OK;
}

HRESULT CReactionPack::Load(IPropertyBag* bag, IErrorLog* errorLog) {
    if (!bag) return E_POINTER;
    const CComRef<ECapeRoot> self(this);  // the bag may give the last count back
    try {
        auto loaded = boost::make_local_shared<ReactionPackDefinition>(simulationContext.Get());
        if (!ReadDefinitionFromBag(*loaded, {bag, errorLog, u"REKA"})) return E_FAIL;
        AdoptDefinition(std::move(loaded));
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

HRESULT CReactionPack::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) {
    if (!definition) return E_UNEXPECTED;
    if (!bag) return E_POINTER;
    const CComRef<ECapeRoot> self(this);
    try {
        const auto saved = definition;  // a bag that calls back may load another one
        const std::uint32_t savedChanges = changes;
        if (!WriteDefinitionToBag(*saved, *bag)) return E_FAIL;
        if (clearDirty && changes == savedChanges) dirty = 0;  // unless something was changed behind it
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

}  // namespace reka
