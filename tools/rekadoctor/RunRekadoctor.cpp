// SPDX-License-Identifier: MIT
// The command line of rekadoctor and the look of its report. The user who needs it has a simulator that doesn't work
// and no idea of registries: what is wrong is marked in capitals, what to do stands right below as commands to paste,
// and the last lines say for which programs all is well.

#include "RunRekadoctor.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>

#include "Diagnose.h"

namespace rekadoctor {

namespace {

constexpr int wrong = 1;
constexpr int misused = 2;

const char* MarkOf(Weight weight) {
    switch (weight) {
        case Weight::Good:
            return "  ok     ";
        case Weight::Note:
            return "  note   ";
        case Weight::Listed:
            return "           ";
        case Weight::Wrong:
            break;
    }
    return "  WRONG  ";
}

/// Each section is seen at once: loading and creating may take long, or meet something that never ends.
class CPrinter : public CListener {
public:
    explicit CPrinter(std::ostream& stream) : out(stream) {}

    void Begin(const std::string& title) override { out << "\n" << title << std::endl; }

    void End(const Section& section) override {
        for (const Finding& finding : section.findings) out << MarkOf(finding.weight) << finding.text << "\n";
        PrintAdvice(section);
        out.flush();
    }

private:
    void PrintAdvice(const Section& section) {
        if (section.advice.empty()) return;
        const bool isAnyWrong = std::any_of(section.findings.begin(), section.findings.end(),
                                            [](const Finding& one) { return one.weight == Weight::Wrong; });
        out << (isAnyWrong ? "  What to do:\n" : "  If you need it:\n");
        for (const Step& step : section.advice) {
            out << "    " << step.text << "\n";
            for (const std::string& command : step.commands) out << "      " << command << "\n";
        }
    }

    std::ostream& out;
};

void PrintVerdict(int count, Width width, std::ostream& out) {
    if (count == 0) {
        out << "All is well for " << WordOf(width) << " programs.\n";
    } else {
        out << count << (count == 1 ? " thing is" : " things are") << " wrong for " << WordOf(width) << " programs.\n";
    }
}

int Report(CComputer& computer, std::ostream& out) {
    const Examination examination = Examine(computer);
    const Surroundings& surroundings = examination.surroundings;
    const Width own = surroundings.ownWidth;
    const Width other = own == Width::Bits64 ? Width::Bits32 : Width::Bits64;
    out << "rekadoctor " REKA_VERSION ", a " << WordOf(own) << " program on " << (surroundings.isWine ? "Wine as " : "")
        << (surroundings.isWindows64Bit ? "64-bit" : "32-bit") << " Windows" << std::endl;
    CPrinter printer(out);
    const Diagnosis diagnosis = Diagnose(computer, examination, printer);
    out << "\n";
    PrintVerdict(diagnosis.wrongForOwnWidth, own, out);
    if (diagnosis.wrongForOtherWidth > 0) PrintVerdict(diagnosis.wrongForOtherWidth, other, out);
    if (surroundings.isWindows64Bit) {
        out << "Loading and creating were tried for " << WordOf(own) << " programs. For " << WordOf(other)
            << " ones, run the rekadoctor of the folder " << (other == Width::Bits64 ? "x64" : "x86") << ".\n";
    }
    return diagnosis.wrongForOwnWidth == 0 ? 0 : wrong;
}

int RunArguments(const std::vector<std::string>& arguments, CComputer& computer, std::ostream& out, std::ostream& err) {
    CLI::App app;
    app.name("rekadoctor");
    app.description(
        "rekadoctor: is REKA registered, does it load, and what to do if not. Looks and tries, and changes nothing.");
    app.footer(
        "Exit status: 0 all is well for programs with as many bits as this one, 1 something is wrong for them,\n"
        "2 misuse or a failure of its own.");
    app.set_version_flag("--version", "rekadoctor " REKA_VERSION);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));  // it takes them from the back
        return Report(computer, out);
    } catch (const CLI::ParseError& error) {
        // Help or the version was asked for.
        if (error.get_exit_code() == 0) return app.exit(error, out, err);
        err << "rekadoctor: " << error.what() << " (--help tells more)\n";
    } catch (const std::exception& error) {
        err << "rekadoctor: " << error.what() << "\n";
    }
    return misused;
}

}  // namespace

int RunRekadoctor(const std::vector<std::string>& arguments, CComputer& computer, std::ostream& out,
                  std::ostream& err) {
    const int status = RunArguments(arguments, computer, out, err);
    out.flush();
    if (out) return status;
    // Lines that went nowhere, as on a full disk, must not look like a good end.
    err << "rekadoctor: the output can't be written\n";
    return misused;
}

}  // namespace rekadoctor
