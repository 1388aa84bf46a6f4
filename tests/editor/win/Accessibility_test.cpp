// SPDX-License-Identifier: MIT
// What the reactions page tells those who can't see it, or don't know an icon. That each control of each dialog has a
// name is part of what holds for all dialogs (ControlTable.h).

#include <gtest/gtest.h>

#include <utility>

#include "Accessibility.h"
#include "ReactionsPage.h"

namespace reka::test {
namespace {

TEST_F(ReactionsPage, NamesItsControls) {
    OnReactions([](CUser& u, const CDrivenWindow& page) {
        const std::pair<int, const char16_t*> names[] = {
            {IDC_REACTIONS_LIST, u"Reaction:"},
            {IDC_REACTIONS_STOICHIOMETRY, u"Stoichiometry:"},
            {IDC_REACTIONS_EQUILIBRIUM, u"Equilibrium Reaction"},
            {IDC_REACTIONS_RATE, u"Rate:"},
            {IDC_REACTIONS_RATE_WIZARD, u"Reaction rate wizard"},
            {IDC_REACTIONS_EDIT_RATE, u"Edit rate"},
            {IDC_REACTIONS_EQUILIBRIUM_CONSTANT, u"Equilibrium constant:"},
            {IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT, u"Edit equilibrium constant"},
            {IDC_REACTIONS_BASIS, u"Equilibrium basis:"},
            {IDC_REACTIONS_HEAT, u"Heat of reaction:"},
            {IDC_REACTIONS_EDIT_HEAT, u"Edit heat of reaction"},
            {IDC_REACTIONS_PHASE, u"Phase:"},
        };
        for (const auto& [control, name] : names) EXPECT_EQ(NameByRule(u, page.Item(control)), name) << control;
        // As far as the emulator has the interface.
        for (const int control : {IDC_REACTIONS_EQUILIBRIUM, IDC_REACTIONS_RATE_WIZARD, IDC_REACTIONS_EDIT_RATE,
                                  IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT, IDC_REACTIONS_EDIT_HEAT, IDC_REACTIONS_RATE,
                                  IDC_REACTIONS_EQUILIBRIUM_CONSTANT, IDC_REACTIONS_HEAT}) {
            EXPECT_EQ(AccessibleName(u, page.Item(control)), NameByRule(u, page.Item(control))) << control;
        }
    });
}

/// The pointer rests on a button, and its text appears.
TEST_F(ReactionsPage, TellsWhatAnIconIsFor) {
    OnReactions([](CUser& u, const CDrivenWindow& page) {
        const auto tip = [&u] { return u.ShownWindow(u"tooltips_class32"); };
        page.FocusOn(IDC_REACTIONS_RATE);
        EXPECT_FALSE(tip());
        const POINT place = MiddleOf(PlaceOf(page.Item(IDC_REACTIONS_RATE_WIZARD)));
        SetCursorPos(place.x, place.y);
        u.WaitUntil("a tip", [&] { return tip() != nullptr; });
        EXPECT_EQ(u.TextOf(tip()), u"Reaction rate wizard");
        ShellOf(u, page).TakePicture("106-tip");
    });
}

}  // namespace
}  // namespace reka::test
