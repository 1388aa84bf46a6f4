// SPDX-License-Identifier: MIT
// A package passes over what it doesn't understand: a misspelt word costs a reaction, a misspelt name of a member all
// of its values. Which names it understands shows in what it asks the bag for, so there is no second list of them here.
// Its reports name a member; the element is found by what they cite of it.

#include "packagetext/LoadFaults.h"

#include <map>
#include <set>

#include "packagetext/PrintableName.h"
#include "text/LetterCase.h"
#include "text/Utf8.h"

namespace packagetext {

namespace {

constexpr const char* reactionIds = "reactionID";
const std::string coefficients = "stoichiometry[";

/// The texts of a list, empty for what is none.
std::vector<std::string> TextsOf(const Json& package, const std::string& member) {
    std::vector<std::string> texts;
    const auto list = package.find(member);
    if (list == package.end() || !list->is_array()) return texts;
    for (const Json& value : *list) texts.push_back(value.is_string() ? value.get<std::string>() : "");
    return texts;
}

/// Tells the elements that reports cite. Those of a member come in the order of its elements, so each search goes on
/// where the one before ended.
class CCitedElements {
public:
    explicit CCitedElements(const Json& documentPackage)
        : package(documentPackage), ids(TextsOf(package, reactionIds)) {}

    /// "[1]", or nothing where no element is cited.
    std::string IndexOf(const std::string& member, const std::string& report) {
        Column& column = columns[member];
        if (!column.isRead) column = {true, 0, TextsOf(package, member)};
        for (std::size_t i = column.next; i < column.texts.size(); ++i) {
            const bool isCited = report == "invalid value '" + column.texts[i] + "'" ||
                                 (i < ids.size() && report.find("for reaction " + ids[i] + ": ") != std::string::npos);
            if (!isCited) continue;
            column.next = i + 1;
            return "[" + std::to_string(i) + "]";
        }
        return "";
    }

private:
    struct Column {
        bool isRead = false;
        std::size_t next = 0;
        std::vector<std::string> texts;
    };

    const Json& package;
    std::vector<std::string> ids;
    std::map<std::string, Column> columns;
};

/// The coefficients of the reactions that the document lists, by the names of their members.
std::set<std::string> CoefficientsOf(const Json& package) {
    std::set<std::string> members;
    for (const std::string& id : TextsOf(package, reactionIds)) members.insert(coefficients + id + "]");
    return members;
}

/// A package that leaves out a reaction doesn't ask for its coefficients, which are no fault then.
void AddUnknownMembers(const Json& package, const CPropertyBag& bag, std::vector<std::string>& faults) {
    if (!bag.WasAskedFor(u"thermoVersion")) return;  // a load that gave up early hasn't asked for all it knows
    const std::set<std::string> known = CoefficientsOf(package);
    for (const CPropertyBag::Entry& entry : bag.Entries()) {
        const std::string member = reka::Utf8FromUtf16(entry.key);
        if (bag.WasAskedFor(entry.key) || known.contains(member)) continue;
        const char* const reason =
            member.starts_with(coefficients) ? ": there is no such reaction" : ": a package has no such member";
        faults.push_back("package." + member + reason);
    }
}

void AddMissingCoefficients(const Json& package, const CPropertyBag& bag, std::vector<std::string>& faults) {
    const std::set<std::string> known = CoefficientsOf(package);
    for (const std::u16string& name : bag.MissedNames()) {
        const std::string member = reka::Utf8FromUtf16(name);
        if (known.contains(member)) faults.push_back("package." + member + ": the member is missing");
    }
}

/// Names are compared with the case of letters ignored, as packages do.
void AddRepeatedIds(const Json& package, const char* member, std::vector<std::string>& faults) {
    const std::vector<std::string> ids = TextsOf(package, member);
    std::set<std::u16string> before;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (ids[i].empty() || before.insert(reka::UpperCase(reka::Utf16FromUtf8(ids[i]))).second) continue;
        faults.push_back("package." + std::string(member) + "[" + std::to_string(i) + "]: \"" + ids[i] +
                         "\" is there twice");
    }
}

}  // namespace

std::vector<std::string> FindLoadFaults(const Json& package, const CPropertyBag& bag, const CErrorLog& log) {
    std::vector<std::string> faults;
    CCitedElements elements(package);
    for (const CErrorLog::Report& report : log.Reports()) {
        const std::string member = reka::Utf8FromUtf16(report.property);
        const std::string text = OnOneLine(report.text);
        std::string& fault = faults.emplace_back("package.");
        fault.append(member).append(elements.IndexOf(member, text)).append(": ").append(text);
    }
    AddUnknownMembers(package, bag, faults);
    AddMissingCoefficients(package, bag, faults);
    AddRepeatedIds(package, reactionIds, faults);
    return faults;
}

}  // namespace packagetext
