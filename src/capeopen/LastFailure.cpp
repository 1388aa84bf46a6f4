// SPDX-License-Identifier: MIT
// To note a failure must not fail: a text for which there is no memory is absent. A failure belongs to the method that
// recorded it, which is told by how many methods were under way: the one that a late-bound caller called is one deeper
// than the call, and what a host calls while that asks it for something is deeper still.

#include "capeopen/LastFailure.h"

#include <exception>
#include <string>
#include <utility>

namespace reka {

namespace {

CBstr CopyLiteral(const char16_t* text) {
    return text ? CBstr::TryMake(text) : CBstr();
}

}  // namespace

void CLastFailure::Record(const char16_t* name, const char16_t* description, const char16_t* scope,
                          const char16_t* interfaceName) noexcept {
    errorName = CopyLiteral(name);
    errorDescription = CopyLiteral(description);
    errorScope = CopyLiteral(scope);
    errorInterface = CopyLiteral(interfaceName);
    ++failuresSoFar;
    methodsAtFailure = methodsUnderWay;
}

void CLastFailure::Tell(Moment moment, EXCEPINFO& exception) const noexcept {
    CBstr source;
    CBstr description;
    if (failuresSoFar != moment.failures && methodsAtFailure == moment.methods + 1) {
        description = CBstr(errorDescription.Copy());
        try {
            if (!errorInterface.IsAbsent() && !errorScope.IsAbsent()) {
                source =
                    CBstr::TryMake(std::u16string(errorInterface.View()) + u'.' + std::u16string(errorScope.View()));
            }
        } catch (const std::exception&) {  // no memory, no source
        }
    }
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    exception.bstrSource = source.Detach();
    exception.bstrDescription = description.Detach();
    SysFreeString(std::exchange(exception.bstrHelpFile, nullptr));  // of some other error of the thread
    exception.dwHelpContext = 0;
}

}  // namespace reka
