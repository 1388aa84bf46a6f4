// SPDX-License-Identifier: MIT
// Has the registered component calculate, store and show its editor over and over, as a simulator does in a long
// session, and looks whether the process holds more at the end than behind the warm-up.
//
//   reka_soak [CALCULATIONS STORES EDITORS] [--leak handle|block|window|brush]
//
// With the last, each operation leaks one of these, so that it can be seen that this program finds it. Ends with 0 if
// all stayed flat, with 1 if something grew, and with 2 if an operation or a count failed, or nothing was to be done.
// Stores into the user's own file of templates.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "HostObjects.h"
#include "editor/win/resource.h"
#include "soak/Flatness.h"
#include "soak/win/Counts.h"
#include "soak/win/Dialogs.h"
#include "soak/win/Labels.h"

namespace soak {
namespace {

constexpr int intervals = 10;
constexpr int leastWarmUp = 50;  // operations, by which the system has filled its caches

const std::vector<Quantity> quantities = CountedQuantities();

KeptOfLabel keptOfLabel;  // by the system

std::string leaked;  // what each operation leaks; empty for nothing

void Leak() {
    if (leaked == "handle") CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (leaked == "block") HeapAlloc(GetProcessHeap(), 0, 24);
    if (leaked == "window") CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
    if (leaked == "brush") CreateSolidBrush(RGB(1, 2, 3));
}

void PrintRow(double operations, const std::vector<double>& values) {
    std::printf("%11.0f", operations);
    for (const double value : values) std::printf(" %17.0f", value);
    std::printf("\n");
    std::fflush(stdout);
}

void PrintHead(const char* name) {
    std::printf("\n%s\n operations", name);
    for (const Quantity& quantity : quantities) std::printf(" %17s", quantity.name.c_str());
    std::printf("\n");
}

/// What the process holds, but for what the system keeps of labels.
std::vector<double> ReadOwnCounts() {
    std::vector<double> counts = ReadCounts();
    counts[privateBytes] -= closedLabels * 2 * keptOfLabel.bytes;  // such small blocks take as much again around them
    counts[heapBytes] -= closedLabels * keptOfLabel.bytes;
    counts[heapBlocks] -= closedLabels * keptOfLabel.blocks;
    return counts;
}

/// Messages that nobody waits for, such as those of windows that have gone.
void Pump() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

/// Runs `work` with parts of `count` after a warm-up, and prints what the process holds between them. What
/// `work` runs is one operation after another, as many as it is told. False if something grew.
bool StaysFlat(const char* name, int count, const std::function<bool(int)>& work) {
    if (count == 0) return true;
    const int part = (count + intervals - 1) / intervals;
    PrintHead(name);
    CFlatness flatness(quantities);
    for (int i = 0; i <= intervals; ++i) {
        if (!work(i == 0 ? std::max(part, leastWarmUp) : part)) {
            std::printf("an operation failed: %s\n", name);
            std::exit(2);
        }
        Pump();
        ReadCounts();  // itself allocates at first
        const std::vector<double> counts = ReadOwnCounts();
        flatness.Add(static_cast<double>(i) * part, counts);
        PrintRow(static_cast<double>(i) * part, counts);
        for (const std::string& quantity : flatness.Uncounted()) {
            std::printf("it can't be counted here: %s\n", quantity.c_str());
            std::exit(2);
        }
    }
    std::printf("per 1,000:\n%11s", "");
    for (std::size_t i = 0; i < quantities.size(); ++i) std::printf(" %17.3f", flatness.SlopePerThousand(i));
    std::printf("\n");
    for (const std::string& growth : flatness.Growths()) std::printf("GREW: %s\n", growth.c_str());
    return flatness.Growths().empty();
}

/// One object of the simulator's for each of the two thermo versions, bound to a package of its own.
class CCalculations {
public:
    CCalculations() {
        for (int i = 0; i < 2; ++i) {
            packages[i] = host::MakePackage(L"2*T+3*X(First)+P/C(Second)", L"-1000*R", i == 0 ? L"1.0" : L"1.1");
            isReady = isReady && packages[i] && SUCCEEDED(host::Bind(packages[i], materials[i], results[i]));
        }
    }
    ~CCalculations() {
        for (const auto& package : packages) {
            if (package) package->Terminate();
        }
    }
    CCalculations(const CCalculations&) = delete;
    CCalculations& operator=(const CCalculations&) = delete;

    bool Run(int count) {
        for (int i = 0; i < count && isReady; ++i) {
            isReady = SUCCEEDED(host::Calculate(packages[i % 2]));
            Leak();
        }
        return isReady;
    }

private:
    host::CMaterial materials[2];
    host::CReactionObject results[2];
    host::CRef<reka::ICapeUtilities> packages[2];
    bool isReady = true;
};

/// `Edit` of the package of that name, so many times without a change, while `work` is done in the editors.
bool EditPackage(const wchar_t* name, int times, const std::function<bool(const CDialogs&)>& work) {
    const auto show = [&] {
        for (int i = 0; i < times; ++i) {
            const auto package = host::ResolvePackage(name);
            if (!package || package->Edit() != S_FALSE || package->Terminate() != S_OK) return false;
        }
        return true;
    };
    return ShowAndWork(show, work);  // by one thread: the system keeps something of each that has ended
}

bool Store(int count) {
    return EditPackage(L"Dinitrogen pentoxide decomposition", 1, [&](const CDialogs& dialogs) {
        for (int i = 0; i < count; ++i) {
            Leak();
            if (!dialogs.Press(shellTitle, IDC_EDIT_STORE) || !dialogs.Close(storeTitle, IDOK) ||
                !dialogs.Close(overwriteTitle, IDOK)) {
                return false;
            }
        }
        return dialogs.Close(shellTitle, IDCANCEL);
    });
}

bool OpenEditors(int count) {
    return EditPackage(L"Methanol synthesis", count, [&](const CDialogs& dialogs) {
        for (int i = 0; i < count; ++i) {
            Leak();
            if (!dialogs.Close(shellTitle, IDCANCEL)) return false;
        }
        return true;
    });
}

bool RunAll(int calculations, int stores, int editors) {
    keptOfLabel = MeasureKeptOfLabel(host::ModulePath());
    std::printf("Of each label that has gone the system keeps %.2f blocks, which are taken off.\n", keptOfLabel.blocks);
    CCalculations loop;
    const bool isCalculationFlat = StaysFlat("calculations", calculations, [&](int count) { return loop.Run(count); });
    const bool isStoreFlat = StaysFlat("stores", stores, Store);
    const bool isEditorFlat = StaysFlat("editors opened and closed", editors, OpenEditors);
    return isCalculationFlat && isStoreFlat && isEditorFlat;
}

}  // namespace
}  // namespace soak

int main(int argc, char** argv) {
    std::vector<int> counts;
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]) == "--leak" && i + 1 < argc) {
            soak::leaked = argv[++i];
        } else {
            counts.push_back(std::atoi(argv[i]));
        }
    }
    if (counts.empty()) counts = {1000000, 10000, 1000};
    if (counts.size() != 3 || counts == std::vector<int>(3)) {
        std::fputs("usage: reka_soak [CALCULATIONS STORES EDITORS] [--leak handle|block|window|brush]\n", stderr);
        return 2;
    }
    const host::CApartment apartment;
    const bool isFlat = soak::RunAll(counts[0], counts[1], counts[2]);
    std::puts(isFlat ? "\nAll is flat." : "\nSomething grew.");
    return isFlat ? 0 : 1;
}
