// SPDX-License-Identifier: MIT
// Packages in two apartments at once.

#include <gtest/gtest.h>

#include <thread>

#include "HostObjects.h"

namespace host {
namespace {

/// Makes a package of its own, calculates and stores many times. Adds the values that differ from what they must be.
void Work(double factor, int& wrong) {
    const CApartment apartment;
    CMaterial material;
    CReactionObject results;
    const auto package = MakePackage(std::to_wstring(static_cast<int>(factor)) + L"*T*EXP(P/1E6)");
    if (!package || FAILED(Bind(package, material, results))) {
        ++wrong;
        return;
    }
    for (int i = 0; i < 500; ++i) {
        const double temperature = 300 + i;
        material.properties[L"temperature"] = {temperature};
        if (FAILED(Calculate(package))) ++wrong;
        const double expected = factor * temperature * 1.2214027581601699;  // e^0.2
        if (std::abs(results.values[L"ReactionRate R"] / expected - 1) > 1e-14) ++wrong;
    }
    package->Terminate();
    if (material.calls.held != 0 || results.calls.held != 0) ++wrong;
}

TEST(Apartments, WorkSideBySide) {
    int wrongInFirst = 0;
    int wrongInSecond = 0;
    std::thread first([&] { Work(2, wrongInFirst); });
    std::thread second([&] { Work(3, wrongInSecond); });
    first.join();
    second.join();
    EXPECT_EQ(wrongInFirst, 0);
    EXPECT_EQ(wrongInSecond, 0);
}

TEST(Apartments, ParseAndCallByNameSideBySide) {
    const auto work = [](int& wrong) {
        const CApartment apartment;
        for (int i = 0; i < 100; ++i) {
            const auto package = MakePackage(L"2*T");
            const auto dispatch = package.As<IDispatch>();
            std::wstring word = L"GetNumberOfReactions";
            LPOLESTR names[] = {word.data()};
            DISPID member = 0;
            if (FAILED(dispatch->GetIDsOfNames(IID_NULL, names, 1, 0, &member))) ++wrong;
            DISPPARAMS nothing = {};
            CValue count;
            if (FAILED(
                    dispatch->Invoke(member, IID_NULL, 0, DISPATCH_METHOD, &nothing, &count.Get(), nullptr, nullptr)))
                ++wrong;
            if (count.Get().vt != VT_I4 || count.Get().lVal != 1) ++wrong;
        }
    };
    int wrongInFirst = 0;
    int wrongInSecond = 0;
    std::thread first([&] { work(wrongInFirst); });
    std::thread second([&] { work(wrongInSecond); });
    first.join();
    second.join();
    EXPECT_EQ(wrongInFirst, 0);
    EXPECT_EQ(wrongInSecond, 0);
}

}  // namespace
}  // namespace host
