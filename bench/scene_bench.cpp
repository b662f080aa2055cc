// What a node costs the host in a small scene and in a big one: made by script, side by side or one
// below the other.
#include "bench/BenchDocument.h"
#include "scene/core/Scene.h"
#include "script/Interpreter.h"
#include "ui/StartUp.h"

#include <benchmark/benchmark.h>

namespace {

// The names are the worst for paths when all are the same.
enum Shape { kFlat, kDeep, kDeepSameNames };

std::string script(Shape shape, int count) {
    const std::string loop = "for ($i = 1; $i < " + std::to_string(count) + "; ++$i) ";
    switch (shape) {
    case kFlat:
        return "createNode transform; " + loop + "createNode transform;";
    case kDeep:
        return "string $last = `createNode transform -n n0`; " + loop +
               "$last = `createNode transform -n (\"n\" + $i) -p $last`;";
    default:
        return "string $last = `createNode transform -n a`; " + loop +
               "$last = `createNode transform -n a -p $last`;";
    }
}

double secondsPerNode(Shape shape, int count) {
    host::scene().reset();
    const std::string text = script(shape, count);
    const double taken = bench::seconds([&] { host::script::execute(text); });
    return taken / count;
}

/// `cost`: of a node among all the nodes of the scene, in nodes among a tenth as many.
void BM_Nodes(benchmark::State& state) {
    const auto shape = static_cast<Shape>(state.range(0));
    const auto count = static_cast<int>(state.range(1));
    double big = 0.0;
    double small = 0.0;
    for (auto _ : state) {
        for (int round = 0; round < 10; ++round)
            small += secondsPerNode(shape, count / 10);
        big += 10.0 * secondsPerNode(shape, count);
    }
    if (host::scene().nodes().size() < static_cast<std::size_t>(count))
        state.SkipWithError("nodes are missing");
    state.counters["cost"] = big / small;
    state.counters["us_a_node"] = 1e6 * big / 10.0 / static_cast<double>(state.iterations());
}

} // namespace

BENCHMARK(BM_Nodes)
    ->ArgNames({"shape", "nodes"})
    ->Args({kFlat, 10000})
    ->Args({kFlat, 30000})
    ->Args({kDeep, 1000})
    ->Args({kDeep, 3000})
    ->Args({kDeepSameNames, 1000})
    ->Args({kDeepSameNames, 3000})
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    host::startUp({true});
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
