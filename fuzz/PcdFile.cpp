// SPDX-License-Identifier: MIT
// Any bytes as a compound file. Whatever they are, the list is empty where there is a reason, no reason is told where
// there is a list, and the file is closed. A second reading, straight out of the bytes, finds the same compounds.

#include <algorithm>
#include <cstring>
#include <span>

#include "compounds/LoadPcdFile.h"
#include "formula/FormulaNormalForm.h"
#include "platform/CodePage.h"
#include "support/FakeFiles.h"

namespace {

using Record = std::span<const std::uint8_t>;

/// The characters of a field behind its length, up to a zero.
std::string FieldAt(Record record, std::size_t offset) {
    const std::string field(reinterpret_cast<const char*>(record.data()) + offset + 1, record[offset]);
    return field.c_str();
}

void Require(bool holds) {
    if (!holds) std::abort();
}

void CompareFormula(const reka::CompoundDefinition& compound, std::string formula) {
    while (formula.ends_with(' ')) formula.pop_back();
    const bool isPolymer = formula.starts_with("Poly") && formula.size() > 4;
    Require(compound.formula.View() == (isPolymer ? u"" : reka::NormalizePcdFormula(reka::WideText(formula))));
}

void CompareCasNumber(const reka::CompoundDefinition& compound, std::string number) {
    const bool isNumber = std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!isNumber && number.find('-') != std::string::npos) return;  // with dashes already
    if (isNumber && number.size() >= 4 && number.size() <= 9) {
        number.insert(number.size() - 1, "-").insert(number.size() - 4, "-");
    }
    Require(compound.casNumber.View() == reka::WideText(number));
}

/// Whether the record is one, and then that the compound says what it does.
bool CompareRecord(Record record, std::size_t length, const reka::CompoundDefinition* compound) {
    const bool isLong = length == 1024;
    if (record.size() < (isLong ? 890 : 723) || record[3] > 50 || record[54] > 50) return false;
    if (isLong && record[839] > 50) return false;
    if (!compound) return true;
    float weight = 0;
    std::memcpy(&weight, record.data() + 138, sizeof weight);
    const double expected = static_cast<double>(weight);
    Require(compound->molecularWeight == expected || (expected != expected));
    Require(compound->name.View() == reka::WideText(FieldAt(record, 3)));
    Require(compound->id.View() == compound->name.View());
    CompareFormula(*compound, FieldAt(record, 54));
    CompareCasNumber(*compound, isLong ? FieldAt(record, 839) : "");
    return true;
}

/// Whether the bytes are a compound file, all of whose compounds are in `list` if it has any.
bool CompareFile(Record bytes, const reka::CompoundList& list) {
    if (bytes.size() < 2) return false;
    const std::size_t length = bytes[0] | std::size_t{bytes[1]} << 8;
    if (length != 839 && length != 1024) return false;
    std::size_t count = 0;
    for (std::size_t place = length; place < bytes.size(); place += length, ++count) {
        const Record record = bytes.subspan(place, std::min(length, bytes.size() - place));
        if (!CompareRecord(record, length, count < list.size() ? list[count].get() : nullptr)) return false;
    }
    Require(list.empty() || list.size() == count);
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reka::test::CFakeFiles files;
    files.entries[u"f"] = {{data, data + size}, 1};
    reka::CompoundList list;
    std::u16string errorText;
    const bool isLoaded = reka::LoadPcdFile(u"f", list, errorText);
    Require(isLoaded == errorText.empty() && (isLoaded || list.empty()) && files.openFiles == 0);
    Require(CompareFile(Record(data, size), list) == isLoaded);
    return 0;
}
