// SPDX-License-Identifier: MIT
// The package in a simulator's document, by named entries. A bag is the simulator's object: each entry read or written
// is a call out, from which the package may be called again.

#include "capeopen/ClassIds.h"
#include "package/CReactionPack.h"
#include "persistence/ReadBag.h"
#include "persistence/WriteBag.h"

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
    return LoadAside(E_FAIL, [&](ReactionPackDefinition& loaded) {
        return ReadDefinitionFromBag(loaded, {bag, errorLog, u"REKA"}) ? S_OK : E_FAIL;
    });
}

HRESULT CReactionPack::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) {
    if (!definition) return E_UNEXPECTED;
    if (!bag) return E_POINTER;
    return SaveAsItIs(clearDirty, [&](const ReactionPackDefinition& saved) {
        return WriteDefinitionToBag(saved, *bag) ? S_OK : E_FAIL;
    });
}

}  // namespace reka
