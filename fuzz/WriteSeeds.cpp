// SPDX-License-Identifier: MIT
// Writes the seeds of the fuzzers, one folder each, out of the shipped files:
//     write_seeds FOLDER DATA-FOLDER [DOCUMENT...]

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <vector>

#include "QuietMessages.h"
#include "SeedForms.h"
#include "compounds/LoadPcdFile.h"
#include "persistence/ByteReader.h"
#include "persistence/ReadStoredDefinition.h"
#include "rekatool/PackageFile.h"
#include "text/Utf8.h"

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

int seedCount = 0;

void WriteSeed(const fs::path& folder, std::span<const std::uint8_t> bytes) {
    fs::create_directories(folder);
    std::ofstream file(folder / std::to_string(++seedCount), std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

void WriteSeed(const fs::path& folder, std::u16string_view text) {
    const std::string bytes = reka::Utf8FromUtf16(text);
    WriteSeed(folder, std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

Bytes ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// An old block that reads; a seed that doesn't would show nothing to a fuzzer.
void WriteGoodBlock(const fs::path& folder, const Bytes& block) {
    reka::ReactionPackDefinition definition(nullptr);
    std::u16string errorText;
    if (!reka::ReadStoredDefinition(definition, block, errorText)) {
        std::fprintf(stderr, "bad seed: %s\n", reka::Utf8FromUtf16(errorText).c_str());
        std::exit(1);
    }
    WriteSeed(folder, block);
}

void WriteReadableSeed(const fs::path& folder, const Bytes& bytes) {
    rekatool::PackageFile file;
    if (!ReadPackageFile(bytes, file)) return;
    const std::string text = packagetext::TextOfDocument(JsonFromFile(file));
    WriteSeed(folder, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

void WriteTemplateSeeds(const fs::path& folder, const Bytes& bytes) {
    WriteSeed(folder / "TemplateFile", bytes);
    WriteSeed(folder / "RekatoolFile", bytes);
    WriteReadableSeed(folder / "RekatoolFile", bytes);
    reka::CByteReader reader(bytes);
    std::uint32_t count = 0;
    reader.ReadU32(count);
    for (; count > 0; --count) {
        std::uint32_t size = 0;
        std::span<const std::uint8_t> block;
        if (!reader.ReadU32(size) || !reader.ReadBytes(size, block)) return;
        WriteSeed(folder / "StoredBlock", block);
        reka::ReactionPackDefinition definition(nullptr);
        std::u16string errorText;
        if (!reka::ReadStoredDefinition(definition, block, errorText)) continue;
        WriteSeed(folder / "RekatoolFile", block);
        for (std::uint32_t version = 0; version < 3; ++version) {
            WriteGoodBlock(folder / "StoredBlock", reka::fuzz::OldBlock(definition, version));
        }
        WriteSeed(folder / "PropertyBag", reka::fuzz::BagAnswers(definition));
        for (const auto& reaction : definition.reactions) {
            WriteSeed(folder / "ReactionParser", reaction->rateEquation);
            WriteSeed(folder / "ReactionParser", reaction->equilibriumConstantEquation);
            WriteSeed(folder / "ReactionParser", reaction->heatEquation);
        }
    }
}

void WriteFieldSeeds(const fs::path& folder) {
    for (const char16_t* text : {u"1.5e3/60", u"2*PI*R", u"-SQRT(2)^0.5", u"MIN(1,MAX(2,3))", u"1+(2", u"T*2", u"1E-",
                                 u"MOD(,.5,\"R\")", u"2^-3^2"}) {
        WriteSeed(folder / "ScalarInput", text);
    }
}

void WriteCompoundSeeds(const fs::path& folder, const fs::path& path) {
    constexpr std::size_t someRecords = 4 * 1024;
    const Bytes bytes = ReadFile(path);
    WriteSeed(folder / "PcdFile", std::span(bytes).first(std::min(bytes.size(), someRecords)));
    reka::CompoundList list;
    std::u16string errorText;
    reka::LoadPcdFile(reka::Utf16FromUtf8(path.string()), list, errorText);
    for (const auto& compound : list) {
        WriteSeed(folder / "NormalForm", compound->formula.View());
        WriteSeed(folder / "StructureFormula", compound->formula.View());
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("write_seeds FOLDER DATA-FOLDER [DOCUMENT...]\n", stderr);
        return 2;
    }
    reka::fuzz::SilenceMessages();
    WriteTemplateSeeds(argv[1], ReadFile(fs::path(argv[2]) / "REKAConfig.dat"));
    WriteFieldSeeds(argv[1]);
    for (int i = 3; i < argc; ++i) WriteSeed(fs::path(argv[1]) / "RekasimDocument", ReadFile(argv[i]));
    WriteCompoundSeeds(argv[1], fs::path(argv[2]) / "Korvex1.pcd");
    WriteSeed(fs::path(argv[1]) / "NormalForm", u"Al2(SO4)3((CH3)2.5N)2");
    return 0;
}
