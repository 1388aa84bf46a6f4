// SPDX-License-Identifier: MIT
// Telling the forms of files apart, and their frames. No form has a mark of its own, so a file is tried as each, and
// what is exactly one of them comes before what only begins like one. Whatever is written as text is read back at once
// and compared: a block that doesn't come out the same is given as raw bytes, so the readable form never loses
// anything, whatever a block holds.

#include "PackageFile.h"

#include <algorithm>
#include <initializer_list>

#include "Hexadecimal.h"
#include "WholeNumber.h"
#include "persistence/ByteReader.h"
#include "persistence/ByteWriter.h"

namespace rekatool {

namespace {

constexpr const char* formNames[] = {"templates", "block", "stream"};

bool IsBlock(std::span<const std::uint8_t> bytes) {
    StoredPackage package;
    return ReadStoredPackage(bytes, package);
}

bool ReadTemplates(std::span<const std::uint8_t> bytes, PackageFile& file) {
    file = {FileForm::Templates, 0, {}, {}};
    reka::CByteReader reader(bytes);
    if (!reader.ReadI32(file.count)) return false;
    for (std::int32_t i = 0; i < file.count; ++i) {
        std::uint32_t size = 0;
        std::span<const std::uint8_t> block;
        if (!reader.ReadU32(size) || !reader.ReadBytes(size, block)) return false;
        file.blocks.emplace_back(block.begin(), block.end());
    }
    std::span<const std::uint8_t> rest;
    reader.ReadBytes(reader.Remaining(), rest);
    file.rest.assign(rest.begin(), rest.end());
    return true;
}

bool ReadStream(std::span<const std::uint8_t> bytes, PackageFile& file) {
    reka::CByteReader reader(bytes);
    std::uint32_t size = 0;
    if (!reader.ReadU32(size) || size != reader.Remaining()) return false;
    file = {FileForm::Stream, 0, {Bytes(bytes.begin() + 4, bytes.end())}, {}};
    return true;
}

Json JsonFromBlock(const Bytes& block) {
    StoredPackage package;
    const char* reason = "not a package that this program can read";
    if (ReadStoredPackage(block, package)) {
        Json readable = JsonFromPackage(package);
        StoredPackage back;
        std::string errorText;
        if (PackageFromJson(readable, "package", back, errorText) && WriteStoredPackage(back) == block) return readable;
        reason = "a package that the readable form can't say exactly";
    }
    return {{"raw", HexadecimalOf(block)}, {"reason", reason}};
}

/// False for a member that isn't known, which is a misspelt one.
bool HasOnly(const Json& object, std::initializer_list<std::string_view> names, const std::string& path,
             std::string& errorText) {
    for (const auto& member : object.items()) {
        if (std::find(names.begin(), names.end(), member.key()) != names.end()) continue;
        errorText = path + member.key() + ": there is no such member";
        return false;
    }
    return true;
}

bool BlockFromJson(const Json& content, const std::string& path, Bytes& block, std::string& errorText) {
    if (content.is_object() && content.contains("raw")) {
        if (!HasOnly(content, {"raw", "reason"}, path + ".", errorText)) return false;
        if (content["raw"].is_string() && BytesOf(content["raw"].get_ref<const std::string&>(), block)) return true;
        errorText = path + ".raw: pairs of hexadecimal digits are expected";
        return false;
    }
    StoredPackage package;
    if (!PackageFromJson(content, path, package, errorText)) return false;
    block = WriteStoredPackage(package);
    return true;
}

bool FormFromJson(const Json& content, PackageFile& file, std::string& errorText) {
    const Json form = content.value("form", Json());
    for (std::size_t i = 0; i < std::size(formNames); ++i) {
        if (form != formNames[i]) continue;
        file.form = static_cast<FileForm>(i);
        return true;
    }
    errorText = "form: \"templates\", \"block\" or \"stream\" is expected";
    return false;
}

bool BlocksFromJson(const Json& content, PackageFile& file, std::string& errorText) {
    if (!content.contains("packages") || !content["packages"].is_array()) {
        errorText = "packages: a list is expected";
        return false;
    }
    const Json& packages = content["packages"];
    for (std::size_t i = 0; i < packages.size(); ++i) {
        const std::string path = "packages[" + std::to_string(i) + "]";
        if (!BlockFromJson(packages[i], path, file.blocks.emplace_back(), errorText)) return false;
    }
    file.count = static_cast<std::int32_t>(file.blocks.size());
    if (file.form == FileForm::Templates || file.blocks.size() == 1) return true;
    errorText = "packages: one package is expected";
    return false;
}

/// The count where it isn't that of the packages, and what stands behind the last one.
bool FrameFromJson(const Json& content, PackageFile& file, std::string& errorText) {
    const bool isTemplates = file.form == FileForm::Templates;
    if (content.contains("count")) {
        const std::optional<std::int64_t> count = WholeNumber(content["count"]);
        if (!count || *count >= 0 || *count < INT32_MIN || !file.blocks.empty()) {
            errorText = "count: a number below 0 is expected, in a file of templates without packages";
            return false;
        }
        file.count = static_cast<std::int32_t>(*count);
    }
    if (!content.contains("rest")) return true;
    const Json& rest = content["rest"];
    if (isTemplates && rest.is_string() && BytesOf(rest.get_ref<const std::string&>(), file.rest)) return true;
    errorText = "rest: pairs of hexadecimal digits are expected, in a file of templates";
    return false;
}

}  // namespace

bool ReadPackageFile(std::span<const std::uint8_t> bytes, PackageFile& file) {
    const auto hasGoodBlocks = [&file] {
        for (const Bytes& block : file.blocks) {
            if (!IsBlock(block)) return false;
        }
        return true;
    };
    // What is exactly one of the forms comes before what only begins like one.
    if (ReadTemplates(bytes, file) && file.rest.empty() && hasGoodBlocks()) return true;
    if (ReadStream(bytes, file) && hasGoodBlocks()) return true;
    if (IsBlock(bytes)) {
        file = {FileForm::Block, 0, {Bytes(bytes.begin(), bytes.end())}, {}};
        return true;
    }
    if (ReadTemplates(bytes, file)) return true;
    return ReadStream(bytes, file);
}

Bytes WritePackageFile(const PackageFile& file) {
    Bytes bytes;
    reka::CByteWriter writer(bytes);
    if (file.form == FileForm::Templates) writer.WriteI32(file.count);
    for (const Bytes& block : file.blocks) {
        if (file.form != FileForm::Block) writer.WriteU32(static_cast<std::uint32_t>(block.size()));
        bytes.insert(bytes.end(), block.begin(), block.end());
    }
    bytes.insert(bytes.end(), file.rest.begin(), file.rest.end());
    return bytes;
}

Json JsonFromFile(const PackageFile& file) {
    Json content = {{"rekatool", 1}, {"form", formNames[static_cast<std::size_t>(file.form)]}};
    if (file.form == FileForm::Templates && file.count < 0) content["count"] = file.count;
    content["packages"] = Json::array();
    for (const Bytes& block : file.blocks) content["packages"].push_back(JsonFromBlock(block));
    if (!file.rest.empty()) content["rest"] = HexadecimalOf(file.rest);
    return content;
}

bool FileFromJson(const Json& content, PackageFile& file, std::string& errorText) {
    file = PackageFile();
    if (!content.is_object() || content.value("rekatool", Json()) != 1) {
        errorText = "not what rekatool export writes";
        return false;
    }
    return HasOnly(content, {"rekatool", "form", "count", "packages", "rest"}, "", errorText) &&
           FormFromJson(content, file, errorText) && BlocksFromJson(content, file, errorText) &&
           FrameFromJson(content, file, errorText);
}

}  // namespace rekatool
