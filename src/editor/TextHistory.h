// SPDX-License-Identifier: MIT
// What the user has typed into a text field, step by step, for a field that can't tell typing from colouring.

#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editor/ExpressionEditor.h"

namespace reka {

/// A single place of a text that has become another.
struct TextChange {
    std::int32_t position = 0;
    std::u16string removed;
    std::u16string inserted;
    bool IsNone() const { return removed.empty() && inserted.empty(); }
    bool operator==(const TextChange&) const = default;
};

/// The smallest change that leads from `before` to `after`, where the caret stands behind it. Between equal characters
/// the caret tells which of them is new. No change begins or ends inside a character of two units.
TextChange ChangeBetween(std::u16string_view before, std::u16string_view after, std::int32_t caret);

/// What to put in place of a part of the text, and what to select then.
struct TextReplacement {
    TextRange range;
    std::u16string text;
    TextRange selection;
    bool operator==(const TextReplacement&) const = default;
};

/// The steps of one field. Characters typed in a row up to the end of a word are one step, as are characters deleted
/// in a row. May throw std::bad_alloc: `Text` is then as it was, and the next change is told against it.
class CTextHistory {
public:
    /// The oldest steps are forgotten when all of them hold more than `longest` characters.
    explicit CTextHistory(std::size_t longest = defaultLongest) : longestSteps(longest) {}

    /// Forgets all steps: the field begins with this text.
    void Start(std::u16string_view newText);

    /// The field has this text now, with the caret there; nothing happens if it is the one that is known.
    void Change(std::u16string_view newText, std::int32_t caret);

    bool CanUndo() const { return doneCount > 0; }
    bool CanRedo() const { return doneCount < steps.size(); }

    /// Takes the last step back, or does it again: the text is then the one after the replacement. Nothing if there is
    /// no step.
    std::optional<TextReplacement> Undo();
    std::optional<TextReplacement> Redo();

    const std::u16string& Text() const { return text; }

private:
    static constexpr std::size_t defaultLongest = 4'000'000;

    bool JoinsLastStep(const TextChange& change) const;
    void JoinLastStep(const TextChange& change);
    void AddStep(TextChange change);
    void DropRedone();
    void DropOldest();

    std::size_t longestSteps;
    std::size_t heldCharacters = 0;  // of all steps
    std::u16string text;
    std::deque<TextChange> steps;
    std::size_t doneCount = 0;  // the steps behind are taken back
    bool isLastOpen = false;    // typing may join the last step
};

/// How a field shows its text, so that only what differs from what is wanted is formatted afresh. What is put into the
/// field as plain text takes the look of the character in front, or that of the first one it replaces.
class CShownFormat {
public:
    /// The field shows all of this text plain.
    void Start(std::u16string_view newText);

    /// The field has this text, with the caret there, and is to show it as `wanted` says, which covers the text: the
    /// parts to format.
    std::vector<ExpressionRun> Change(std::u16string_view newText, std::int32_t caret,
                                      const std::vector<ExpressionRun>& wanted);

    /// Nothing is known any more: formatting has failed.
    void Forget();

private:
    std::u16string text;
    std::vector<ExpressionRun> shown;
};

}  // namespace reka
