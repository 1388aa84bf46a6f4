// SPDX-License-Identifier: MIT
// The work is the platform's (platform/Files.h); here its failure gets its words. The system's own end in a line end,
// which a line of ours has already.

#include "packagetext/ReplaceFile.h"

#include "text/Utf8.h"

namespace packagetext {

bool ReplaceFile(reka::IFileSystem& files, const std::string& path, std::span<const std::uint8_t> content,
                 std::string& errorText) {
    const std::u16string name = reka::Utf16FromUtf8(path);
    if (reka::Utf8FromUtf16(name) != path) {
        errorText = path + ": the file can't be written: its name isn't UTF-8";
        return false;
    }
    if (files.Replace(name, content.data(), content.size())) return true;
    std::string reason = reka::Utf8FromUtf16(files.LastErrorText());
    while (!reason.empty() && (reason.back() == '\r' || reason.back() == '\n')) reason.pop_back();
    errorText = path + ": the file can't be written: " + reason;
    return false;
}

bool ReplaceFile(reka::IFileSystem& files, const std::string& path, const std::string& content,
                 std::string& errorText) {
    return ReplaceFile(files, path, std::span(reinterpret_cast<const std::uint8_t*>(content.data()), content.size()),
                       errorText);
}

}  // namespace packagetext
