// SPDX-License-Identifier: MIT
// The command line. Numbers are taken as texts and read by rekasim itself, since the option reader's own conversion
// follows the locale. Every failure ends in one line on standard error and an exit status, which tells a failure from
// a misuse.

#include "RunRekasim.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <functional>
#include <ostream>

#include "Commands.h"
#include "FormatNumber.h"
#include "Sweep.h"

namespace rekasim {

namespace {

constexpr int failed = 1;
constexpr int misused = 2;

/// A number that is read as a text first.
struct NumberOption {
    std::string name;
    std::string text;
    std::function<void(double)> take;
};

/// The command line as it was read, before its texts are understood.
struct Arguments {
    CommandOptions options;
    std::vector<NumberOption> reactorNumbers;
    std::string points;
    std::string from;
    std::string to;
    std::string step;
};

/// A package comes from a document, or by its name from the manager.
CLI::Option* DescribePackage(CLI::App& command, Arguments& arguments) {
    CLI::Option* name = command
                            .add_option("name", arguments.options.packageName,
                                        "A package that the manager offers; rekasim list shows them")
                            ->type_name("NAME");
    CLI::Option* document =
        command.add_option("--document", arguments.options.documentPath, "The document with the package")
            ->type_name("FILE");
    name->excludes(document);
    document->excludes(name);
    command.callback([&arguments] {
        if (arguments.options.packageName.empty() && arguments.options.documentPath.empty()) {
            throw CLI::RequiredError("NAME or --document");
        }
    });
    return name;
}

/// A package that comes by its name needs a document for the material.
void DescribePackageWithMaterial(CLI::App& command, Arguments& arguments) {
    CLI::Option* name = DescribePackage(command, arguments);
    CLI::Option* material = command.add_option("--material", arguments.options.materialPath,
                                               "The document with the material for the package NAME");
    material->type_name("FILE")->needs(name);
    name->needs(material);
}

void DescribeTable(CLI::App& app, Arguments& arguments) {
    CLI::App* table = app.add_subcommand(
        "table",
        "Calculate rates, equilibrium constants and heats of reaction for a document's material, at its own "
        "temperature or over a range");
    DescribePackageWithMaterial(*table, arguments);
    CLI::Option* from = table->add_option("--from", arguments.from, "First temperature")->type_name("K");
    CLI::Option* to = table->add_option("--to", arguments.to, "Last temperature, included")->type_name("K");
    CLI::Option* step = table->add_option("--step", arguments.step, "Distance of the temperatures")->type_name("K");
    from->needs(to)->needs(step);
    to->needs(from)->needs(step);
    step->needs(from)->needs(to);
    table->footer("Example: rekasim table --document ammonia-synthesis.json --from 673.15 --to 773.15 --step 25");
}

/// Numbers above 0 of the reactor.
void DescribeReactorNumbers(CLI::App& reactor, Arguments& arguments) {
    ReactorOptions& options = arguments.options.reactor;
    arguments.reactorNumbers = {{"--flow", "", [&options](double number) { options.flow = number; }},
                                {"--volume", "", [&options](double number) { options.volume = number; }},
                                {"--catalyst", "", [&options](double number) { options.catalyst = number; }},
                                {"--temperature", "", [&options](double number) { options.temperature = number; }},
                                {"--pressure", "", [&options](double number) { options.pressure = number; }}};
    const char* const descriptions[] = {"Feed, 1 if it isn't given", "Size for rates per volume",
                                        "Size for rates per mass of catalyst",
                                        "Feed temperature, if not the material's", "Pressure, if not the material's"};
    const char* const units[] = {"MOL/S", "M3", "KG", "K", "PA"};
    for (std::size_t i = 0; i < arguments.reactorNumbers.size(); ++i) {
        reactor.add_option(arguments.reactorNumbers[i].name, arguments.reactorNumbers[i].text, descriptions[i])
            ->type_name(units[i]);
    }
}

void DescribeReactor(CLI::App& app, Arguments& arguments) {
    ReactorOptions& options = arguments.options.reactor;
    CLI::App* reactor = app.add_subcommand(
        "reactor", "Solve an isothermal or adiabatic reactor with the package's numbers, fed with the material");
    DescribePackageWithMaterial(*reactor, arguments);
    CLI::Option_group* kinds = reactor->add_option_group("kind");
    CLI::Option* plugFlow = kinds->add_flag_callback(
        "--pfr", [&options] { options.kind = ReactorKind::PlugFlow; },
        "Plug flow, with a profile from inlet to outlet");
    kinds->add_flag_callback(
        "--cstr", [&options] { options.kind = ReactorKind::StirredTank; }, "A stirred tank");
    kinds->add_flag_callback(
        "--equilibrium", [&options] { options.kind = ReactorKind::Equilibrium; }, "The equilibrium reactions at rest");
    kinds->require_option(1);
    reactor->add_flag("--adiabatic", options.isAdiabatic,
                      "No heat is exchanged; the material gives heat capacities then");
    DescribeReactorNumbers(*reactor, arguments);
    reactor->add_option("--points", arguments.points, "Points of the profile, 21 if not given")
        ->type_name("N")
        ->needs(plugFlow);
    reactor->add_option("--key", options.key, "Compound whose conversion is told")->type_name("ID");
    reactor->add_flag("--csv", options.isCsv, "Print comma-separated values with all digits");
    reactor->add_option("--plot", options.plotPath, "Draw the profile into an .svg or .png file (by gnuplot)")
        ->type_name("FILE")
        ->needs(plugFlow);
    reactor->footer(
        "Example: rekasim reactor \"Toluene hydrodealkylation\" --material toluene-hydrodealkylation.json --pfr "
        "--flow 1000 --volume 100 --plot toluene.svg");
}

void DescribeShow(CLI::App& app, Arguments& arguments) {
    CLI::App* show = app.add_subcommand("show", "Print the compounds and reactions that the package tells of");
    DescribePackage(*show, arguments);
    show->footer("Example: rekasim show --document methanol-synthesis.json");
}

void DescribeSave(CLI::App& app, Arguments& arguments) {
    CLI::App* save =
        app.add_subcommand("save", "Load the package, have it save itself, and write the document with what it saved");
    DescribePackage(*save, arguments);
    save->add_option("--to", arguments.options.outputPath, "The document to write; the material and notes are kept")
        ->required()
        ->type_name("FILE");
    save->footer("Example: rekasim save --document water-gas-shift.json --to copy.json");
}

void DescribeList(CLI::App& app) {
    app.add_subcommand("list", "Print the names of the packages that the manager offers")
        ->footer("Packages are kept as templates in the configuration folder of the user.");
}

void DescribeProgram(CLI::App& app, Arguments& arguments) {
    app.name("rekasim");
    app.description(
        "rekasim, a small simulator: gets a reaction package from the package manager or from a document, gives it a "
        "material and prints what it calculates.");
    app.footer(
        "Examples:\n"
        "  rekasim list\n"
        "  rekasim show  \"Methanol synthesis\"\n"
        "  rekasim table \"Methanol synthesis\" --material documents/methanol-synthesis.json\n"
        "  rekasim show  --document documents/ammonia-synthesis.json\n"
        "  rekasim table --document documents/ammonia-synthesis.json\n"
        "  rekasim table --document documents/ammonia-synthesis.json --from 673.15 --to 773.15 --step 25\n"
        "  rekasim save  --document documents/ammonia-synthesis.json --to copy.json\n"
        "\n"
        "Units: K, Pa, mol/m3; rates in mol/(m3 s) or mol/(kg s), heats in J/mol.\n"
        "Exit status: 0 done, 1 failed (one line tells why), 2 misused.");
    app.add_flag("--verbose", arguments.options.isVerbose,
                 "Tell which method of which interface failed, and why a reaction has no heat");
    app.fallthrough();
    app.require_subcommand(1);
    DescribeList(app);
    DescribeTable(app, arguments);
    DescribeReactor(app, arguments);
    DescribeShow(app, arguments);
    DescribeSave(app, arguments);
}

/// False with a sentence in `failure` for a sweep that makes no sense.
bool UnderstandSweep(Arguments& arguments, Failure& failure) {
    if (arguments.from.empty()) return true;
    double from = 0;
    double to = 0;
    double step = 0;
    for (const auto& [name, text, number] :
         {std::tuple("--from", &arguments.from, &from), std::tuple("--to", &arguments.to, &to),
          std::tuple("--step", &arguments.step, &step)}) {
        if (ParseNumber(*text, *number)) continue;
        failure.text = std::string(name) + ": \"" + *text + "\" is not a number";
        return false;
    }
    return ListTemperatures(from, to, step, arguments.options.temperatures, failure.text);
}

bool UnderstandReactor(Arguments& arguments, Failure& failure) {
    for (const NumberOption& option : arguments.reactorNumbers) {
        double number = 0;
        if (option.text.empty()) continue;
        if (!ParseNumber(option.text, number) || !(number > 0)) {
            failure.text = option.name + ": \"" + option.text + "\" is not a number above 0";
            return false;
        }
        option.take(number);
    }
    const std::string& plot = arguments.options.reactor.plotPath;
    if (!plot.empty() && !plot.ends_with(".svg") && !plot.ends_with(".png")) {
        failure.text = "--plot: the name of the file must end in .svg or .png";
        return false;
    }
    if (arguments.points.empty()) return true;
    double count = 0;
    if (!ParseNumber(arguments.points, count) || !(count >= 2 && count <= 100000) || count != std::floor(count)) {
        failure.text = "--points: \"" + arguments.points + "\" is not a number of points from 2 to 100000";
        return false;
    }
    arguments.options.reactor.pointCount = static_cast<std::size_t>(count);
    return true;
}

bool RunCommand(const CLI::App& app, Arguments& arguments, std::ostream& out, std::ostream& err, Failure& failure) {
    if (!UnderstandSweep(arguments, failure) || !UnderstandReactor(arguments, failure)) return false;
    if (app.got_subcommand("list")) return RunList(out, failure);
    if (app.got_subcommand("table")) return RunTable(arguments.options, out, err, failure);
    if (app.got_subcommand("reactor")) return RunReactor(arguments.options, out, err, failure);
    if (app.got_subcommand("show")) return RunShow(arguments.options, out, err, failure);
    return RunSave(arguments.options, out, err, failure);
}

int RunArguments(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    CLI::App app;
    Arguments read;
    DescribeProgram(app, read);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));  // it takes them from the back
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error, out, err);  // help was asked for
        err << "rekasim: " << OnOneLine(error.what()) << " (--help tells more)\n";
        return misused;
    }
    Failure failure;
    if (RunCommand(app, read, out, err, failure)) return 0;
    err << "rekasim: " << OnOneLine(failure.text) << "\n";
    if (read.options.isVerbose && !failure.scope.empty()) {
        err << "rekasim: scope " << failure.scope;
        if (!failure.interfaceName.empty()) err << ", interface " << failure.interfaceName;
        err << "\n";
    }
    return failed;
}

}  // namespace

int RunRekasim(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    const int status = RunArguments(arguments, out, err);
    out.flush();
    if (out) return status;
    // Lines that went nowhere, as on a full disk, must not look like a good end.
    err << "rekasim: the output can't be written\n";
    return failed;
}

}  // namespace rekasim
