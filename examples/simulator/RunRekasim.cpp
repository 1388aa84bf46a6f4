// The command line. Numbers are read by rekasim itself, since the option reader's own conversion follows the locale.

#include "RunRekasim.h"

#include <CLI/CLI.hpp>
#include <ostream>

#include "Commands.h"
#include "FormatNumber.h"
#include "Sweep.h"

namespace rekasim {

namespace {

constexpr int failed = 1;
constexpr int misused = 2;

/// The command line as it was read, before its texts are understood.
struct Arguments {
    CommandOptions options;
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

void DescribeTable(CLI::App& app, Arguments& arguments) {
    CLI::App* table = app.add_subcommand(
        "table",
        "Calculate rates, equilibrium constants and heats of reaction for a document's material, at its own "
        "temperature or over a range");
    CLI::Option* name = DescribePackage(*table, arguments);
    CLI::Option* material = table
                                ->add_option("--material", arguments.options.materialPath,
                                             "The document with the material for the package NAME")
                                ->type_name("FILE")
                                ->needs(name);
    name->needs(material);
    CLI::Option* from = table->add_option("--from", arguments.from, "First temperature")->type_name("K");
    CLI::Option* to = table->add_option("--to", arguments.to, "Last temperature, included")->type_name("K");
    CLI::Option* step = table->add_option("--step", arguments.step, "Distance of the temperatures")->type_name("K");
    from->needs(to)->needs(step);
    to->needs(from)->needs(step);
    step->needs(from)->needs(to);
    table->footer("Example: rekasim table --document ammonia-synthesis.json --from 673.15 --to 773.15 --step 25");
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
                 "Tell which method of which interface failed, and what the package reports while it loads");
    app.fallthrough();
    app.require_subcommand(1);
    DescribeList(app);
    DescribeTable(app, arguments);
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

bool RunCommand(const CLI::App& app, Arguments& arguments, std::ostream& out, std::ostream& err, Failure& failure) {
    if (!UnderstandSweep(arguments, failure)) return false;
    if (app.got_subcommand("list")) return RunList(out, failure);
    if (app.got_subcommand("table")) return RunTable(arguments.options, out, err, failure);
    if (app.got_subcommand("show")) return RunShow(arguments.options, out, err, failure);
    return RunSave(arguments.options, out, err, failure);
}

}  // namespace

int RunRekasim(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
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

}  // namespace rekasim
