// SPDX-License-Identifier: MIT
// Whose words a failure has.

#include "capeopen/LastFailure.h"

#include <gtest/gtest.h>

#include "capeopen/BaseObject.h"
#include "capeopen/ComObject.h"

namespace reka::test {
namespace {

/// What a late-bound caller is told, which may hold anything before.
struct Told {
    std::u16string source;
    std::u16string description;
    bool operator==(const Told&) const = default;
};

Told TellSince(const CLastFailure& failure, CLastFailure::Moment moment) {
    EXCEPINFO exception = {};
    exception.bstrSource = CBstr::Make(u"stale").Detach();
    exception.bstrDescription = CBstr::Make(u"stale").Detach();
    failure.Tell(moment, exception);
    const CBstr source(exception.bstrSource);
    const CBstr description(exception.bstrDescription);
    return {std::u16string(source.IsAbsent() ? u"<null>" : source.View()),
            std::u16string(description.IsAbsent() ? u"<null>" : description.View())};
}

const Told nothing = {u"<null>", u"<null>"};

class CSmallObject : public BaseObject {};

class LastFailure : public testing::Test {
protected:
    LastFailure() : object(new CComObject<CSmallObject>()) { static_cast<ECapeRoot*>(object)->AddRef(); }
    ~LastFailure() override { static_cast<ECapeRoot*>(object)->Release(); }

    /// A method that runs `body` and returns its result.
    template <class Body>
    HRESULT Run(Body&& body) {
        return RunMethod(*object, u"Method", u"Interface", body);
    }
    HRESULT FailAs(const char16_t* text) {
        return Run([&] { return object->Fail(text, u"Method", u"Interface"); });
    }

    BaseObject* object;
};

TEST_F(LastFailure, IsToldToTheCallThatRecordedIt) {
    const CLastFailure::Moment before = object->Now();
    FailAs(u"one");
    FailAs(u"two");
    EXPECT_EQ(TellSince(*object, before), (Told{u"Interface.Method", u"two"}));
}

TEST_F(LastFailure, IsNotToldToALaterCall) {
    FailAs(u"one");
    const CLastFailure::Moment before = object->Now();
    EXPECT_EQ(TellSince(*object, before), nothing);
    EXPECT_EQ(Run([] { return E_UNEXPECTED; }), E_UNEXPECTED);
    EXPECT_EQ(TellSince(*object, before), nothing);
}

TEST_F(LastFailure, IsNotThatOfACallWithinTheCall) {
    const CLastFailure::Moment before = object->Now();
    Run([&] {
        const CLastFailure::Moment inner = object->Now();
        FailAs(u"inner");
        EXPECT_EQ(TellSince(*object, inner), (Told{u"Interface.Method", u"inner"}));
        return E_UNEXPECTED;
    });
    EXPECT_EQ(TellSince(*object, before), nothing);
    Run([&] {
        FailAs(u"inner");
        return object->Fail(u"outer", u"Method", u"Interface");
    });
    EXPECT_EQ(TellSince(*object, before), (Told{u"Interface.Method", u"outer"}));
}

TEST_F(LastFailure, IsToldOfAMethodWithoutMemory) {
    const CLastFailure::Moment before = object->Now();
    Run([]() -> HRESULT { throw std::bad_alloc(); });
    EXPECT_EQ(TellSince(*object, before), (Told{u"Interface.Method", u"out of memory"}));
    Run([]() -> HRESULT { throw 1; });  // leaves nothing counted as under way
    const CLastFailure::Moment after = object->Now();
    FailAs(u"next");
    EXPECT_EQ(TellSince(*object, after), (Told{u"Interface.Method", u"next"}));
}

TEST_F(LastFailure, HasAbsentTexts) {
    const CLastFailure::Moment before = object->Now();
    Run([&] { return object->Fail(u"name", nullptr, nullptr, nullptr); });
    EXPECT_EQ(TellSince(*object, before), (Told{u"<null>", u"<null>"}));
}

TEST_F(LastFailure, LeavesNothingOfAnotherError) {
    const CLastFailure::Moment before = object->Now();
    FailAs(u"one");
    EXCEPINFO told = {};
    told.bstrHelpFile = CBstr::Make(u"other.hlp").Detach();
    told.dwHelpContext = 7;
    object->Tell(before, told);
    EXPECT_EQ(told.bstrHelpFile, nullptr);
    EXPECT_EQ(told.dwHelpContext, 0U);
    SysFreeString(told.bstrSource);
    SysFreeString(told.bstrDescription);
}

}  // namespace
}  // namespace reka::test
