// SPDX-License-Identifier: MIT
// Each record is read whole, and its parts are taken out of memory. The place of a record is computed from its number,
// so nothing of one can shift the next. What stands between the parts that count belongs to the outside tool and isn't
// looked at. One record that makes no sense spoils the file: a table of which the half is wrong would be worse than
// none, as nobody checks the numbers of a compound that looks right.

#include "compounds/LoadPcdFile.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>

#include "formula/FormulaNormalForm.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Holders.h"
#include "platform/HostArithmetic.h"
#include "platform/OutOfMemoryText.h"

namespace reka {

namespace {

constexpr std::size_t shortRecord = 839;
constexpr std::size_t longRecord = 1024;

// Where things lie in a record.
constexpr std::size_t nameOffset = 3;
constexpr std::size_t formulaOffset = 54;
constexpr std::size_t molecularWeightOffset = 138;
constexpr std::size_t endOfCharge = 723;  // up to here a record is always read
constexpr std::size_t casOffset = 839;
constexpr std::size_t endOfCas = 890;
constexpr std::size_t fieldSize = 50;  // behind a length byte

/// The text of a field: its length byte, then its characters, of which the first zero ends the text. False for a
/// length that the field hasn't got.
bool TakeField(std::span<const std::uint8_t> record, std::size_t offset, std::string_view& text) {
    const std::size_t length = record[offset];  // a negative one is above the size as well
    if (length > fieldSize) return false;
    text = {reinterpret_cast<const char*>(record.data()) + offset + 1, length};
    text = text.substr(0, text.find('\0'));
    return true;
}

/// The normal form; absent where there is no formula, or that of a polymer.
CBstr MakeFormula(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find_last_not_of(' ') + 1);
    const std::u16string text = WideText(bytes);
    constexpr std::u16string_view polymer = u"Poly";
    if (text.size() > polymer.size() && text.starts_with(polymer)) return {};
    return BstrFromString(NormalizePcdFormula(text));
}

double TakeFloat(std::span<const std::uint8_t> record, std::size_t offset) {
    std::uint32_t bits = 0;
    for (std::size_t i = 4; i-- > 0;) bits = bits << 8 | record[offset + i];
    return static_cast<double>(std::bit_cast<float>(bits));
}

/// The compound of a record of which all that counts is there; null for one that makes no sense.
std::unique_ptr<CompoundDefinition> MakeCompound(std::span<const std::uint8_t> record, std::size_t recordLength) {
    std::string_view name;
    std::string_view formula;
    std::string_view casNumber;
    if (!TakeField(record, nameOffset, name) || !TakeField(record, formulaOffset, formula)) return nullptr;
    if (recordLength == longRecord && !TakeField(record, casOffset, casNumber)) return nullptr;
    auto compound = std::make_unique<CompoundDefinition>();
    compound->id = CBstr::Make(WideText(name));
    compound->name = CBstr::CopyOf(compound->id.Get());
    compound->formula = MakeFormula(formula);
    compound->molecularWeight = TakeFloat(record, molecularWeightOffset);
    compound->casNumber = BstrFromString(FormatCasNumber(WideText(casNumber)));
    return compound;
}

/// Reads the records behind the header. False for one that isn't whole.
bool ReadRecords(IFile& file, std::size_t recordLength, CompoundList& list) {
    const COwnArithmetic arithmetic;
    std::uint8_t record[longRecord];
    const std::size_t needed = recordLength == longRecord ? endOfCas : endOfCharge;
    for (std::uint64_t number = 1;; ++number) {
        if (!file.Seek(number * recordLength)) return true;
        const std::size_t size = file.Read(record, recordLength);
        if (size == 0) return true;  // the end of the file
        if (size < needed) return false;
        auto compound = MakeCompound(std::span(record, size), recordLength);
        if (!compound) return false;
        compound->databaseIndex = static_cast<std::int32_t>(number - 1);
        list.push_back(std::move(compound));
    }
}

bool Load(const std::u16string& path, CompoundList& list, std::u16string& errorText) {
    if (path.empty()) {
        errorText = u"no PCD file specified";
        return false;
    }
    const std::unique_ptr<IFile> file = Files().OpenForReading(path);
    if (!file) {
        errorText = u"failed to open " + path + u" for reading";
        return false;
    }
    std::uint8_t header[2] = {};
    const bool isWhole = file->Read(header, sizeof header) == sizeof header;
    const auto recordLength = static_cast<std::size_t>(header[0] | header[1] << 8);
    if (!isWhole || (recordLength != shortRecord && recordLength != longRecord)) {
        errorText = u"invalid record length in " + path;
        return false;
    }
    if (ReadRecords(*file, recordLength, list)) return true;
    errorText = u"a read error or format error occurred while reading " + path;
    return false;
}

/// For a failure that couldn't be told when it happened.
void TellFailure(const std::u16string& path, std::u16string& errorText) noexcept {
    try {
        errorText = u"an error occurred while attempting to load compounds from " + path;
    } catch (const std::exception&) {  // nor can it be told now
    }
}

/// Whether the dashes of a CAS number stand where they belong: at the second and the fifth place from the end.
bool HasDashesInPlace(std::u16string_view text) {
    return text[text.size() - 2] == u'-' && text[text.size() - 5] == u'-';
}

}  // namespace

bool LoadPcdFile(const std::u16string& path, CompoundList& list, std::u16string& errorText) noexcept {
    list.clear();
    try {
        if (Load(path, list, errorText)) return true;
    } catch (const std::exception&) {
        TellOutOfMemory(errorText);
    }
    list.clear();
    if (errorText.empty()) TellFailure(path, errorText);
    return false;
}

std::u16string FormatCasNumber(std::u16string_view text) {
    std::u16string unchanged(text);
    if (text.empty() || text.find_first_not_of(u"0123456789-") != std::u16string_view::npos) return unchanged;
    if (std::count(text.begin(), text.end(), u'-') == 2) {
        if (text.size() < 6 || text.size() > 12 || HasDashesInPlace(text)) return unchanged;
    }
    if (text.size() < 4 || text.size() > 9) return unchanged;
    const std::size_t length = text.size();
    return std::u16string(text.substr(0, length - 3)) + u"-" + std::u16string(text.substr(length - 3, 2)) + u"-" +
           std::u16string(text.substr(length - 1));
}

}  // namespace reka
