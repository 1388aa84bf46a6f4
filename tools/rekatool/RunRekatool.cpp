// SPDX-License-Identifier: MIT
// The command line of rekatool. Commands fail by an exception of its own that carries the sentence, so that each reads
// as a list of steps. Files go through the component's seam: paths are UTF-8 on every system, and the tests run the
// program on files in memory. Which form a file has is found out from its bytes, not from its name.

#include "RunRekatool.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <map>
#include <ostream>
#include <sstream>

#include "CheckPackages.h"
#include "DiffPackages.h"
#include "LoadDefinitions.h"
#include "PackageFile.h"
#include "ParseReadable.h"
#include "Salvage.h"
#include "packagetext/PrintableName.h"
#include "packagetext/ReadWhole.h"
#include "packagetext/ReplaceFile.h"
#include "platform/Files.h"
#include "text/Utf8.h"

namespace rekatool {

namespace {

constexpr int failed = 2;

constexpr int isDifferent = 1;

struct Options {
    std::string inputPath;
    std::string outputPath;
    std::string otherPath;     // of the second file to compare
    std::string acceptedPath;  // of the warnings that are wanted
};

/// A failure with its sentence.
struct ToolFailure {
    std::string text;
};

Bytes ReadFile(const std::string& path) {
    const auto file = reka::Files().OpenForReading(reka::Utf16FromUtf8(path));
    if (!file) throw ToolFailure{path + ": the file can't be opened"};
    Bytes bytes = packagetext::ReadWhole(*file);
    // Part of a file would pass for a damaged one.
    if (file->HasFailed()) throw ToolFailure{path + ": the file can't be read"};
    return bytes;
}

void WriteFile(const std::string& path, std::span<const std::uint8_t> bytes) {
    std::string errorText;
    if (!packagetext::ReplaceFile(reka::Files(), path, bytes, errorText)) throw ToolFailure{errorText};
}

PackageFile ReadReadable(const std::string& path, const Bytes& bytes) {
    PackageFile file;
    std::string errorText;
    Json content;
    if (ParseReadable(bytes, content, errorText) && FileFromJson(content, file, errorText)) return file;
    throw ToolFailure{path + ": " + errorText};
}

PackageFile ReadPackages(const std::string& path, const Bytes& bytes) {
    PackageFile file;
    if (ReadPackageFile(bytes, file)) return file;
    throw ToolFailure{path + ": neither a file of templates nor a stored package"};
}

int Export(const Options& options, std::ostream& out) {
    const Bytes bytes = ReadFile(options.inputPath);
    const std::string text = packagetext::TextOfDocument(JsonFromFile(ReadPackages(options.inputPath, bytes)));
    const Bytes textBytes(text.begin(), text.end());
    if (WritePackageFile(ReadReadable(options.inputPath, textBytes)) != bytes) {
        throw ToolFailure{options.inputPath + ": the readable form would not lead back to this file"};
    }
    if (options.outputPath.empty()) {
        out << text;
    } else {
        WriteFile(options.outputPath, textBytes);
    }
    return 0;
}

int Import(const Options& options) {
    WriteFile(options.outputPath, WritePackageFile(ReadReadable(options.inputPath, ReadFile(options.inputPath))));
    return 0;
}

/// The lines of a file but empty ones and those that begin with "#", each with whether it was met.
std::map<std::string, bool> ReadAccepted(const std::string& path) {
    std::map<std::string, bool> accepted;
    if (path.empty()) return accepted;
    const Bytes bytes = ReadFile(path);
    const bool hasMark =
        std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()).starts_with("\xEF\xBB\xBF");
    std::istringstream lines(std::string(bytes.begin() + (hasMark ? 3 : 0), bytes.end()));
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r')) line.pop_back();
        if (!line.empty() && line[0] != '#') accepted[line] = false;
    }
    return accepted;
}

int Check(const Options& options, std::ostream& out, std::ostream& err) {
    std::map<std::string, bool> accepted = ReadAccepted(options.acceptedPath);
    const Bytes bytes = ReadFile(options.inputPath);
    const PackageFile file =
        IsReadable(bytes) ? ReadReadable(options.inputPath, bytes) : ReadPackages(options.inputPath, bytes);
    int status = 0;
    for (const Finding& finding : CheckPackages(file)) {
        const auto wanted = accepted.find(TextOf(finding));
        if (wanted != accepted.end()) wanted->second = true;
        if (wanted != accepted.end() && !finding.isFault) continue;
        out << TextOf(finding) << "\n";
        status = std::max(status, finding.isFault ? 2 : 1);
    }
    for (const auto& [line, isMet] : accepted) {
        if (!isMet) err << "rekatool: " << options.acceptedPath << ": accepted, but not found: " << line << "\n";
    }
    return status;
}

int Diff(const Options& options, std::ostream& out, std::ostream& err) {
    std::vector<std::string> notes;
    const Definitions before = LoadDefinitions(options.inputPath, notes);
    const Definitions after = LoadDefinitions(options.otherPath, notes);
    for (const std::string& note : notes)
        err << "rekatool: " << packagetext::OnOneLine(reka::Utf16FromUtf8(note)) << "\n";
    const std::vector<std::string> lines = DiffPackages(before, after);
    for (const std::string& line : lines) out << line << "\n";
    return lines.empty() ? 0 : isDifferent;
}

/// Whether two paths lead to one file, by whatever names and links.
bool IsSameFile(const std::string& first, const std::string& second) {
    if (first == second) return true;
    const auto pathOf = [](const std::string& path) {
        return std::filesystem::path(std::u8string(path.begin(), path.end()));
    };
    std::error_code unknown;  // one that isn't there isn't the other
    return std::filesystem::equivalent(pathOf(first), pathOf(second), unknown);
}

int Salvage(const Options& options, std::ostream& err) {
    if (IsSameFile(options.inputPath, options.outputPath)) {
        throw ToolFailure{options.outputPath +
                          ": this is the damaged file, which stays; give another name to write to"};
    }
    const Salvaged salvaged = SalvageTemplates(ReadFile(options.inputPath));
    for (const std::string& damage : salvaged.damages) {
        err << "rekatool: " << options.inputPath << ": " << damage << "\n";
    }
    if (salvaged.damages.empty()) {
        WriteFile(options.outputPath, WritePackageFile(salvaged.file));
        return 0;
    }
    const std::size_t count = salvaged.file.blocks.size();
    if (count == 0) throw ToolFailure{options.inputPath + ": there is no whole template in it; nothing is written"};
    WriteFile(options.outputPath, WritePackageFile(salvaged.file));
    err << "rekatool: " << options.outputPath << ": holds the " << count << " whole template" << (count == 1 ? "" : "s")
        << "\n";
    return 1;
}

void Describe(CLI::App& app, Options& options) {
    app.name("rekatool");
    app.description("rekatool: reaction packages as text for version control, and what is wrong with them.");
    app.footer(
        "FILE is a file of templates (REKAConfig.dat), or one stored package.\n"
        "Exit status: 0 done and nothing found, 1 warnings, differences, or a file of which salvage has written what\n"
        "is whole, 2 faults, a failure or misuse.");
    app.require_subcommand(1);
    CLI::App* exportCommand = app.add_subcommand("export", "Turn FILE into readable text");
    exportCommand->add_option("FILE", options.inputPath)->required();
    exportCommand->add_option("-o,--output", options.outputPath, "Where the text goes; standard output if not given");
    CLI::App* importCommand = app.add_subcommand("import", "Turn readable text back into its file, byte for byte");
    importCommand->add_option("FILE", options.inputPath)->required();
    importCommand->add_option("-o,--output", options.outputPath, "The file to write")->required();
    CLI::App* checkCommand =
        app.add_subcommand("check", "Report all faults of all packages of FILE, which may be readable text as well");
    checkCommand->add_option("FILE", options.inputPath)->required();
    checkCommand->add_option("--accept", options.acceptedPath,
                             "A text with the warnings that are wanted, each on a line as it is reported");
    CLI::App* diffCommand = app.add_subcommand("diff", "Tell what differs between the packages of two files");
    diffCommand->add_option("FILE", options.inputPath, "The file as it was, or a document of rekasim")->required();
    diffCommand->add_option("OTHER", options.otherPath, "The file as it is")->required();
    CLI::App* salvageCommand =
        app.add_subcommand("salvage", "Write the whole templates of a damaged FILE, and say what isn't whole");
    salvageCommand->add_option("FILE", options.inputPath)->required();
    salvageCommand->add_option("-o,--output", options.outputPath, "The file of templates to write, not FILE itself")
        ->required();
}

int RunArguments(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    CLI::App app;
    Options options;
    Describe(app, options);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));  // it takes them from the back
        if (app.got_subcommand("export")) return Export(options, out);
        if (app.got_subcommand("import")) return Import(options);
        if (app.got_subcommand("salvage")) return Salvage(options, err);
        if (app.got_subcommand("diff")) return Diff(options, out, err);
        return Check(options, out, err);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error, out, err);  // help was asked for
        err << "rekatool: " << error.what() << " (--help tells more)\n";
    } catch (const ToolFailure& failure) {
        err << "rekatool: " << packagetext::PrintableName(failure.text) << "\n";
    } catch (const std::exception& error) {
        err << "rekatool: " << packagetext::PrintableName(std::string_view(error.what())) << "\n";
    }
    return failed;
}

}  // namespace

int RunRekatool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    const int status = RunArguments(arguments, out, err);
    out.flush();
    if (out) return status;
    // Lines that went nowhere, as on a full disk, must not look like a good end.
    err << "rekatool: the output can't be written\n";
    return failed;
}

}  // namespace rekatool
