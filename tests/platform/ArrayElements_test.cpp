// SPDX-License-Identifier: MIT
// Arrays of the types that the component itself doesn't make but a simulator or a script may pass: what an element
// takes, and that an object in an array is counted.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "platform/Automation.h"
#include "support/CountedFake.h"

namespace reka::test {
namespace {

TEST(ArrayElements, HaveTheSizeOfTheirType) {
    const std::pair<VARTYPE, UINT> rows[] = {{VT_I2, 2U},
                                             {VT_BOOL, 2U},
                                             {VT_I4, 4U},
                                             {VT_R4, 4U},
                                             {VT_ERROR, 4U},
                                             {VT_R8, 8U},
                                             {VT_BSTR, UINT{sizeof(BSTR)}},
                                             {VT_DISPATCH, UINT{sizeof(void*)}},
                                             {VT_UNKNOWN, UINT{sizeof(void*)}},
                                             {VT_VARIANT, UINT{sizeof(VARIANT)}}};
    for (const auto& [type, size] : rows) {
        SAFEARRAYBOUND bound = {2, 0};
        SAFEARRAY* const array = SafeArrayCreate(type, 1, &bound);
        ASSERT_NE(array, nullptr) << type;
        EXPECT_EQ(SafeArrayGetElemsize(array), size) << type;
        VARTYPE recorded = VT_EMPTY;
        EXPECT_EQ(SafeArrayGetVartype(array, &recorded), S_OK) << type;
        EXPECT_EQ(recorded, type);
        EXPECT_EQ(SafeArrayDestroy(array), S_OK);
    }
}

TEST(ArrayElements, KeepSmallNumbers) {
    SAFEARRAYBOUND bound = {2, 0};
    SAFEARRAY* const array = SafeArrayCreate(VT_I2, 1, &bound);
    std::int16_t number = -3;
    LONG index = 1;
    EXPECT_EQ(SafeArrayPutElement(array, &index, &number), S_OK);
    number = 7;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &number), S_OK);
    EXPECT_EQ(number, -3);
    index = 0;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &number), S_OK);
    EXPECT_EQ(number, 0);
    SafeArrayDestroy(array);
}

TEST(ArrayElements, HoldTheObjectsThatAreCopied) {
    CFakeObject object;
    SAFEARRAYBOUND bound = {2, 0};
    SAFEARRAY* const array = SafeArrayCreate(VT_UNKNOWN, 1, &bound);
    LONG index = 0;
    EXPECT_EQ(SafeArrayPutElement(array, &index, static_cast<IUnknown*>(&object)), S_OK);
    EXPECT_EQ(object.references.Held(), 1);
    IUnknown* read = nullptr;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &read), S_OK);
    EXPECT_EQ(read, static_cast<IUnknown*>(&object));
    EXPECT_EQ(object.references.Held(), 2);
    read->Release();
    index = 1;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &read), S_OK);
    EXPECT_EQ(read, nullptr);
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
    EXPECT_EQ(object.references.Held(), 0);
}

TEST(ArrayElements, OfTwoDimensionsLieApart) {
    SAFEARRAYBOUND bounds[] = {{2, 0}, {3, 1}};
    SAFEARRAY* const array = SafeArrayCreate(VT_I2, 2, bounds);
    ASSERT_NE(array, nullptr);
    std::int16_t number = 0;
    for (LONG row = 0; row < 2; ++row) {
        for (LONG column = 1; column <= 3; ++column) {
            LONG indices[] = {row, column};
            number = static_cast<std::int16_t>(10 * row + column);
            EXPECT_EQ(SafeArrayPutElement(array, indices, &number), S_OK);
        }
    }
    for (LONG row = 0; row < 2; ++row) {
        for (LONG column = 1; column <= 3; ++column) {
            LONG indices[] = {row, column};
            EXPECT_EQ(SafeArrayGetElement(array, indices, &number), S_OK);
            EXPECT_EQ(number, 10 * row + column);
        }
    }
    SafeArrayDestroy(array);
}

TEST(BagInterfaces, HaveTheIdentifiersOfThePlatform) {
    const std::uint8_t last[] = {0x81, 0x35, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51};
    for (const auto& [iid, first] : {std::pair(IID_IPropertyBag, 0x55272A00U), std::pair(IID_IErrorLog, 0x3127CA40U)}) {
        EXPECT_EQ(iid.Data1, first);
        EXPECT_TRUE(std::equal(std::begin(last), std::end(last), std::begin(iid.Data4)));
    }
    EXPECT_EQ(IID_IPropertyBag.Data2, 0x42CB);
    EXPECT_EQ(IID_IPropertyBag.Data3, 0x11CE);
    EXPECT_EQ(IID_IErrorLog.Data2, 0x446E);
    EXPECT_EQ(IID_IErrorLog.Data3, 0x11CE);
}

}  // namespace
}  // namespace reka::test
