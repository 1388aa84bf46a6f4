// SPDX-License-Identifier: MIT
// Items are numbered in the order in which they are made: the commands by their own numbers, the offers behind them. A
// menu that the system hasn't made takes no items, and nothing is chosen in it.

#include "editor/win/ExpressionMenu.h"

#include "editor/win/WindowText.h"

namespace reka {

namespace {

constexpr int firstOffer = 100;

class CMenu {
public:
    CMenu() : menu(CreatePopupMenu()) {}
    ~CMenu() {
        if (menu) DestroyMenu(menu);  // with the menus inside
    }
    CMenu(const CMenu&) = delete;
    CMenu& operator=(const CMenu&) = delete;

    HMENU Get() const { return menu; }
    HMENU Release() {
        const HMENU released = menu;
        menu = nullptr;
        return released;
    }

private:
    HMENU menu;
};

void AddCommand(HMENU menu, TextCommand command, const char16_t* label, bool isEnabled) {
    AppendMenuW(menu, isEnabled ? MF_STRING : MF_STRING | MF_GRAYED, static_cast<UINT_PTR>(command), SystemText(label));
}

void AddCommands(HMENU menu, const TextCommandsEnabled& enabled) {
    AddCommand(menu, TextCommand::Undo, u"&Undo\tCtrl+Z", enabled.undo);
    AddCommand(menu, TextCommand::Redo, u"&Redo\tCtrl+Y", enabled.redo);
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AddCommand(menu, TextCommand::Cut, u"Cu&t\tCtrl+X", enabled.selection);
    AddCommand(menu, TextCommand::Copy, u"&Copy\tCtrl+C", enabled.selection);
    AddCommand(menu, TextCommand::Paste, u"&Paste\tCtrl+V", enabled.paste);
    AddCommand(menu, TextCommand::Delete, u"De&lete\tDel", enabled.selection);
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AddCommand(menu, TextCommand::SelectAll, u"Select &all\tCtrl+A", enabled.all);
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
}

/// The next free number.
int AddGroup(HMENU menu, const OfferGroup& group, int number) {
    CMenu inside;
    for (const ExpressionOffer& offer : group.offers) {
        AppendMenuW(inside.Get(), MF_STRING, static_cast<UINT_PTR>(number++), SystemText(MenuLabel(offer)));
    }
    const UINT state = group.offers.empty() ? MF_GRAYED : MF_ENABLED;
    if (AppendMenuW(menu, MF_POPUP | state, reinterpret_cast<UINT_PTR>(inside.Get()), SystemText(group.label))) {
        inside.Release();
    }
    return number;
}

const ExpressionOffer* OfferOf(const std::vector<OfferGroup>& groups, std::size_t index) {
    for (const OfferGroup& group : groups) {
        if (index < group.offers.size()) return &group.offers[index];
        index -= group.offers.size();
    }
    return nullptr;
}

}  // namespace

MenuChoice ShowExpressionMenu(HWND owner, POINT place, const TextCommandsEnabled* enabled,
                              const std::vector<OfferGroup>& groups) {
    const CMenu menu;
    if (enabled) AddCommands(menu.Get(), *enabled);
    int number = firstOffer;
    for (const OfferGroup& group : groups) number = AddGroup(menu.Get(), group, number);
    const int chosen =
        TrackPopupMenuEx(menu.Get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, place.x, place.y, owner, nullptr);
    if (chosen <= 0) return {};
    if (chosen < firstOffer) return {static_cast<TextCommand>(chosen), nullptr};
    return {TextCommand::None, OfferOf(groups, static_cast<std::size_t>(chosen - firstOffer))};
}

}  // namespace reka
