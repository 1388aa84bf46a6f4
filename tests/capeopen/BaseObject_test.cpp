// SPDX-License-Identifier: MIT
// What every object of the component says of itself: identification, the last failure, identity.

#include "capeopen/BaseObject.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "capeopen/ComObject.h"
#include "support/Values.h"

namespace reka::test {
namespace {

class CSmallObject : public BaseObject {};

class BaseObjectTest : public testing::Test {
protected:
    BaseObjectTest() : object(new CComObject<CSmallObject>()) { Unknown()->AddRef(); }
    ~BaseObjectTest() override { Unknown()->Release(); }
    IUnknown* Unknown() { return static_cast<ECapeRoot*>(object); }

    BaseObject* object;
};

TEST_F(BaseObjectTest, StartsWithoutTexts) {
    EXPECT_EQ(ErrorOf(Unknown()), (ReportedError{"<null>", "<null>", "<null>", "<null>"}));
    CBstr text;
    EXPECT_EQ(object->get_ComponentName(text.Receive()), S_OK);
    EXPECT_TRUE(text.IsAbsent());
    EXPECT_EQ(object->get_ComponentDescription(text.Receive()), S_OK);
    EXPECT_TRUE(text.IsAbsent());
}

TEST_F(BaseObjectTest, ShowsTheLastError) {
    object->SetError(u"old", u"old", u"old", u"old");
    object->SetError(u"A", u"B", u"C", u"D");
    EXPECT_EQ(ErrorOf(Unknown()), (ReportedError{"A", "B", "C", "D"}));
    CBstr text;
    EXPECT_EQ(object->get_operation(text.Receive()), S_OK);
    EXPECT_EQ(text.View(), u"-");
    EXPECT_EQ(object->get_moreInfo(text.Receive()), S_OK);
    EXPECT_TRUE(text.IsAbsent());
    LONG code = 17;
    EXPECT_EQ(object->get_code(&code), S_OK);
    EXPECT_EQ(code, 0);
}

TEST_F(BaseObjectTest, TakesNullForAnAbsentText) {
    object->SetError(u"A", nullptr, u"", nullptr);
    EXPECT_EQ(ErrorOf(Unknown()), (ReportedError{"A", "<null>", "", "<null>"}));
}

TEST_F(BaseObjectTest, KeepsCopiesOfItsIdentification) {
    {
        const CBstr name = CBstr::Make(u"name");
        EXPECT_EQ(object->put_ComponentName(name.Get()), S_OK);
        EXPECT_EQ(object->put_ComponentDescription(name.Get()), S_OK);
    }
    EXPECT_EQ(object->put_ComponentDescription(nullptr), S_OK);
    CBstr text;
    EXPECT_EQ(object->get_ComponentName(text.Receive()), S_OK);
    EXPECT_EQ(text.View(), u"name");
    EXPECT_EQ(object->get_ComponentDescription(text.Receive()), S_OK);
    EXPECT_TRUE(text.IsAbsent());
}

TEST_F(BaseObjectTest, RefusesNullOutputs) {
    EXPECT_EQ(object->get_name(nullptr), E_POINTER);
    EXPECT_EQ(object->get_code(nullptr), E_POINTER);
    EXPECT_EQ(object->get_description(nullptr), E_POINTER);
    EXPECT_EQ(object->get_scope(nullptr), E_POINTER);
    EXPECT_EQ(object->get_interfaceName(nullptr), E_POINTER);
    EXPECT_EQ(object->get_operation(nullptr), E_POINTER);
    EXPECT_EQ(object->get_moreInfo(nullptr), E_POINTER);
    EXPECT_EQ(object->get_ComponentName(nullptr), E_POINTER);
    EXPECT_EQ(object->get_ComponentDescription(nullptr), E_POINTER);
}

TEST_F(BaseObjectTest, OffersItsInterfacesWithOneIdentity) {
    for (const IID& iid :
         {IID_IUnknown, IID_IDispatch, ECapeRoot::iid, ECapeUser::iid, ECapeUnknown::iid, ICapeIdentification::iid}) {
        CComRef<IUnknown> asked;
        ASSERT_EQ(Unknown()->QueryInterface(iid, reinterpret_cast<void**>(asked.Receive())), S_OK);
        EXPECT_EQ(Ask<IUnknown>(asked.Get()).Get(), Ask<IUnknown>(Unknown()).Get());
        EXPECT_EQ(Ask<IDispatch>(asked.Get()).Get(), Ask<IDispatch>(Unknown()).Get());
    }
}

TEST(ModuleLocks, CountTheLivingObjects) {
    const std::int32_t before = moduleLockCount;
    void* first = nullptr;
    void* second = nullptr;
    ASSERT_EQ(CreateObject<CSmallObject>(nullptr, IID_IUnknown, &first), S_OK);
    ASSERT_EQ(CreateObject<CSmallObject>(nullptr, IID_IDispatch, &second), S_OK);
    EXPECT_EQ(moduleLockCount, before + 2);
    static_cast<IUnknown*>(first)->Release();
    EXPECT_EQ(moduleLockCount, before + 1);
    static_cast<IDispatch*>(second)->Release();
    EXPECT_EQ(moduleLockCount, before);
    EXPECT_EQ(CreateObject<CSmallObject>(nullptr, IID_IErrorLog, &first), E_NOINTERFACE);
    EXPECT_EQ(moduleLockCount, before);
}

TEST(RunMethod, LetsNothingThrownOut) {
    CComObject<CSmallObject>* const object = new CComObject<CSmallObject>();
    IUnknown* const unknown = static_cast<ECapeRoot*>(object);
    unknown->AddRef();
    EXPECT_EQ(RunMethod(*object, u"M", u"I", []() -> HRESULT { throw 1; }), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(unknown).name, "<null>");
    EXPECT_EQ(RunMethod(*object, u"M", u"I", []() -> HRESULT { throw std::bad_alloc(); }), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(unknown), (ReportedError{"out of memory", "out of memory", "M", "I"}));
    const auto askTooMuch = []() -> HRESULT { throw std::length_error("longer than a text can be"); };
    EXPECT_EQ(RunMethod(*object, u"Other", u"I", askTooMuch), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(unknown), (ReportedError{"out of memory", "out of memory", "Other", "I"}));
    unknown->Release();
}

}  // namespace
}  // namespace reka::test
