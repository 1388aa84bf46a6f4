// SPDX-License-Identifier: MIT
// What has gone wrong in one parse. Lexer and grammar report into it, in the order of the text.

#pragma once

#include <string>
#include <string_view>

namespace reka {

struct ParseErrors {
    std::u16string& text;        // lines that end in CR LF; empty at first
    bool isOutOfMemory = false;  // no exception may pass through a generated parser

    /// Whether the parse is going to deliver no tree, whatever else is read.
    bool HasFailed() const { return isOutOfMemory || !text.empty(); }

    /// Adds `message` and a line end. Every message of lexer and grammar goes through here.
    void ReportParseError(std::u16string_view message) {
        text += message;
        text += u"\r\n";
    }
};

}  // namespace reka
