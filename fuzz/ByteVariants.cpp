// SPDX-License-Identifier: MIT
// Each value is its kind in a byte, counted round, and what that kind needs behind it. A list of values holds single
// ones alone, so nothing recurses.

#include "ByteVariants.h"

#include <algorithm>
#include <bit>
#include <span>

#include "BagAnswers.h"
#include "platform/CodePage.h"

namespace reka::fuzz {

namespace {

constexpr std::uint8_t singleKinds = 8;
constexpr std::uint8_t listKinds = 8;

}  // namespace

std::uint8_t CByteVariants::Byte() {
    std::uint8_t byte = 0;
    reader.ReadU8(byte);
    return byte;
}

CBstr CByteVariants::Text() {
    std::uint32_t length = Byte();
    length |= std::uint32_t{Byte()} << 8;
    if (length & absentTextBit) return {};
    std::span<const std::uint8_t> bytes;
    if (!reader.ReadBytes(std::min<std::size_t>(length, reader.Remaining()), bytes)) return {};
    return BstrFromString(WideText({reinterpret_cast<const char*>(bytes.data()), bytes.size()}));
}

SAFEARRAY* CByteVariants::Array(VARTYPE type, UINT dimensions, ULONG& count) {
    const auto lowerBound = static_cast<std::int8_t>(Byte());
    count = Byte();
    SAFEARRAYBOUND bounds[2] = {{count, lowerBound}, {1, 0}};
    return SafeArrayCreate(type, dimensions, bounds);
}

HRESULT CByteVariants::Texts(VARIANT& value, UINT dimensions) {
    ULONG count = 0;
    value.parray = Array(VT_BSTR, dimensions, count);
    value.vt = VT_ARRAY | VT_BSTR;
    for (ULONG i = 0; i < count; ++i) static_cast<BSTR*>(value.parray->pvData)[i] = Text().Detach();
    return S_OK;
}

HRESULT CByteVariants::Numbers(VARIANT& value, VARTYPE saidToBe) {
    ULONG count = 0;
    value.parray = Array(VT_R8, 1, count);
    value.vt = static_cast<VARTYPE>(VT_ARRAY | saidToBe);
    for (ULONG i = 0; i < count; ++i) {
        double number = 0;
        reader.ReadF64(number);
        static_cast<double*>(value.parray->pvData)[i] = number;
    }
    return S_OK;
}

CVariant CByteVariants::Any() {
    const std::uint8_t kind = Byte() % (singleKinds + listKinds);
    return kind < singleKinds ? Single(kind) : List(static_cast<std::uint8_t>(kind - singleKinds));
}

CVariant CByteVariants::Single(std::uint8_t kind) {
    CVariant made;
    VARIANT& value = made.Get();
    switch (kind) {
        case 1:
            value.bstrVal = Text().Detach();
            value.vt = VT_BSTR;
            break;
        case 2:
            reader.ReadF64(value.dblVal);
            value.vt = VT_R8;
            break;
        case 3:
            value.lVal = Byte();
            value.vt = VT_I4;
            break;
        case 4:
            value.iVal = Byte();
            value.vt = VT_I2;
            break;
        case 5:
            value.fltVal = std::bit_cast<float>(std::uint32_t{Byte()} << 24);
            value.vt = VT_R4;
            break;
        case 6:
            value.vt = VT_DISPATCH;  // no object
            break;
        case 7:
            value.vt = VT_ERROR;
            break;
        default:
            break;
    }
    return made;
}

CVariant CByteVariants::List(std::uint8_t kind) {
    CVariant made;
    VARIANT& value = made.Get();
    ULONG count = 0;
    switch (kind) {
        case 0:
            Texts(value, 1);
            break;
        case 1:
            Numbers(value, VT_R8);
            break;
        case 2:
            Texts(value, 2);
            break;
        case 3:
            Numbers(value, VT_BSTR);
            break;
        case 4:
            Numbers(value, VT_VARIANT);
            break;
        case 5:
            value.parray = Array(VT_VARIANT, 1, count);
            value.vt = VT_ARRAY | VT_VARIANT;
            for (ULONG i = 0; i < count; ++i) {
                static_cast<VARIANT*>(value.parray->pvData)[i] = Single(Byte() % singleKinds).Detach();
            }
            break;
        case 6:
            value.vt = VT_ARRAY | VT_BSTR;  // and no array
            break;
        default:
            value.parray = Array(VT_I4, 1, count);
            value.vt = VT_ARRAY | VT_I4;
            break;
    }
    return made;
}

}  // namespace reka::fuzz
