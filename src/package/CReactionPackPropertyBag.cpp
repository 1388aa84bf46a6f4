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
    try {
        auto loaded = std::make_shared<ReactionPackDefinition>(simulationContext.Get());
        {
            const COwnArithmetic arithmetic;
            if (!ReadDefinitionFromBag(*loaded, {bag, errorLog, u"REKA"}, arithmetic)) return E_FAIL;
        }
        AdoptDefinition(std::move(loaded));
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

HRESULT CReactionPack::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) {
    if (!definition) return E_UNEXPECTED;
    if (!bag) return E_POINTER;
    try {
        const auto saved = definition;  // a bag that calls back may load another one
        const COwnArithmetic arithmetic;
        if (!WriteDefinitionToBag(*saved, *bag, arithmetic)) return E_FAIL;
        if (clearDirty) dirty = 0;
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

}  // namespace reka
