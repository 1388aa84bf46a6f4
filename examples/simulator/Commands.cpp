// SPDX-License-Identifier: MIT
// Each command is the same few steps: open the package, have it do something, print. Nothing is printed before all
// numbers are there, so a failure leaves no half of a table. A document with a fault goes no further than its loading,
// since a package passes over what it doesn't understand and calculates with the rest.

#include "Commands.h"

#include <algorithm>
#include <ostream>

#include "CPackageSession.h"
#include "FormatNumber.h"
#include "ReactionTable.h"
#include "material/ReadMaterial.h"
#include "packagetext/BagMembers.h"
#include "packagetext/DocumentShape.h"
#include "packagetext/LoadFaults.h"
#include "packagetext/VariantArrays.h"
#include "text/Utf8.h"

namespace rekasim {

namespace {

/// A package, loaded from a document or resolved by its name, and the document that goes with it.
struct OpenDocument {
    packagetext::Json content = packagetext::Json::object();  // with the material, if there is one
    std::string path;                                         // of the document
    std::string text;                                         // of the document, for the lines of its faults
    CPackageSession session;
};

/// A fault of the document with its place; `sentence` begins with the path of the member.
std::string InDocument(const OpenDocument& document, const std::string& sentence) {
    return document.path + ": " + packagetext::AtLine(document.text, sentence);
}

bool ReadFile(const std::string& path, OpenDocument& document, Failure& failure) {
    document.path = path;
    return packagetext::ReadDocument(path, document.content, document.text, failure.text);
}

bool OpenByName(const CommandOptions& options, OpenDocument& document, Failure& failure) {
    if (!options.materialPath.empty() && !ReadFile(options.materialPath, document, failure)) return false;
    return document.session.Resolve(reka::Utf16FromUtf8(options.packageName), failure);
}

/// Tells all faults but the last, which is the failure: what the package passes over would change its results.
bool Refuse(const OpenDocument& document, const std::vector<std::string>& faults, std::ostream& err, Failure& failure) {
    constexpr std::size_t mostFaults = 20;
    const std::size_t told = std::min(faults.size(), mostFaults);
    for (std::size_t i = 0; i + 1 < told; ++i) {
        err << "rekasim: " << OnOneLine(InDocument(document, faults[i])) << "\n";
    }
    failure.text = InDocument(document, faults[told - 1]);
    if (faults.size() > told) failure.text += " (and " + std::to_string(faults.size() - told) + " more faults)";
    return false;
}

/// A load that failed says why by its last report, or by the member that it asked for last.
bool RefuseLoad(const OpenDocument& document, const packagetext::CPropertyBag& bag,
                const std::vector<std::string>& faults, std::ostream& err, Failure& failure) {
    if (!faults.empty()) return Refuse(document, faults, err, failure);
    if (!bag.MissedNames().empty()) {
        failure.text = InDocument(
            document, "package." + reka::Utf8FromUtf16(bag.MissedNames().back()) + ": the member is missing");
    }
    return false;
}

bool LoadPackage(const packagetext::Json& package, OpenDocument& document, std::ostream& err, Failure& failure) {
    const auto bag = packagetext::MakeObject<packagetext::CPropertyBag>();
    if (!packagetext::FillBag(package, *bag, failure.text)) {
        failure.text = InDocument(document, failure.text);
        return false;
    }
    const auto log = packagetext::MakeObject<packagetext::CErrorLog>();
    const bool isLoaded = document.session.Load(*bag, *log, failure);
    const std::vector<std::string> faults = packagetext::FindLoadFaults(package, *bag, *log);
    if (!isLoaded) return RefuseLoad(document, *bag, faults, err, failure);
    return faults.empty() || Refuse(document, faults, err, failure);
}

bool Open(const CommandOptions& options, OpenDocument& document, std::ostream& err, Failure& failure) {
    if (!options.packageName.empty()) return OpenByName(options, document, failure);
    if (!ReadFile(options.documentPath, document, failure)) return false;
    const auto package = document.content.find("package");
    if (package != document.content.end() && package->is_object()) {
        return LoadPackage(*package, document, err, failure);
    }
    failure.text = InDocument(document, "package: the member is missing or no object");
    return false;
}

bool WriteIdentity(CPackageSession& session, std::ostream& out, Failure& failure) {
    std::u16string name;
    std::u16string description;
    if (!session.ReadIdentity(name, description, failure)) return false;
    out << (name.empty() ? "(a package without a name)" : reka::Utf8FromUtf16(name)) << "\n";
    if (!description.empty()) out << reka::Utf8FromUtf16(description) << "\n";
    out << "\n";
    return true;
}

/// The thermo version that the package's data name; a package without the word uses version 1.0.
bool ReadVersion(CPackageSession& session, ThermoVersion& version, Failure& failure) {
    const auto bag = packagetext::MakeObject<packagetext::CPropertyBag>();
    if (!session.Save(*bag, failure)) return false;
    const packagetext::Json members = packagetext::MembersFromBag(*bag);
    const auto word = members.find("thermoVersion");
    version = word != members.end() && *word == "1.1" ? ThermoVersion::Version11 : ThermoVersion::Version10;
    return true;
}

/// The rates of the kinetic reactions of each phase, or the constants of the equilibrium reactions, asked for together.
bool CalculateMainValues(CPackageSession& session, const std::vector<Reaction>& reactions, bool isKinetic,
                         ReactionValues& line, Failure& failure) {
    std::vector<bool> isDone(reactions.size());
    for (std::size_t first = 0; first < reactions.size(); ++first) {
        if (isDone[first] || reactions[first].isKinetic != isKinetic) continue;
        std::vector<std::size_t> indices;
        std::vector<std::u16string> ids;
        for (std::size_t i = first; i < reactions.size(); ++i) {
            if (reactions[i].isKinetic != isKinetic || reactions[i].phase != reactions[first].phase) continue;
            indices.push_back(i);
            ids.push_back(reactions[i].id);
            isDone[i] = true;
        }
        const char16_t* property = isKinetic ? u"ReactionRate" : u"ChemicalEquilibriumConstant";
        std::vector<double> values;
        if (!session.Calculate(property, reactions[first].phase, ids, values, failure)) return false;
        for (std::size_t i = 0; i < indices.size(); ++i) line.mainValues[indices[i]] = FormatFullNumber(values[i]);
    }
    return true;
}

/// A reaction may have no heat of reaction, so each is asked for by itself, and one without gets a dash. `notes` may be
/// null.
bool CalculateHeats(CPackageSession& session, const std::vector<Reaction>& reactions, ReactionValues& line,
                    std::ostream* notes, Failure& failure) {
    for (const Reaction& reaction : reactions) {
        std::vector<double> values;
        if (session.Calculate(u"EnthalpyOfReaction", reaction.phase, {reaction.id}, values, failure)) {
            line.heats.push_back(FormatFullNumber(values[0]));
            continue;
        }
        if (failure.name != "undefined") return false;
        line.heats.emplace_back("-");
        if (notes) *notes << "rekasim: no heat of reaction: " << OnOneLine(failure.text) << "\n";
        failure = Failure();
    }
    return true;
}

/// One line per temperature. Why a reaction has no heat is noted for the first.
bool CalculateLines(CPackageSession& session, CMaterial& material, const std::vector<double>& temperatures,
                    const std::vector<Reaction>& reactions, std::vector<ReactionValues>& lines, std::ostream* notes,
                    Failure& failure) {
    for (const double temperature : temperatures) {
        material.SetTemperature(temperature);
        ReactionValues& line = lines.emplace_back();
        line.temperature = temperature;
        line.mainValues.resize(reactions.size());
        if (!CalculateMainValues(session, reactions, true, line, failure)) return false;
        if (!CalculateMainValues(session, reactions, false, line, failure)) return false;
        std::ostream* const lineNotes = lines.size() == 1 ? notes : nullptr;
        if (!CalculateHeats(session, reactions, line, lineNotes, failure)) return false;
    }
    return true;
}

bool ReadState(const OpenDocument& document, MaterialState& state, Failure& failure) {
    if (ReadMaterial(document.content, state, failure.text)) return true;
    failure.text = InDocument(document, failure.text);
    return false;
}

bool PrintTable(const CommandOptions& options, OpenDocument& document, std::ostream& out, std::ostream& err,
                Failure& failure) {
    MaterialState state;
    if (!ReadState(document, state, failure)) return false;
    const auto material = packagetext::MakeObject<CMaterial>();
    const auto results = packagetext::MakeObject<CReactionResults>();
    material->SetState(state);
    CPackageSession& session = document.session;
    std::vector<Reaction> reactions;
    if (!session.SetReactionObject(*results, failure)) return false;
    ThermoVersion version = ThermoVersion::Version10;
    if (!ReadVersion(session, version, failure)) return false;
    if (!session.SetMaterial(*material, version, failure)) return false;
    if (!session.ReadReactions(reactions, failure)) return false;

    std::vector<double> temperatures = options.temperatures;
    if (temperatures.empty()) temperatures.push_back(state.temperature);
    std::vector<ReactionValues> lines;
    std::ostream* notes = options.isVerbose ? &err : nullptr;
    if (!CalculateLines(session, *material, temperatures, reactions, lines, notes, failure)) return false;
    if (!WriteIdentity(session, out, failure)) return false;
    WriteReactions(out, reactions, state);
    out << "\n";
    WriteMaterial(out, state, temperatures);
    out << "\n";
    WriteValues(out, reactions, lines);
    return true;
}

bool PrintReactor(const CommandOptions& options, OpenDocument& document, std::ostream& out, Failure& failure) {
    MaterialState state;
    ThermoVersion version = ThermoVersion::Version10;
    return ReadState(document, state, failure) && ReadVersion(document.session, version, failure) &&
           SolveReactor(document.session, std::move(state), version, options.reactor, out, failure);
}

bool PrintPackage(OpenDocument& document, std::ostream& out, Failure& failure) {
    std::vector<Reaction> reactions;
    if (!document.session.ReadReactions(reactions, failure)) return false;
    if (!WriteIdentity(document.session, out, failure)) return false;
    WriteCompounds(out, reactions);
    out << "\n";
    WriteReactions(out, reactions, {});
    return true;
}

bool SaveDocument(const CommandOptions& options, OpenDocument& document, Failure& failure) {
    const auto bag = packagetext::MakeObject<packagetext::CPropertyBag>();
    if (!document.session.Save(*bag, failure)) return false;
    packagetext::Json& package = document.content["package"];
    packagetext::Json saved = packagetext::MembersFromBag(*bag);
    if (package.is_object() && package.contains(packagetext::commentMember)) {
        saved[packagetext::commentMember] = package[packagetext::commentMember];
    }
    package = std::move(saved);
    return packagetext::WriteDocument(options.outputPath, document.content, failure.text);
}

}  // namespace

std::string OnOneLine(const std::string& text) {
    std::string line;
    for (const char character : text) {
        const bool isBlank = character == '\r' || character == '\n' || character == ' ';
        if (!isBlank)
            line += character;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

bool RunList(std::ostream& out, Failure& failure) {
    std::vector<std::u16string> names;
    if (!ListPackages(names, failure)) return false;
    for (const std::u16string& name : names) out << reka::Utf8FromUtf16(name) << "\n";
    return true;
}

bool RunTable(const CommandOptions& options, std::ostream& out, std::ostream& err, Failure& failure) {
    OpenDocument document;
    return Open(options, document, err, failure) && PrintTable(options, document, out, err, failure);
}

bool RunShow(const CommandOptions& options, std::ostream& out, std::ostream& err, Failure& failure) {
    OpenDocument document;
    return Open(options, document, err, failure) && PrintPackage(document, out, failure);
}

bool RunReactor(const CommandOptions& options, std::ostream& out, std::ostream& err, Failure& failure) {
    OpenDocument document;
    return Open(options, document, err, failure) && PrintReactor(options, document, out, failure);
}

bool RunSave(const CommandOptions& options, std::ostream&, std::ostream& err, Failure& failure) {
    OpenDocument document;
    return Open(options, document, err, failure) && SaveDocument(options, document, failure);
}

}  // namespace rekasim
