// SPDX-License-Identifier: MIT
// Reading and writing of blocks and of the template file, with templates of the evaluation's formulas; a compound file
// of 50,000 records; the binding of 500 compounds to a material of 2,000; and the sizes of what stays in memory. Files
// lie in memory.

#include "bench/Stored_bench.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/AllocationCount.h"
#include "bench/Formulas.h"
#include "bench/MemoryFiles.h"
#include "bench/call/IdleMaterial.h"
#include "capeopen/ComObject.h"
#include "compounds/LoadPcdFile.h"
#include "expression/parse/ParseExpression.h"
#include "manager/TemplateStore.h"
#include "package/CReactionPack.h"
#include "persistence/ReadStoredDefinition.h"
#include "persistence/WriteStoredDefinition.h"

namespace reka::bench {

namespace {

constexpr std::size_t templateCounts[] = {10, 100, 1'000, 10'000};
constexpr std::size_t pcdRecordCount = 50'000;
constexpr std::size_t packageCompoundCount = 500;
constexpr std::size_t materialCompoundCount = 2'000;

/// A package with the formulas as rates, `reactionCount` of them in turn.
std::unique_ptr<ReactionPackDefinition> MakePackage(std::size_t reactionCount) {
    auto definition = MakeBenchDefinition();
    definition->name = CBstr::Make(u"Benchmark");
    definition->description = CBstr::Make(u"Rates of all kinds, as they are measured");
    for (const auto& compound : definition->compounds) {
        compound->casNumber = CBstr::Make(u"64-17-5");
        compound->formula = CBstr::Make(u"C2H6O");
    }
    const auto formulas = Formulas();
    for (std::size_t i = 0; i < reactionCount; ++i) {
        auto reaction = std::make_unique<ReactionDefinition>(definition->compounds.size());
        reaction->id = CBstr::Make(u"Reaction");
        reaction->phase = CBstr::Make(u"Liquid");
        reaction->rateEquation = DoubleCompounds(formulas[i % formulas.size()].text);
        std::u16string errorText;
        ExpressionTree tree = ParseExpression(*definition, reaction->rateEquation, errorText, nullptr);
        if (!tree) throw std::runtime_error("a formula doesn't parse");
        reaction->rateExpression = std::make_unique<ExpressionRef>(std::move(tree));
        definition->reactions.push_back(std::move(reaction));
    }
    return definition;
}

struct StoredPackage {
    std::unique_ptr<ReactionPackDefinition> definition = MakePackage(6);
    std::vector<std::uint8_t> block;
    std::u16string errorText;

    StoredPackage() { Write(); }
    void Write() {
        if (!WriteStoredDefinition(*definition, block, errorText)) throw std::runtime_error("isn't written");
    }
    std::unique_ptr<ReactionPackDefinition> Read() {
        auto read = std::make_unique<ReactionPackDefinition>(nullptr);
        if (!ReadStoredDefinition(*read, block, errorText)) throw std::runtime_error("isn't read");
        return read;
    }
};

void RegisterBlock() {
    const auto stored = std::make_shared<StoredPackage>();
    benchmark::RegisterBenchmark("stored/block/read", [stored](benchmark::State& state) {
        for (auto _ : state) benchmark::DoNotOptimize(stored->Read());
    });
    benchmark::RegisterBenchmark("stored/block/write", [stored](benchmark::State& state) {
        for (auto _ : state) stored->Write();
    });
}

void RegisterTemplates(std::size_t count) {
    const std::string group = "stored/" + std::to_string(count);
    benchmark::RegisterBenchmark((group + "/read").c_str(), [count](benchmark::State& state) {
        CMemoryFiles files;
        TemplateStore store;
        for (std::size_t i = 0; i < count; ++i) store.templates.push_back(MakePackage(6));
        store.StoreTemplates();
        for (auto _ : state) store.LoadTemplates();
        if (store.templates.size() != count) state.SkipWithError("the templates aren't read");
    });
    benchmark::RegisterBenchmark((group + "/write").c_str(), [count](benchmark::State& state) {
        CMemoryFiles files;
        TemplateStore store;
        for (std::size_t i = 0; i < count; ++i) store.templates.push_back(MakePackage(6));
        store.StoreTemplates();
        store.LoadTemplates();  // which is where templates come from
        for (auto _ : state) store.StoreTemplates();
    });
}

void PutField(std::uint8_t* field, const std::string& text) {
    field[0] = static_cast<std::uint8_t>(text.size());
    std::copy(text.begin(), text.end(), field + 1);
}

void RegisterPcdFile() {
    benchmark::RegisterBenchmark("stored/pcd", [](benchmark::State& state) {
        constexpr std::size_t recordLength = 1024;
        CMemoryFiles files;
        CMemoryFiles::Bytes& bytes = files[u"/compounds.pcd"];
        bytes.resize((pcdRecordCount + 1) * recordLength);
        bytes[1] = 0x04;  // the length of a record
        for (std::size_t i = 1; i <= pcdRecordCount; ++i) {
            std::uint8_t* record = bytes.data() + i * recordLength;
            PutField(record + 3, "Compound number " + std::to_string(i));
            PutField(record + 54, i % 2 ? "CH3(CH2)4CH2OH" : "CO2");
            PutField(record + 839, std::to_string(1000000 + i));
        }
        CompoundList list;
        std::u16string errorText;
        for (auto _ : state) {
            if (!LoadPcdFile(u"/compounds.pcd", list, errorText)) state.SkipWithError("the file isn't read");
        }
    });
}

std::u16string Numbered(const char16_t* word, std::size_t number) {
    std::u16string text = word;
    for (const char digit : std::to_string(number)) text.push_back(static_cast<char16_t>(digit));
    return text;
}

/// Binds a package of `count` compounds, half of which have CAS numbers, to a material that has four times as many in
/// another order.
void RegisterBinding(std::size_t count) {
    const std::string name = "stored/binding/" + std::to_string(count);
    benchmark::RegisterBenchmark(name.c_str(), [count](benchmark::State& state) {
        const std::size_t inMaterial = count * (materialCompoundCount / packageCompoundCount);
        CIdleMaterial material;
        for (std::size_t i = 0; i < inMaterial; ++i) {
            const std::size_t number = i * 1237 % inMaterial;
            material.AddCompound(Numbered(u"Compound ", number), Numbered(u"CAS ", number));
        }
        auto* package = new CComObject<CReactionPack>();
        static_cast<ICapeUtilities*>(package)->AddRef();
        ReactionPackDefinition definition(nullptr);
        for (std::size_t i = 0; i < count; ++i) {
            auto compound = std::make_unique<CompoundDefinition>();
            compound->name = CBstr::Make(Numbered(u"compound ", 3 * i));
            if (i % 2 == 0) compound->casNumber = CBstr::Make(Numbered(u"cas ", 3 * i));
            definition.compounds.push_back(std::move(compound));
        }
        package->AssignDefinition(&definition);
        for (auto _ : state) {
            if (package->SetMaterial(&material) != S_OK) state.SkipWithError("isn't bound");
        }
        package->Terminate();
        static_cast<ICapeUtilities*>(package)->Release();
    });
}

void PrintRates(const CTimes& times, const char* operation, std::size_t blockSize) {
    const double block = times.Median(std::string("stored/block/") + operation);
    PrintFigure(std::string("one block: ") + operation, 1000 * static_cast<double>(blockSize) / block, "MB/s",
                "at least 150");
    double least = 0;
    double most = 0;
    for (const std::size_t count : templateCounts) {
        const double time =
            times.Median("stored/" + std::to_string(count) + "/" + operation) / static_cast<double>(count * blockSize);
        PrintFigure("file of " + std::to_string(count) + " templates: " + operation, 1000 / time, "MB/s",
                    "at least 150");
        least = least == 0 ? time : std::min(least, time);
        most = std::max(most, time);
    }
    PrintFigure(std::string("greatest to least time per byte: ") + operation, most / least, "", "at most 1.3");
}

/// Allocations and bytes of a read tree, by itself and with its program.
void PrintMemory() {
    StartMeasuringMemory();
    StoredPackage stored;
    std::size_t nodes = 0;
    for (const auto& reaction : stored.definition->reactions) nodes += reaction->rateExpression->survey.nodeCount;
    std::vector<ExpressionTree> trees;
    trees.reserve(stored.definition->reactions.size());
    const MemoryUse atTrees = UsedMemory();
    for (const auto& reaction : stored.definition->reactions) {
        trees.push_back(CloneExpression(*reaction->rateExpression->root, reaction->rateExpression->survey.nodeCount));
    }
    const MemoryUse afterTrees = UsedMemory();
    const auto perNode = [nodes](std::size_t number) {
        return static_cast<double>(number) / static_cast<double>(nodes);
    };
    PrintFigure("a node in memory, without its program", perNode(afterTrees.bytes - atTrees.bytes), "bytes");
    std::vector<std::unique_ptr<ExpressionRef>> refs;
    refs.reserve(trees.size());
    const MemoryUse atRefs = UsedMemory();
    for (ExpressionTree& tree : trees) refs.push_back(std::make_unique<ExpressionRef>(std::move(tree)));
    const MemoryUse afterRefs = UsedMemory();
    PrintFigure("the program, per node", perNode(afterRefs.bytes - atRefs.bytes), "bytes");
    const MemoryUse atRead = UsedMemory();
    const auto read = stored.Read();
    const MemoryUse afterRead = UsedMemory();
    PrintFigure("allocations for a block that is read, per node", perNode(afterRead.allocations - atRead.allocations),
                "", "at most 3");
    PrintFigure("bytes of block per node, texts and all", perNode(stored.block.size()), "bytes");

    const auto hundred = MakePackage(100);
    const MemoryUse atPackage = UsedMemory();
    auto* package = new CComObject<CReactionPack>();
    static_cast<ICapeUtilities*>(package)->AddRef();
    package->AssignDefinition(hundred.get());
    PrintFigure("a package of 100 reactions", static_cast<double>(UsedMemory().bytes - atPackage.bytes) / 1024, "KiB");
    static_cast<ICapeUtilities*>(package)->Release();
}

}  // namespace

void RegisterStored() {
    RegisterBlock();
    for (const std::size_t count : templateCounts) RegisterTemplates(count);
    RegisterPcdFile();
    for (const std::size_t count : {packageCompoundCount / 10, packageCompoundCount}) RegisterBinding(count);
}

void PrintStored(const CTimes& times) {
    const std::size_t blockSize = StoredPackage().block.size();
    PrintHeading("Stored forms and lists");
    PrintRates(times, "read", blockSize);
    PrintRates(times, "write", blockSize);
    PrintFigure("compound file of 50,000 records", times.Median("stored/pcd") / 1e6, "ms", "below 100");
    PrintFigure("binding of 50 compounds to 200", times.Median("stored/binding/50") / 1e3, "us");
    PrintFigure("binding of 500 compounds to 2,000", times.Median("stored/binding/500") / 1e3, "us");
    PrintHeading("Memory");
    PrintMemory();
}

}  // namespace reka::bench
