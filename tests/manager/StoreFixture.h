// SPDX-License-Identifier: MIT
// A template store over files in memory, with message boxes that are answered.

#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "manager/TemplateStore.h"
#include "platform/ModuleFile.h"
#include "support/Builders.h"
#include "support/FakeFiles.h"
#include "support/FakeMessages.h"
#include "support/StoredBytes.h"
#include "text/Utf8.h"

namespace reka::test {

using Lines = std::vector<std::string>;
using Names = std::vector<std::u16string>;

inline std::u16string Slash() {
    return std::u16string(1, pathSeparator);
}

class StoreFixture : public testing::Test {
protected:
    StoreFixture() { messages.operations = &files.operations; }

    CFakeFiles files;
    CFakeMessages messages;
    TemplateStore store;

    const std::u16string userFile = u"U:/user" + Slash() + u"NAVO" + Slash() + u"data" + Slash() + u"REKAConfig.dat";
    const std::u16string systemFile = ComponentFolder() + u"data" + Slash() + u"REKAConfig.dat";
    const std::u16string temporaryFile = userFile + u".tmp";
    const std::u16string backup = userFile + u".backup";

    /// The block of an otherwise empty package.
    static CStoredBytes Block(std::u16string_view name) {
        return CStoredBytes().Wide(name).Wide(u"").Narrow("").U32(0xFFFFFFFF).U32(3).U32(0).U32(0).U32(0);
    }
    /// A version 0 block with one rate that needs a correction.
    static CStoredBytes OldBlock(std::u16string_view name) {
        CStoredBytes bytes = CStoredBytes().Wide(name).Wide(u"").Narrow("").U32(0).U32(1);
        return bytes.Wide(u"R").Wide(u"").Wide(u"").U32(1).U32(0).Narrow("T").Narrow("").Narrow("").U8(0).U8(0).U8(0);
    }
    static CStoredBytes File(const std::vector<CStoredBytes>& blocks) {
        CStoredBytes bytes = CStoredBytes().U32(static_cast<std::uint32_t>(blocks.size()));
        for (const CStoredBytes& block : blocks) {
            bytes.U32(static_cast<std::uint32_t>(block.bytes.size())).Add(block);
        }
        return bytes;
    }
    static std::vector<std::uint8_t> FileOf(const std::vector<std::u16string>& names) {
        std::vector<CStoredBytes> blocks;
        for (const std::u16string& name : names) blocks.push_back(Block(name));
        return File(blocks).bytes;
    }

    void Put(const std::u16string& path, std::vector<std::uint8_t> bytes, std::uint64_t time) {
        files.entries[path] = {std::move(bytes), time};
    }

    Names Loaded() {
        Names names;
        for (const auto& definition : store.templates) names.emplace_back(definition->name.View());
        return names;
    }

    /// An operation on files as it is recorded.
    static std::string Line(const std::string& operation, const std::u16string& path) {
        return operation + " " + Utf8FromUtf16(path);
    }
    static std::string Line(const std::string& operation, const std::u16string& from, const std::u16string& to) {
        return Line(operation, from) + " -> " + Utf8FromUtf16(to);
    }
    Lines FolderLines() const {
        return {"user folder", Line("folder", u"U:/user" + Slash() + u"NAVO" + Slash()),
                Line("folder", u"U:/user" + Slash() + u"NAVO" + Slash() + u"data" + Slash())};
    }
    static Lines Join(Lines lines, const Lines& more) {
        lines.insert(lines.end(), more.begin(), more.end());
        return lines;
    }
};

}  // namespace reka::test
