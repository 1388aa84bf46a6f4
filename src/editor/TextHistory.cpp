// SPDX-License-Identifier: MIT
// "2*T+1" that becomes "2*P+1" with the caret behind the P is the change {2, "T", "P"}: what the two texts have in
// common at their ends is left out, and in "aa" that becomes "aaa" the caret tells which a is new. Changes are the
// steps of the history: taking one back puts what was removed in place of what was inserted. The look of a text is kept
// as runs, which a change cuts and moves, so that only the parts that differ from what is wanted are formatted afresh.

#include "editor/TextHistory.h"

#include <algorithm>
#include <utility>

namespace reka {

namespace {

std::int32_t Signed(std::size_t number) {
    return static_cast<std::int32_t>(std::min<std::size_t>(number, 0x7FFFFFFF));
}

std::size_t SizeOf(const TextChange& change) {
    return change.removed.size() + change.inserted.size();
}

bool IsBlank(char16_t character) {
    return character == u' ' || character == u'\t' || character == u'\r' || character == u'\n';
}

bool IsHighHalf(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

bool IsLowHalf(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

/// Whether the place lies between the two halves of one character.
bool SplitsCharacter(std::u16string_view text, std::size_t place) {
    return place > 0 && place < text.size() && IsHighHalf(text[place - 1]) && IsLowHalf(text[place]);
}

bool IsOneCharacter(std::u16string_view text) {
    return text.size() == 1 || (text.size() == 2 && SplitsCharacter(text, 1));
}

bool IsTyped(const TextChange& change) {
    return change.removed.empty() && IsOneCharacter(change.inserted);
}

bool IsDeleted(const TextChange& change) {
    return change.inserted.empty() && IsOneCharacter(change.removed);
}

bool LooksLike(const ExpressionRun& one, const ExpressionRun& other) {
    return one.isBold == other.isBold && one.colour == other.colour;
}

/// The run that what was inserted takes its look from; null where that isn't sure, as at the start of a line.
const ExpressionRun* LookOfInserted(std::u16string_view before, const std::vector<ExpressionRun>& runs,
                                    const TextChange& change) {
    if (change.removed.empty()) {
        if (change.position == 0) return nullptr;
        const char16_t inFront = before[static_cast<std::size_t>(change.position) - 1];
        if (inFront == u'\r' || inFront == u'\n') return nullptr;
    }
    const std::int32_t model = change.removed.empty() ? change.position - 1 : change.position;
    const auto found = std::find_if(runs.begin(), runs.end(), [&](const ExpressionRun& run) {
        return run.range.first <= model && model < run.range.end;
    });
    return found == runs.end() ? nullptr : &*found;
}

/// Where the runs stand after the change, in order.
std::vector<ExpressionRun> MoveRuns(std::u16string_view before, const std::vector<ExpressionRun>& runs,
                                    const TextChange& change) {
    const std::int32_t removedEnd = change.position + Signed(change.removed.size());
    const std::int32_t insertedEnd = change.position + Signed(change.inserted.size());
    std::vector<ExpressionRun> moved;
    const auto add = [&](std::int32_t first, std::int32_t end, const ExpressionRun& look) {
        if (first < end) moved.push_back({{first, end}, look.isBold, look.colour});
    };
    for (const ExpressionRun& run : runs) add(run.range.first, std::min(run.range.end, change.position), run);
    if (const ExpressionRun* const model = LookOfInserted(before, runs, change)) {
        add(change.position, insertedEnd, *model);
    }
    const std::int32_t shift = insertedEnd - removedEnd;
    for (const ExpressionRun& run : runs) {
        add(std::max(run.range.first, removedEnd) + shift, run.range.end + shift, run);
    }
    return moved;
}

/// The parts of `wanted` that none of the runs shows so; both are in order.
std::vector<ExpressionRun> Differences(const std::vector<ExpressionRun>& runs,
                                       const std::vector<ExpressionRun>& wanted) {
    std::vector<ExpressionRun> differing;
    for (const ExpressionRun& want : wanted) {
        std::int32_t done = want.range.first;
        const auto add = [&](std::int32_t end) {
            if (done < end) differing.push_back({{done, end}, want.isBold, want.colour});
        };
        for (const ExpressionRun& run : runs) {
            if (run.range.end <= done || run.range.first >= want.range.end || !LooksLike(run, want)) continue;
            add(run.range.first);
            done = std::min(run.range.end, want.range.end);
        }
        add(want.range.end);
    }
    return differing;
}

}  // namespace

TextChange ChangeBetween(std::u16string_view before, std::u16string_view after, std::int32_t caret) {
    const std::size_t common = std::min(before.size(), after.size());
    const std::size_t behindCaret =
        caret < 0 ? after.size() : after.size() - std::min(after.size(), static_cast<std::size_t>(caret));
    std::size_t suffix = 0;
    while (suffix < std::min(common, behindCaret) &&
           before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix]) {
        ++suffix;
    }
    std::size_t prefix = 0;
    while (prefix < common - suffix && before[prefix] == after[prefix]) ++prefix;
    // A caret that isn't where the change ended would leave equal characters inside it.
    while (suffix < common - prefix && before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix]) {
        ++suffix;
    }
    // What two characters have in common may be one half of them, and a field selects none of the halves alone.
    if (SplitsCharacter(before, prefix) || SplitsCharacter(after, prefix)) --prefix;
    if (SplitsCharacter(before, before.size() - suffix) || SplitsCharacter(after, after.size() - suffix)) --suffix;
    return {Signed(prefix), std::u16string(before.substr(prefix, before.size() - prefix - suffix)),
            std::u16string(after.substr(prefix, after.size() - prefix - suffix))};
}

void CTextHistory::Start(std::u16string_view newText) {
    std::u16string copy(newText);
    text.swap(copy);
    steps.clear();
    doneCount = 0;
    heldCharacters = 0;
    isLastOpen = false;
}

void CTextHistory::Change(std::u16string_view newText, std::int32_t caret) {
    TextChange change = ChangeBetween(text, newText, caret);
    if (change.IsNone()) return;
    std::u16string copy(newText);
    const bool isOpen = IsTyped(change) || IsDeleted(change);
    if (JoinsLastStep(change)) {
        JoinLastStep(change);
    } else {
        AddStep(std::move(change));
    }
    DropRedone();
    isLastOpen = isOpen;
    text.swap(copy);
    DropOldest();
}

/// In front of those that are taken back.
void CTextHistory::AddStep(TextChange change) {
    const std::size_t size = SizeOf(change);
    steps.push_back(std::move(change));
    heldCharacters += size;
    std::swap(steps[doneCount], steps.back());
    ++doneCount;
}

bool CTextHistory::JoinsLastStep(const TextChange& change) const {
    if (!isLastOpen || doneCount == 0) return false;
    const TextChange& last = steps[doneCount - 1];
    if (IsTyped(change)) {
        if (!last.removed.empty() || last.position + Signed(last.inserted.size()) != change.position) return false;
        return !IsBlank(last.inserted.back()) || IsBlank(change.inserted.front());  // else a new word begins
    }
    if (!IsDeleted(change) || !last.inserted.empty()) return false;
    return change.position == last.position || change.position + Signed(change.removed.size()) == last.position;
}

void CTextHistory::JoinLastStep(const TextChange& change) {
    TextChange& last = steps[doneCount - 1];
    if (IsTyped(change)) {
        last.inserted += change.inserted;
    } else if (change.position == last.position) {
        last.removed += change.removed;
    } else {
        last.removed.insert(0, change.removed);
        last.position = change.position;
    }
    heldCharacters += SizeOf(change);
}

void CTextHistory::DropRedone() {
    while (steps.size() > doneCount) {
        heldCharacters -= SizeOf(steps.back());
        steps.pop_back();
    }
}

void CTextHistory::DropOldest() {
    while (heldCharacters > longestSteps && steps.size() > 1) {
        heldCharacters -= SizeOf(steps.front());
        steps.pop_front();
        --doneCount;
    }
}

std::optional<TextReplacement> CTextHistory::Undo() {
    if (!CanUndo()) return std::nullopt;
    const TextChange& step = steps[doneCount - 1];
    const std::int32_t end = step.position + Signed(step.removed.size());
    TextReplacement replacement = {
        {step.position, step.position + Signed(step.inserted.size())}, step.removed, {end, end}};
    text.replace(static_cast<std::size_t>(step.position), step.inserted.size(), step.removed);
    --doneCount;
    isLastOpen = false;
    return replacement;
}

std::optional<TextReplacement> CTextHistory::Redo() {
    if (!CanRedo()) return std::nullopt;
    const TextChange& step = steps[doneCount];
    const std::int32_t end = step.position + Signed(step.inserted.size());
    TextReplacement replacement = {
        {step.position, step.position + Signed(step.removed.size())}, step.inserted, {end, end}};
    text.replace(static_cast<std::size_t>(step.position), step.removed.size(), step.inserted);
    ++doneCount;
    isLastOpen = false;
    return replacement;
}

std::vector<ExpressionRun> CShownFormat::Change(std::u16string_view newText, std::int32_t caret,
                                                const std::vector<ExpressionRun>& wanted) {
    const TextChange change = ChangeBetween(text, newText, caret);
    std::vector<ExpressionRun> differing = Differences(MoveRuns(text, shown, change), wanted);
    std::vector<ExpressionRun> copy = wanted;
    if (!change.IsNone()) text.assign(newText);
    shown.swap(copy);
    return differing;
}

void CShownFormat::Start(std::u16string_view newText) {
    std::vector<ExpressionRun> plain = {{{0, Signed(newText.size())}}};
    text.assign(newText);
    shown.swap(plain);
}

void CShownFormat::Forget() {
    text.clear();
    shown.clear();
}

}  // namespace reka
