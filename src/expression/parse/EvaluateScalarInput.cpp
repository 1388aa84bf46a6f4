// SPDX-License-Identifier: MIT
// Every leaf of a numeric field is a constant, so the check of a parse folds what passes it into one: the evaluation is
// the reading of its value. The guards of run-time values have no part in it: SQRT(-1) is a NaN here.

#include "expression/parse/EvaluateScalarInput.h"

#include <memory>

#include "expression/parse/ParseExpression.h"
#include "platform/NamedMutex.h"

namespace reka {

namespace {

// Orders the calls of all processes of a session.
constexpr const char16_t* parserMutexName = u"NAVOParseMutex";

ExpressionTree ParseUnderLock(std::u16string_view text, std::u16string& errorText) {
    const std::unique_ptr<INamedMutex> mutex = NamedMutexes().Open(parserMutexName);
    if (!mutex) {
        errorText = u"Failed to create a mutex for locking the parser for the current thread";
        return nullptr;
    }
    const CNamedMutexLock lock(*mutex);
    if (!lock.IsHeld()) {
        errorText = u"Failed to wait for a mutex for locking the parser for the current thread";
        return nullptr;
    }
    return ParseScalar(text, errorText);
}

}  // namespace

bool EvaluateScalarInput(std::u16string_view text, double& result, std::u16string& errorText) {
    const ExpressionTree tree = ParseUnderLock(text, errorText);
    if (!tree) return false;
    result = tree->value;
    return true;
}

}  // namespace reka
