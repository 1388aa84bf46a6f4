// SPDX-License-Identifier: MIT
// Exports are looked up at each use: these tests load the module a thousand times, and keep nothing of one that has
// gone.

#include "LoadedModule.h"

namespace host {

namespace {

template <class Function>
Function ExportOf(HMODULE module, const char* name) {
    return module ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name))) : nullptr;
}

}  // namespace

HRESULT CLoadedModule::GetClassObject(REFCLSID classId, REFIID iid, void** object) const {
    using Function = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto function = ExportOf<Function>(module, "DllGetClassObject");
    return function ? function(classId, iid, object) : E_UNEXPECTED;
}

HRESULT CLoadedModule::Call(const char* name) const {
    using Function = HRESULT(STDAPICALLTYPE*)();
    const auto function = ExportOf<Function>(module, name);
    return function ? function() : E_UNEXPECTED;
}

CRef<IClassFactory> CLoadedModule::FactoryOf(REFCLSID classId) const {
    void* factory = nullptr;
    if (FAILED(GetClassObject(classId, IID_IClassFactory, &factory))) return {};
    return CRef<IClassFactory>(static_cast<IClassFactory*>(factory));
}

CRef<IDispatch> CLoadedModule::MakeManager() const {
    const CRef<IClassFactory> factory = FactoryOf(managerClass);
    void* manager = nullptr;
    if (!factory || FAILED(factory->CreateInstance(nullptr, IID_IDispatch, &manager))) return {};
    return CRef<IDispatch>(static_cast<IDispatch*>(manager));
}

}  // namespace host
