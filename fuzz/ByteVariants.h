// SPDX-License-Identifier: MIT
// Values of a host's, made of bytes: right ones and all that a host may get wrong. The forms of a bag's answers are
// told in BagAnswers.h. Behind the end of the bytes all are zeros.

#pragma once

#include <cstdint>

#include "persistence/ByteReader.h"
#include "platform/Holders.h"

namespace reka::fuzz {

class CByteVariants {
public:
    explicit CByteVariants(CByteReader& bytes) : reader(bytes) {}

    std::uint8_t Byte();
    /// A text of up to the length that the next two bytes say, or an absent one.
    CBstr Text();
    /// A list of texts, in `dimensions` of which all but the first have one element. Always `S_OK`.
    HRESULT Texts(VARIANT& value, UINT dimensions);
    /// A list of doubles that says it is one of `saidToBe`. Always `S_OK`.
    HRESULT Numbers(VARIANT& value, VARTYPE saidToBe);

    /// Any value: a single one, a list, a list of values, a list that isn't there, or one that is locked.
    CVariant Any();

private:
    CVariant Single(std::uint8_t kind);
    CVariant List(std::uint8_t kind);
    SAFEARRAY* Array(VARTYPE type, UINT dimensions, ULONG& count);

    CByteReader& reader;
};

}  // namespace reka::fuzz
