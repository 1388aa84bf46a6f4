// SPDX-License-Identifier: MIT
// Any typing, deleting and pasting in a field with a history. A model keeps the whole text behind each edit: taking a
// step back leads to one of those, past none but single characters, and doing it again leads back. Another keeps the
// look of each character as the field gives it, which is as wanted once the parts that are told are formatted.

#include "editor/TextHistory.h"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

#include "persistence/ByteReader.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

class CFieldModel {
public:
    explicit CFieldModel(reka::CByteReader& bytes) : reader(bytes) {
        history.Start(u"");
        format.Start(u"");
    }

    void Run() {
        std::uint8_t action = 0;
        while (reader.ReadU8(action)) {
            if (action % 8 < 2) {
                GoBack();
            } else if (action % 8 == 2) {
                GoForth();
            } else if (action % 8 == 3) {
                Delete(action / 8);
            } else {
                Insert(action / 64 + 1U);
            }
            Require(history.Text() == text);
            Require(!history.CanUndo() || done.size() > 1);
            Format();
        }
    }

private:
    std::uint8_t Byte() {
        std::uint8_t byte = 0;
        reader.ReadU8(byte);
        return byte;
    }

    void Insert(std::size_t count) {
        const std::size_t at = Byte() % (text.size() + 1);
        constexpr std::u16string_view letters = u"aab \r\n(";
        std::u16string inserted;
        for (; count > 0; --count) inserted += letters[Byte() % letters.size()];
        Replace(at, 0, inserted);
        Tell(at + inserted.size());
    }
    void Delete(std::size_t count) {
        if (text.empty()) return;
        const std::size_t at = Byte() % text.size();
        Replace(at, std::min(count, text.size() - at), u"");
        Tell(at);
    }

    /// The field itself: what is inserted looks like the character in front, or as nobody knows.
    void Replace(std::size_t at, std::size_t removed, std::u16string_view inserted) {
        const bool isKnown = at > 0 && text[at - 1] != u'\r' && text[at - 1] != u'\n';
        const reka::ExpressionRun look = removed > 0 ? looks[at] : isKnown ? looks[at - 1] : unknown;
        text.replace(at, removed, inserted);
        const auto place = looks.begin() + static_cast<std::ptrdiff_t>(at);
        looks.insert(looks.erase(place, place + static_cast<std::ptrdiff_t>(removed)), inserted.size(), look);
    }
    void Tell(std::size_t at) {
        caret = at;
        history.Change(text, static_cast<std::int32_t>(caret));
        if (done.back() == text) return;
        done.push_back(text);
        undone.clear();
    }

    void Apply(const reka::TextReplacement& replacement) {
        const auto first = static_cast<std::size_t>(replacement.range.first);
        Replace(first, static_cast<std::size_t>(replacement.range.end) - first, replacement.text);
        caret = static_cast<std::size_t>(replacement.selection.end);
        Require(caret == first + replacement.text.size());
        history.Change(text, static_cast<std::int32_t>(caret));  // as a field tells it
    }
    void GoBack() {
        const bool canUndo = history.CanUndo();
        const auto replacement = history.Undo();
        Require(replacement.has_value() == canUndo);
        if (!replacement) return;
        Apply(*replacement);
        undone.push_back(done);
        bool isSingle = true;  // of the edits that went back together
        std::size_t passed = 0;
        do {
            Require(done.size() > 1);
            const std::size_t longer = std::max(done.back().size(), done[done.size() - 2].size());
            const std::size_t shorter = std::min(done.back().size(), done[done.size() - 2].size());
            isSingle = isSingle && longer - shorter == 1;
            ++passed;
            done.pop_back();
        } while (done.back() != text);
        Require(passed == 1 || isSingle);
    }
    void GoForth() {
        const bool canRedo = history.CanRedo();
        const auto replacement = history.Redo();
        Require(replacement.has_value() == canRedo && canRedo == !undone.empty());
        if (!replacement) return;
        Apply(*replacement);
        done = undone.back();
        undone.pop_back();
        Require(done.back() == text);
    }

    void Format() {
        const auto size = static_cast<std::int32_t>(text.size());
        const std::vector<reka::ExpressionRun> wanted =
            reka::ColourExpression(text, {0, 0}, size > 3 ? size - 2 : reka::noPosition);
        for (const reka::ExpressionRun& run : format.Change(text, static_cast<std::int32_t>(caret), wanted)) Show(run);
        for (const reka::ExpressionRun& run : wanted) {
            for (auto i = run.range.first; i < run.range.end; ++i) {
                const reka::ExpressionRun& look = looks[static_cast<std::size_t>(i)];
                Require(look.isBold == run.isBold && look.colour == run.colour);
            }
        }
    }
    void Show(const reka::ExpressionRun& run) {
        for (auto i = run.range.first; i < run.range.end; ++i) looks[static_cast<std::size_t>(i)] = run;
    }

    const reka::ExpressionRun unknown = {{}, true, 0xABCDEF};
    reka::CByteReader& reader;
    reka::CTextHistory history;
    reka::CShownFormat format;
    std::u16string text;
    std::size_t caret = 0;
    std::vector<reka::ExpressionRun> looks;    // of each character
    std::vector<std::u16string> done = {u""};  // behind each edit, the text of now last
    std::vector<std::vector<std::u16string>> undone;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reka::CByteReader reader(std::span(data, std::min<std::size_t>(size, 400)));
    CFieldModel(reader).Run();
    return 0;
}
