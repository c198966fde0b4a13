#include "benchmarks/BenchmarkDocuments.h"
#include "engine/CutEngine.h"
#include "engine/export/ExportDocument.h"
#include "engine/generation/CutGeneration.h"

#include <benchmark/benchmark.h>

#include <string>

namespace shotweaver::benchmarks {
namespace {

/// Counts the draws of a run, which tell the number of free shots: three each, with ranges and
/// without doubling.
class CountingRandom final : public RandomSource {
  public:
    std::uint64_t bits() override {
        ++drawn_;
        return source_.bits();
    }
    std::int64_t shots() const { return drawn_ / 3; }

  private:
    SecureRandom source_;
    std::int64_t drawn_ = 0;
};

GenerationInputs inputsFor(const CutEngine& engine) {
    GenerationInputs inputs;
    inputs.mainCamera = engine.coverage.begin()->first;
    for (const auto& [angle, coverage] : engine.coverage) {
        if (angle != inputs.mainCamera) inputs.otherCameras.push_back(angle);
    }
    inputs.mainRange = SecondsRange{10, 25};
    inputs.otherRange = SecondsRange{4, 8};
    return inputs;
}

/// Free shots a second, with 20 angles of so many coverage ranges each.
void generation(benchmark::State& state) {
    constexpr std::int64_t length = 200'000'000;
    const CutEngine engine(gappedDocument(20, static_cast<std::size_t>(state.range(0)), length));
    const GenerationInputs inputs = inputsFor(engine);
    const UUIDMaker makeUUID = secureUUIDs();
    CountingRandom random;
    for (auto _ : state)
        benchmark::DoNotOptimize(generateCuts(engine, inputs, random, makeUUID));
    state.counters["shots"] =
        benchmark::Counter(static_cast<double>(random.shots()), benchmark::Counter::kIsRate);
}

/// An export of so many cuts with as many annotations on the clip.
void exportOfCuts(benchmark::State& state) {
    const auto count = state.range(0);
    const CutEngine engine(annotatedDocument(count * 4, static_cast<std::size_t>(count)));
    const UUIDMaker makeUUID = secureUUIDs();
    std::vector<Cut> cuts;
    for (std::int64_t i = 0; i < count; ++i)
        cuts.push_back({makeUUID(), i % 2 == 0 ? "angle-0" : "angle-1", i * 100, 100});
    for (auto _ : state)
        benchmark::DoNotOptimize(exportDocument(engine, cuts, "angle-0", makeUUID));
}

BENCHMARK(generation)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(exportOfCuts)->Arg(10'000)->Arg(20'000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace shotweaver::benchmarks
