// SPDX-License-Identifier: MIT
// The manager of the component that is registered on this computer, by its name, as a simulator gets it: what rekasim
// prints here is what the installed module computes. The apartment lasts to the end of the program, longer than any
// package.

#include "PackageFactory.h"

#include <objbase.h>

namespace rekasim {

namespace {

/// COM for the one thread of the program, up to its end.
class CApartment {
public:
    CApartment() : result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~CApartment() {
        if (SUCCEEDED(result)) CoUninitialize();
    }
    CApartment(const CApartment&) = delete;
    CApartment& operator=(const CApartment&) = delete;

private:
    HRESULT result;
};

}  // namespace

HRESULT CreateManager(REFIID iid, void** manager) {
    static const CApartment apartment;
    CLSID classId = {};
    const HRESULT result = CLSIDFromProgID(L"NAVO_REKA.ReactionPackManager", &classId);
    if (FAILED(result)) return result;
    return CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, iid, manager);
}

std::string AdviceWithoutManager() {
    return " (the component must be registered: regsvr32 REKA.dll; rekadoctor tells more)";
}

}  // namespace rekasim
