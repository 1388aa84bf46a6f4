// SPDX-License-Identifier: MIT
// Whose words tell of an outside failure: the object's, the standard's or the system's.

#include "capeopen/ErrorTexts.h"

#include <gtest/gtest.h>

#include "platform/SystemMessages.h"
#include "support/FakeReactionObject.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

HRESULT Code(std::uint32_t code) {
    return static_cast<HRESULT>(code);
}

std::string CapeText(IUnknown* object, std::uint32_t code) {
    return Utf8FromUtf16(GetCapeErrorText(object, Code(code)));
}

std::string SystemText(std::uint32_t code) {
    return Utf8FromUtf16(GetSystemErrorText(Code(code)));
}

struct CapeCode {
    std::uint32_t code;
    const char* text;
};
const CapeCode capeCodes[] = {
    {0x80040501, "Failed to get error name"},
    {0x80040502, "invalid data"},
    {0x80040503, "Failed to get error name"},
    {0x80040504, "Bad Cape-Open parameter"},
    {0x80040505, "Bad argument"},
    {0x80040506, "Invalid argument"},
    {0x80040507, "index out of bounds"},
    {0x80040508, "current implementation related error"},
    {0x80040509, "not implemented"},
    {0x8004050A, "implementation is limited"},
    {0x8004050B, "computation error"},
    {0x8004050C, "out of resources"},
    {0x8004050D, "out of memory"},
    {0x8004050E, "operation was timed out"},
    {0x8004050F, "initialization error"},
    {0x80040510, "solution error"},
    {0x80040511, "invalid order of invocations"},
    {0x80040512, "invalid operation"},
    {0x80040513, "storage / persistence error"},
    {0x80040514, "illegal access"},
    {0x80040515, "persistence error: not found"},
    {0x80040516, "persistence system error"},
    {0x80040517, "persistence overflow error"},
    {0x80040518, "solver scope error"},
    {0x80040519, "Hessian information not available"},
    {0x8004051A, "One or more of the requested thermodynamic properties are not set on the material"},
};

class CapeCodes : public testing::TestWithParam<CapeCode> {};

TEST_P(CapeCodes, HaveATextForAnObjectThatSaysNothing) {
    CFakeReactionObject object;  // with an empty description and an empty name
    EXPECT_EQ(CapeText(object.Dispatch(), GetParam().code), GetParam().text);
    EXPECT_EQ(object.asked, 2);
    object.offersUser = false;
    object.offersRoot = false;
    EXPECT_EQ(CapeText(object.Dispatch(), GetParam().code), GetParam().text);
    EXPECT_EQ(CapeText(nullptr, GetParam().code), GetParam().text);
    EXPECT_EQ(object.references.Held(), 0);
}

TEST_P(CapeCodes, GiveWayToTheObjectsDescription) {
    CFakeReactionObject object;
    object.description = u"x";
    object.name = u"y";
    EXPECT_EQ(CapeText(object.Dispatch(), GetParam().code), "x");
    EXPECT_EQ(object.asked, 1);
    EXPECT_EQ(object.references.Held(), 0);
}
INSTANTIATE_TEST_SUITE_P(Table, CapeCodes, testing::ValuesIn(capeCodes),
                         [](const auto& row) { return "Code" + std::to_string(row.param.code & 0xFF); });

TEST(CapeErrorText, IsTheObjectsNameWithoutADescription) {
    CFakeReactionObject object;
    object.name = u"short name";
    EXPECT_EQ(CapeText(object.Dispatch(), 0x80040501), "short name");
    object.offersUser = false;
    EXPECT_EQ(CapeText(object.Dispatch(), 0x80040501), "short name");
    EXPECT_EQ(object.references.Held(), 0);
}

TEST(CapeErrorText, TakesAFailingGetterForAnEmptyText) {
    CFakeReactionObject object;
    object.description = u"x";
    object.name = u"y";
    object.getterFails = true;
    EXPECT_EQ(CapeText(object.Dispatch(), 0x8004050C), "out of resources");
}

// By the rules of the platform a failed question has no answer; not every host knows them.
TEST(CapeErrorText, UsesNothingThatAFailedQuestionLeaves) {
    CRefusing<CFakeReactionObject> object;
    object.description = u"not to be read";
    object.name = u"short name";
    object.refused = ECapeUser::iid;
    EXPECT_EQ(CapeText(object.Dispatch(), 0x80040501), "short name");
    EXPECT_EQ(object.asked, 1);
    EXPECT_EQ(object.references.Held(), 0);
}

TEST(CapeErrorText, DoesNotAskTheObjectAboutOtherCodes) {
    class CAsked : public CFakeReactionObject {
    public:
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
            ++queries;
            return CFakeReactionObject::QueryInterface(iid, object);
        }
        int queries = 0;
    };
    CAsked object;
    object.description = u"x";
    for (const std::uint32_t code : {0x80070005U, 0x80040500U, 0x8004051BU, 0x80004005U, 0U}) {
        EXPECT_EQ(CapeText(object.Dispatch(), code), SystemText(code));
    }
    EXPECT_EQ(object.asked + object.queries, 0);
}

TEST(SystemErrorText, ShowsAnUnknownCodeInHexadecimalDigits) {
    EXPECT_EQ(SystemText(0x8004ABCD), "error code 0x8004ABCD");
    EXPECT_EQ(SystemText(0x2000000F), "error code 0x2000000F");
}

TEST(SystemErrorText, LosesOneLineEndOfTheSystemsText) {
    std::u16string text;
    const bool isKnown = FindSystemMessage(Code(0x80070005), text);
    if (isKnown && text.size() > 2 && text.substr(text.size() - 2) == u"\r\n") text.resize(text.size() - 2);
    EXPECT_EQ(SystemText(0x80070005), isKnown ? Utf8FromUtf16(text) : "error code 0x80070005");
}

}  // namespace
}  // namespace reka::test
