// SPDX-License-Identifier: MIT
// The reaction object of rekasim, into which a package writes what it calculates.

#pragma once

#include <string>
#include <vector>

#include "ErrorInfo.h"
#include "capeopen/ComObject.h"

namespace rekasim {

/// Keeps one number per property, phase, basis and reaction, and gives back what was set. Names are compared with the
/// case of letters ignored; an absent basis is an empty one.
class CReactionResults : public reka::CDualInterface<reka::ICapeReactionProperties>, public CErrorInfo {
public:
    void* FindInterface(REFIID iid);

    HRESULT STDMETHODCALLTYPE GetReactionProp(BSTR property, BSTR phase, VARIANT reacIds, BSTR basis,
                                              VARIANT* propVals) override;
    HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR property, BSTR phase, VARIANT reacIds, BSTR basis,
                                              VARIANT propVals) override;

    /// Forgets everything.
    void Clear() { results.clear(); }
    std::size_t Count() const { return results.size(); }

private:
    struct Result {
        std::u16string property;
        std::u16string phase;
        std::u16string reactionId;
        std::u16string basis;
        double value = 0;
    };
    Result* Find(const Result& wanted);

    std::vector<Result> results;
};

}  // namespace rekasim
