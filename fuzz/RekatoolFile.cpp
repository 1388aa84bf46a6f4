// SPDX-License-Identifier: MIT
// Any bytes as a file for rekatool, stored or readable. What is read as a stored file leads back to the same bytes by
// its readable form; what is read as a readable one is stored, and that leads back to itself; and what was salvaged
// needs no salvage.

#include <cstdlib>
#include <span>

#include "QuietMessages.h"
#include "rekatool/PackageFile.h"
#include "rekatool/ParseReadable.h"
#include "rekatool/Salvage.h"

namespace {

using rekatool::Bytes;

void Require(bool holds) {
    if (!holds) std::abort();
}

bool BytesOfReadable(std::span<const std::uint8_t> text, Bytes& bytes) {
    rekatool::Json content;
    rekatool::PackageFile file;
    std::string errorText;
    const bool isRead = rekatool::ParseReadable(text, content, errorText) && FileFromJson(content, file, errorText);
    Require(isRead == errorText.empty());
    if (isRead) bytes = WritePackageFile(file);
    return isRead;
}

/// That the file leads back to itself, if it is one.
bool GoesThereAndBack(const Bytes& bytes) {
    rekatool::PackageFile file;
    if (!ReadPackageFile(bytes, file)) return false;
    Require(WritePackageFile(file) == bytes);
    const std::string text = packagetext::TextOfDocument(JsonFromFile(file));
    Bytes back;
    Require(BytesOfReadable(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()), back));
    Require(back == bytes);
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reka::fuzz::SilenceMessages();
    GoesThereAndBack({data, data + size});
    Bytes stored;
    if (rekatool::IsReadable(std::span(data, size)) && BytesOfReadable(std::span(data, size), stored)) {
        GoesThereAndBack(stored);
    }
    const rekatool::Salvaged salvaged = rekatool::SalvageTemplates(std::span(data, size));
    const rekatool::Salvaged again = rekatool::SalvageTemplates(WritePackageFile(salvaged.file));
    Require(again.damages.empty() && again.file.blocks == salvaged.file.blocks);
    return 0;
}
