// SPDX-License-Identifier: MIT
// The formulas in C++, as a programmer would write them who had to guard each operation that the language guards.

#pragma once

#include <string>

#include "records/Definition.h"

namespace reka::bench {

/// A sum of 60 terms.
constexpr const char16_t* SumText =
    u"0.37*T+0.483*X(b)+0.596*T*X(c)+X(d)+0.822+0.935*T"
    u"+1.048*X(c)+1.161*T*X(d)+X(a)+1.387+1.5*T+1.613*X(d)"
    u"+1.726*T*X(a)+X(b)+1.952+2.065*T+2.178*X(a)+2.291*T*X(b)"
    u"+X(c)+2.517+2.63*T+2.743*X(b)+2.856*T*X(c)+X(d)"
    u"+3.082+3.195*T+3.308*X(c)+3.421*T*X(d)+X(a)+3.647"
    u"+3.76*T+3.873*X(d)+3.986*T*X(a)+X(b)+4.212+4.325*T"
    u"+4.438*X(a)+4.551*T*X(b)+X(c)+4.777+4.89*T+5.003*X(b)"
    u"+5.116*T*X(c)+X(d)+5.342+5.455*T+5.568*X(c)+5.681*T*X(d)"
    u"+X(a)+5.907+6.02*T+6.133*X(d)+6.246*T*X(a)+X(b)"
    u"+6.472+6.585*T+6.698*X(a)+6.811*T*X(b)+X(c)+7.037";

bool Native1(double& result, const ReactionPackDefinition& definition, std::u16string& errorText);
bool Native2(double& result, const ReactionPackDefinition& definition, std::u16string& errorText);
bool Native3(double& result, const ReactionPackDefinition& definition, std::u16string& errorText);
bool Native4(double& result, const ReactionPackDefinition& definition, std::u16string& errorText);
bool Native5(double& result, const ReactionPackDefinition& definition, std::u16string& errorText);
bool Native6(double& result, const ReactionPackDefinition& definition, std::u16string& errorText);

}  // namespace reka::bench
