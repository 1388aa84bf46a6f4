// SPDX-License-Identifier: MIT
// The upkeep of arrays that are lent. An array that somebody has laid hands on is given back as far as that goes, and
// another one made: to mend it would mean to trust what was done to it.

#include "package/LentArray.h"

#include <new>

namespace reka {

bool CLentArray::Keep() {
    if (array.Get().vt == VT_EMPTY) return true;
    if (FAILED(SafeArrayLock(array.Get().parray))) {
        array.Reset();
        return false;
    }
    elements = array.Get().parray->pvData;
    elementCount = array.Get().parray->rgsabound[0].cElements;
    return true;
}

void CLentArray::Discard() {
    if (array.Get().vt == VT_EMPTY) return;
    SafeArrayUnlock(array.Get().parray);
    if (!IsInShape() || FAILED(VariantClear(&array.Get()))) array.Detach();
}

void CCallArrays::UseFor(std::uint64_t definitionStamp, std::size_t reactionCount) {
    if (stamp == definitionStamp) return;
    ids.clear();
    compounds.Discard();
    stamp = definitionStamp;
    idCount = reactionCount;
}

bool CCallArrays::MakeRoomForIds() {
    try {
        ids.resize(idCount);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

const VARIANT* CCallArrays::CTexts::Lend(BSTR text) {
    const auto textAt = [text](std::size_t) { return text; };
    for (CLentArray& list : lists) {
        if (list.HasTexts(1, textAt)) return &list.Get();
    }
    CLentArray& list = lists[oldest];
    oldest = (oldest + 1) % mostTexts;
    return list.LendTexts(1, textAt);
}

}  // namespace reka
