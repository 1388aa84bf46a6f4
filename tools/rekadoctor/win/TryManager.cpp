// SPDX-License-Identifier: MIT
// Does what a simulator does first: asks the component system for the class of the manager's name, and has it create
// the manager in this process.

#include <windows.h>

#include <array>

#include "CWindowsComputer.h"
#include "RegistrationNames.h"
#include "capeopen/CapeOpenInterfaces.h"
#include "capeopen/ClassIds.h"
#include "capeopen/ErrorTexts.h"
#include "platform/Holders.h"
#include "text/Utf8.h"

namespace rekadoctor {

namespace {

using reka::CComRef;
using reka::ICapeReactionsPackageManager;

/// The apartment of this thread, which a simulator has too.
class CApartment {
public:
    CApartment() : result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    CApartment(const CApartment&) = delete;
    CApartment& operator=(const CApartment&) = delete;
    ~CApartment() {
        if (SUCCEEDED(result)) CoUninitialize();
    }

    HRESULT Result() const { return result; }

private:
    HRESULT result;
};

std::string ReasonOf(HRESULT result) {
    return reka::Utf8FromUtf16(reka::GetSystemErrorText(result));
}

Trial Failed(TrialEnd end, std::string reason) {
    Trial trial;
    trial.end = end;
    trial.reason = std::move(reason);
    return trial;
}

std::string TextOfClass(const CLSID& id) {
    std::array<OLECHAR, 39> text = {};  // 38 characters and the end
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return reka::Utf8FromUtf16({reinterpret_cast<const char16_t*>(text.data()), text.size() - 1});
}

}  // namespace

Trial CWindowsComputer::TryManager(const std::string& name) {
    const CApartment apartment;
    if (FAILED(apartment.Result())) return Failed(TrialEnd::NotCreated, ReasonOf(apartment.Result()));
    const std::u16string wideName = reka::Utf16FromUtf8(name);
    CLSID id = {};
    HRESULT result = CLSIDFromProgID(reinterpret_cast<const OLECHAR*>(wideName.c_str()), &id);
    if (FAILED(result)) return Failed(TrialEnd::NameUnknown, ReasonOf(result));
    if (id != reka::reactionPackManagerClassId) return Failed(TrialEnd::OtherClass, TextOfClass(id));
    CComRef<IUnknown> object;
    result =
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, reinterpret_cast<void**>(object.Receive()));
    if (FAILED(result)) return Failed(TrialEnd::NotCreated, ReasonOf(result));
    CComRef<ICapeReactionsPackageManager> manager;
    result = object->QueryInterface(ICapeReactionsPackageManager::iid, reinterpret_cast<void**>(manager.Receive()));
    if (FAILED(result)) return Failed(TrialEnd::NotAManager, ReasonOf(result));
    Trial trial;
    trial.end = TrialEnd::Done;
    trial.file = FileOfAddress(*reinterpret_cast<void**>(manager.Get()));  // its table of methods lies in its module
    return trial;
}

}  // namespace rekadoctor
