// SPDX-License-Identifier: MIT
// The files that hold packages, and their readable form.

#pragma once

#include <span>
#include <string>
#include <vector>

#include "StoredPackage.h"
#include "packagetext/Document.h"

namespace rekatool {

using packagetext::Json;

enum class FileForm : unsigned char {
    Templates,  // a file of templates: a count, then a size and a block for each
    Block,      // one block alone
    Stream,     // a block behind its size, as in a simulator's document
};

/// A file of packages, taken apart as far as its framing goes.
struct PackageFile {
    FileForm form = FileForm::Templates;
    std::int32_t count = 0;  // of a file of templates, as stored; 0 or less for none
    std::vector<Bytes> blocks;
    Bytes rest;  // what stands behind the last template
};

/// Finds out what the bytes are. False if they are nothing of the kind. A block that can't be read is one all the same
/// as long as it is framed.
bool ReadPackageFile(std::span<const std::uint8_t> bytes, PackageFile& file);
Bytes WritePackageFile(const PackageFile& file);

/// The readable form of a file. What of a block it can't say exactly is given as raw bytes, so the way back always
/// leads to the same file.
Json JsonFromFile(const PackageFile& file);
/// The way back. False with the path of the member and what is wrong with it in `errorText`. Recurses along the nesting
/// of `content`, which ParseReadable limits.
bool FileFromJson(const Json& content, PackageFile& file, std::string& errorText);

/// The readable form of one block, and back.
Json JsonFromPackage(const StoredPackage& package);
bool PackageFromJson(const Json& content, const std::string& path, StoredPackage& package, std::string& errorText);

}  // namespace rekatool
