// SPDX-License-Identifier: MIT
// Null elements of arrays that a simulator made: by their own bounds, and not where the array can't be reached.

#include <gtest/gtest.h>

#include "capeopen/ArrayHelpers.h"
#include "platform/Holders.h"
#include "support/Values.h"

namespace reka::test {
namespace {

/// Three texts with the bounds 2 to 4.
class PutNull : public testing::Test {
protected:
    PutNull() {
        for (LONG index = 2; index <= 4; ++index) {
            LONG place = index;
            EXPECT_EQ(SafeArrayPutElement(array, &place, CBstr::Make(u"text").Get()), S_OK);
        }
    }
    ~PutNull() override { EXPECT_EQ(SafeArrayDestroy(array), S_OK); }

    std::string Element(LONG index) const {
        CBstr text;
        EXPECT_EQ(SafeArrayGetElement(array, &index, text.Receive()), S_OK);
        return text.IsAbsent() ? "null" : Show(text.Get());
    }
    std::string Elements() const { return Element(2) + Element(3) + Element(4); }

    SAFEARRAYBOUND bound = {3, 2};
    SAFEARRAY* array = SafeArrayCreate(VT_BSTR, 1, &bound);
};

TEST_F(PutNull, CountsFromTheLowerBound) {
    EXPECT_EQ(PutString(*array, 3, static_cast<BSTR>(nullptr)), S_OK);
    EXPECT_EQ(static_cast<BSTR*>(array->pvData)[1], nullptr);
    EXPECT_NE(static_cast<BSTR*>(array->pvData)[0], nullptr);
    EXPECT_NE(static_cast<BSTR*>(array->pvData)[2], nullptr);
    for (const LONG outside : {1, 5}) {
        EXPECT_EQ(PutString(*array, outside, static_cast<BSTR>(nullptr)), DISP_E_BADINDEX);
    }
}

TEST_F(PutNull, TellsOfAnArrayThatIsLockedTooOften) {
    while (SUCCEEDED(SafeArrayLock(array))) {
    }
    EXPECT_EQ(PutString(*array, 3, static_cast<BSTR>(nullptr)), E_UNEXPECTED);
    while (SUCCEEDED(SafeArrayUnlock(array))) {
    }
    EXPECT_EQ(Elements(), "'text''text''text'");
}

}  // namespace
}  // namespace reka::test
