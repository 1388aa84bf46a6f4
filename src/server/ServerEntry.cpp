// SPDX-License-Identifier: MIT
// What the system calls in the module: its start and end, and the four exports of a COM server. None of them does more
// than lead to the routine that does the work: what a client meets first has no decisions of its own. Whether
// registration is for the user alone is read when it is asked for, not at the start, since the user may change the
// setting in between.

#include <windows.h>

#include "capeopen/ModuleLocks.h"
#include "server/ClassTable.h"
#include "server/Module.h"
#include "server/Registration.h"
#include "server/ThreadsOfRuntime.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* reserved) {
    if (reason == DLL_PROCESS_ATTACH) reka::StartModule(instance);
    if (reason == DLL_PROCESS_DETACH) {
        const bool isProcessEnding = reserved != nullptr;  // otherwise the module is unloaded
        reka::EndModule(isProcessEnding);
        if (!isProcessEnding) {
            reka::LeaveThisThread();
            reka::LeaveExceptionMemory();
        }
    }
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** factory) {
    return reka::GetClassFactory(classId, iid, factory);
}

STDAPI DllCanUnloadNow() {
    return reka::moduleLockCount == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    reka::TheModule().isPerUser = reka::IsRegistrationForUser();
    return reka::RegisterClasses(true);
}

STDAPI DllUnregisterServer() {
    return reka::RegisterClasses(false);
}
