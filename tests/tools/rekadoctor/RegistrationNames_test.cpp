// SPDX-License-Identifier: MIT
// The identifiers that rekadoctor looks for are the component's.

#include "RegistrationNames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "capeopen/CapeOpenInterfaces.h"
#include "capeopen/ClassIds.h"

namespace rekadoctor {

namespace {

std::string TextOf(const GUID& id) {
    char text[39] = {};
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                  static_cast<unsigned>(id.Data1), unsigned{id.Data2}, unsigned{id.Data3}, unsigned{id.Data4[0]},
                  unsigned{id.Data4[1]}, unsigned{id.Data4[2]}, unsigned{id.Data4[3]}, unsigned{id.Data4[4]},
                  unsigned{id.Data4[5]}, unsigned{id.Data4[6]}, unsigned{id.Data4[7]});
    return text;
}

TEST(RegistrationNames, AreThoseOfTheComponent) {
    EXPECT_EQ(classId, TextOf(reka::reactionPackManagerClassId));
    EXPECT_EQ(typeLibraryId, TextOf(reka::typeLibraryId));
}

TEST(RegistrationNames, AreThoseOfTheInterfaces) {
    const std::string expected[] = {TextOf(reka::ICapeReactionsPackageManager::iid), TextOf(reka::ICapeUtilities::iid),
                                    TextOf(reka::ICapeReactionChemistry::iid),
                                    TextOf(reka::ICapeReactionsRoutine::iid)};
    EXPECT_TRUE(std::equal(calledInterfaces.begin(), calledInterfaces.end(), std::begin(expected), std::end(expected)));
}

}  // namespace

}  // namespace rekadoctor
