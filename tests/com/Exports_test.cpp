// SPDX-License-Identifier: MIT
// The class factories, through the registry and by the module's exports, and when the module may go.

#include <gtest/gtest.h>

#include "Host.h"
#include "LoadedModule.h"

namespace host {
namespace {

CRef<IClassFactory> RegisteredFactory() {
    CRef<IClassFactory> factory;
    CoGetClassObject(managerClass, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                     reinterpret_cast<void**>(factory.Receive()));
    return factory;
}

TEST(ClassFactory, MakesManagersThatShareNothing) {
    const auto factory = RegisteredFactory();
    ASSERT_TRUE(factory);
    CRef<reka::ICapeIdentification> first;
    CRef<reka::ICapeIdentification> second;
    for (auto* made : {&first, &second}) {
        ASSERT_EQ(
            factory->CreateInstance(nullptr, reka::ICapeIdentification::iid, reinterpret_cast<void**>(made->Receive())),
            S_OK);
    }
    ASSERT_EQ(first->put_ComponentName(CText(L"Mine").Get()), S_OK);
    CText name;
    ASSERT_EQ(second->get_ComponentName(name.Receive()), S_OK);
    EXPECT_EQ(name.Read(), L"REKA");
}

TEST(ClassFactory, RefusesWhatItDoesNotKnow) {
    const auto factory = RegisteredFactory();
    void* made = this;
    EXPECT_EQ(factory->CreateInstance(nullptr, reka::ICapeThermoMaterial::iid, &made), E_NOINTERFACE);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

class Exports : public testing::Test {
protected:
    CLoadedModule module;
};

TEST_F(Exports, GiveFactoriesOfBothClasses) {
    for (const CLSID& classId : {managerClass, packageClass}) {
        CRef<IClassFactory> factory = module.FactoryOf(classId);
        ASSERT_TRUE(factory);
        CRef<IUnknown> again;
        ASSERT_EQ(module.GetClassObject(classId, IID_IUnknown, reinterpret_cast<void**>(again.Receive())), S_OK);
        EXPECT_EQ(factory.As<IUnknown>().Get(), again.Get());
    }
}

TEST_F(Exports, RefuseUnknownClasses) {
    void* factory = this;
    EXPECT_EQ(module.GetClassObject(IID_IUnknown, IID_IClassFactory, &factory), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(factory, nullptr);
    EXPECT_EQ(module.GetClassObject(managerClass, IID_IClassFactory, nullptr), E_POINTER);
    factory = this;
    EXPECT_EQ(module.GetClassObject(managerClass, reka::ICapeUtilities::iid, &factory), E_NOINTERFACE);
    EXPECT_EQ(factory, nullptr);
}

TEST_F(Exports, SayWhetherTheModuleCanGo) {
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
    {
        const auto manager = MakeManager<IUnknown>();
        EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
    }
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
    {
        CRef<IClassFactory> factory = module.FactoryOf(packageClass);
        ASSERT_TRUE(factory);
        CRef<IUnknown> package;
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(package.Receive())), S_OK);
        factory.Reset();
        EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
    }
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(Exports, KeepALockedServer) {
    {
        CRef<IClassFactory> factory = module.FactoryOf(managerClass);
        ASSERT_TRUE(factory);
        EXPECT_EQ(factory->LockServer(TRUE), S_OK);
        factory.Reset();
        EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
        factory = module.FactoryOf(managerClass);
        ASSERT_TRUE(factory);
        EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    }
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(Exports, IgnoreAnUnlockTooMany) {
    CRef<IClassFactory> managers = module.FactoryOf(managerClass);
    CRef<IClassFactory> packages = module.FactoryOf(packageClass);
    ASSERT_TRUE(managers && packages);
    EXPECT_EQ(managers->LockServer(FALSE), S_OK);
    EXPECT_EQ(managers->LockServer(FALSE), S_OK);
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);  // both are held still
    EXPECT_EQ(managers->LockServer(TRUE), S_OK);
    EXPECT_EQ(managers->LockServer(TRUE), S_OK);
    EXPECT_EQ(packages->LockServer(FALSE), S_OK);  // the lock isn't this one's
    EXPECT_EQ(managers->LockServer(FALSE), S_OK);
    managers.Reset();
    packages.Reset();
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);  // by the lock that is left
    managers = module.FactoryOf(managerClass);
    ASSERT_TRUE(managers);
    EXPECT_EQ(managers->LockServer(FALSE), S_OK);
    managers.Reset();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace host
