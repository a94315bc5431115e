#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "documents/Document.h"
#include "documents/WorkingDirectory.h"
#include "support/SampleNode.h"

namespace {

constexpr int parameterCount = 10000;

// A root with `nodes` children that share parameterCount indexed double parameters.
std::unique_ptr<SampleNode> BuildTree(int nodes) {
    auto root = std::unique_ptr<SampleNode>(SampleNode::MakeUnder(nullptr, "root"));
    int perNode = parameterCount / nodes;
    for (int n = 0; n < nodes; n++) {
        SampleNode* node = SampleNode::MakeUnder(root.get(), "node" + std::to_string(n));
        for (int i = 0; i < perNode; i++) {
            node->SetParameterValue(PN_VAL, 0.001 * (i + n), PU_M, PM_NON, i);
        }
    }
    return root;
}

std::unique_ptr<SampleNode> Load(Document& document) {
    auto loaded = std::make_unique<SampleNode>();
    loaded->Initialize();
    loaded->FromXml(&document);
    return loaded;
}

// Saves the tree to text and loads it into a fresh tree. Argument: nodes sharing the
// parameters (100 nodes of 100, or one node holding all).
void BM_SaveAndLoadTree(benchmark::State& state) {
    std::unique_ptr<SampleNode> tree = BuildTree(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        Document saved;
        tree->ToXml(&saved, false);
        std::string text;
        saved.writeToString(text);
        Document read;
        char* end = nullptr;
        read.readFromCharArray(text.c_str(), &end);
        std::unique_ptr<SampleNode> loaded = Load(read);
        benchmark::DoNotOptimize(loaded.get());
    }
    state.SetItemsProcessed(state.iterations() * parameterCount);
}
BENCHMARK(BM_SaveAndLoadTree)->Arg(100)->Arg(1)->Unit(benchmark::kMillisecond);

// The same through a file.
void BM_SaveAndLoadTreeFile(benchmark::State& state) {
    // The documents' temporary file goes to the same fresh directory.
    WorkingDirectory directory;
    std::string path = directory.dir.File("tree.xml");
    std::unique_ptr<SampleNode> tree = BuildTree(100);
    for (auto _ : state) {
        Document saved;
        tree->ToXml(&saved, false);
        saved.write(path);
        Document read;
        read.read(path);
        std::unique_ptr<SampleNode> loaded = Load(read);
        benchmark::DoNotOptimize(loaded.get());
    }
    state.SetItemsProcessed(state.iterations() * parameterCount);
}
BENCHMARK(BM_SaveAndLoadTreeFile)->Unit(benchmark::kMillisecond);

// Saving again into the element of the last save, which updates it in place.
void BM_SaveInPlace(benchmark::State& state) {
    std::unique_ptr<SampleNode> tree = BuildTree(100);
    Document saved;
    tree->ToXml(&saved, false);
    for (auto _ : state) {
        tree->ToXml(&saved, false);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * parameterCount);
}
BENCHMARK(BM_SaveInPlace)->Unit(benchmark::kMillisecond);

}  // namespace
