// SPDX-License-Identifier: MIT
// Arrays that are lent to the simulator's objects. Each value of a calculation goes out in two arrays of one element,
// and to make and free those would take longer than to find the value. So an array is made once and lent again and
// again, and nobody can tell, since it goes in by value for the length of a call. What it was lent to may be faulty:
// the array is locked, so that nobody frees or resizes it, and is looked at before it is lent again.

#pragma once

#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

#include "capeopen/ArrayHelpers.h"
#include "platform/Holders.h"

namespace reka {

/// One array, made at the first need and kept. One user at a time: what was lent counts until the next one is asked
/// for.
class CLentArray {
public:
    CLentArray() = default;
    CLentArray(CLentArray&& other) noexcept
        : array(std::move(other.array)),
          elements(std::exchange(other.elements, nullptr)),
          elementCount(other.elementCount) {}
    CLentArray& operator=(CLentArray&&) = delete;
    ~CLentArray() { Discard(); }

    /// An array of one number. Null without memory.
    const VARIANT* LendNumber(double value) {
        if (!IsWhole(VT_R8, 1)) {
            Discard();
            if (!CreateArrayVariant(array.Get(), 1, VT_R8) || !Keep()) return nullptr;
        }
        *static_cast<double*>(elements) = value;
        return &array.Get();
    }

    /// An array of `count` strings, copies of what `textAt` gives for each index, null for an absent one; the empty
    /// variant for no strings. Null without memory.
    template <class TextAt>
    const VARIANT* LendTexts(std::size_t count, TextAt&& textAt) {
        if (HasTexts(count, textAt)) return &array.Get();
        Discard();
        const auto put = [&](SAFEARRAY& made, LONG index) {
            return PutString(made, index, textAt(static_cast<std::size_t>(index)));
        };
        if (!CreateListVariant(array.Get(), count, VT_BSTR, put) || !Keep()) return nullptr;
        return &array.Get();
    }

    /// Whether the array is as it was made, with these strings.
    template <class TextAt>
    bool HasTexts(std::size_t count, TextAt&& textAt) const {
        if (count == 0) return array.Get().vt == VT_EMPTY;
        if (!IsWhole(VT_BSTR, count)) return false;
        for (std::size_t i = 0; i < count; ++i) {
            if (!IsSameString(static_cast<const BSTR*>(elements)[i], textAt(i))) return false;
        }
        return true;
    }

    /// The array as it was last lent.
    const VARIANT& Get() const { return array.Get(); }

    /// Gives the array back, unless somebody still has it locked or has bent it: then it is left to him. Without an
    /// array nothing happens.
    void Discard();

private:
    static bool IsSameString(BSTR left, BSTR right) {
        if (!left || !right) return left == right;
        const UINT length = SysStringLen(left);
        return length == SysStringLen(right) && std::memcmp(left, right, length * sizeof(OLECHAR)) == 0;
    }

    /// Whether the array has the size and the elements with which it was made.
    bool IsInShape() const {
        const SAFEARRAY& held = *array.Get().parray;
        return held.pvData == elements && held.cDims == 1 && held.rgsabound[0].lLbound == 0 &&
               held.rgsabound[0].cElements == elementCount;
    }
    /// Whether nobody has laid hands on it.
    bool IsWhole(VARTYPE elementType, std::size_t count) const {
        return array.Get().vt == (VT_ARRAY | elementType) && elementCount == count && IsInShape() &&
               array.Get().parray->cLocks == 1;
    }

    /// Locks the array that has just been made. False if it can't be locked; it is given back then.
    bool Keep();

    CVariant array;
    void* elements = nullptr;  // of the array, as it was made
    std::size_t elementCount = 0;
};

/// What one calculation lends, kept for the next one. For one calculation at a time.
class CCallArrays {
public:
    /// From here on the reactions are those of the definition with this stamp; what was made for those of another one
    /// goes.
    void UseFor(std::uint64_t definitionStamp, std::size_t reactionCount);

    CLentArray& Number() { return number; }
    CLentArray& Compounds() { return compounds; }
    /// An array of the id of the reaction with that index. Null without memory.
    const VARIANT* LendId(std::size_t reaction, BSTR id) {
        if (ids.size() <= reaction && !MakeRoomForIds()) return nullptr;
        return ids[reaction].LendTexts(1, [id](std::size_t) { return id; });
    }
    /// An array of the name of a property, or of a phase, as the material is asked with both. Null without memory.
    const VARIANT* LendProperty(BSTR text) { return properties.Lend(text); }
    const VARIANT* LendPhase(BSTR text) { return phases.Lend(text); }

    /// Room for the indices of the reactions that a call selects.
    std::vector<std::uint32_t> selection;

private:
    /// A few arrays of one text each, the newest in the place of the oldest.
    class CTexts {
    public:
        const VARIANT* Lend(BSTR text);

    private:
        static constexpr std::size_t mostTexts = 8;
        CLentArray lists[mostTexts];
        std::size_t oldest = 0;
    };

    bool MakeRoomForIds();

    std::uint64_t stamp = 0;  // of the definition, 0 for none
    std::size_t idCount = 0;
    CLentArray number;
    CLentArray compounds;
    std::vector<CLentArray> ids;  // by the index of the reaction
    CTexts properties;
    CTexts phases;
};

}  // namespace reka
