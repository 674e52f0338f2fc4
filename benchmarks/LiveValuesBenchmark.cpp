// What the values of live controls cost a frame, and what their change costs the main thread.
#include <benchmark/benchmark.h>

#include <memory>

#include "controls/LiveValues.h"
#include "controls/RangeState.h"

namespace pixelgrove {
namespace {

std::unique_ptr<ControlSet> FullSet(int modulationKind) {
    auto controls = std::make_unique<ControlSet>();
    controls->uniformCount = kMaxControls;
    for (int i = 0; i < kMaxControls; ++i) {
        UniformControl& control = controls->uniforms[size_t(i)];
        control.displayName = QStringLiteral("control%1").arg(i);
        control.type = kControlFloat;
        InitialiseRange(control.range, true, true, control.displayName, 0.0f, 1.0f, 0.5f);
        control.range.modulationKind = modulationKind;
        control.range.phase = 1.0f;
    }
    return controls;
}

void ValuesOfAFrame(benchmark::State& state) {
    const std::unique_ptr<ControlSet> controls = FullSet(int(state.range(0)));
    const auto table = std::make_unique<UniformTable>();
    PublishControlValues(*controls);
    float elapsedMs = 0.0f;
    for (auto _ : state) {
        UpdateUniformValues(*table, elapsedMs += 16.0f);
        benchmark::DoNotOptimize(table->values[1].floatValue);
    }
}
BENCHMARK(ValuesOfAFrame)->ArgName("kind")->DenseRange(kModulationFixed, kModulationTriangle);

void PublishedValues(benchmark::State& state) {
    const std::unique_ptr<ControlSet> controls = FullSet(kModulationFixed);
    for (auto _ : state)
        PublishControlValues(*controls);
}
BENCHMARK(PublishedValues);

}  // namespace
}  // namespace pixelgrove
