// What a change of the text costs the controls: comment map and both scans, against a bare loop over the same
// characters, and on texts that are hard on a scanner.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>

#include "controls/Annotations.h"
#include "core/CommentMap.h"

namespace pixelgrove {
namespace {

// 10,000 lines in which 40 controls stand, "Speed" among them, far apart.
QString LongText() {
    QString text;
    for (int line = 0; line < 10'000; ++line) {
        const int place = line % 500;
        if (place == 100) {
            text += QStringLiteral("#define STEPS%1 8 // march: steps %1 [1..64, 8]\n").arg(line);
        } else if (place == 300 && line > 500) {
            text += QStringLiteral("uniform float gain%1; // audio!input: level [0.0..2.0, 1.0]\n").arg(line);
        } else if (place % 10 == 0) {
            text +=
                QStringLiteral("#define SQUARE%1(u) ((u) * (u)) // uniform in all directions\n").arg(line);
        } else {
            text += QStringLiteral("    colour += 0.5 * Noise(uv * %1.0); /* octave */\n").arg(line);
        }
    }
    return text;
}

QString TextOf(const benchmark::State& state) {
    static constexpr qsizetype kUnits = 1'000'000;
    switch (state.range(0)) {
        case 1:  // one line full of brackets
            return QStringLiteral("#define A 1 // a ") + QStringLiteral("[]").repeated(kUnits / 2);
        case 2:  // one line full of keywords
            return QStringLiteral("uniform ").repeated(kUnits / 8);
        case 3:  // options
            return QStringLiteral("#define A 1 // a [") + QStringLiteral("x,").repeated(kUnits / 2) + u']';
        case 4:  // keywords in comments
            return QStringLiteral("/*#define uniform*/").repeated(kUnits / 19);
        case 5:  // lines that give no control
            return QStringLiteral("uniform vec3 x; // int:\n").repeated(kUnits / 24);
        default:
            return LongText();
    }
}

void Finish(benchmark::State& state, const QString& text) {
    state.counters["units"] = double(text.size());
}

void BM_BareLoop(benchmark::State& state) {
    const QString text = TextOf(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(std::count(text.begin(), text.end(), QChar(u'\n')));
    Finish(state, text);
}
BENCHMARK(BM_BareLoop)->Arg(0)->Unit(benchmark::kMicrosecond);

void BM_CommentMap(benchmark::State& state) {
    const QString text = TextOf(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(BuildCommentMap(text));
    Finish(state, text);
}
BENCHMARK(BM_CommentMap)->Arg(0)->Unit(benchmark::kMicrosecond);

void BM_ScanDefines(benchmark::State& state) {
    const QString text = TextOf(state);
    const auto controls = std::make_unique<ControlSet>();
    for (auto _ : state)
        ScanDefines(*controls, text);
    Finish(state, text);
}
BENCHMARK(BM_ScanDefines)->Arg(0)->Unit(benchmark::kMicrosecond);

void BM_ScanUniforms(benchmark::State& state) {
    const QString text = TextOf(state);
    const std::vector<uint8_t> map = BuildCommentMap(text);
    const auto controls = std::make_unique<ControlSet>();
    for (auto _ : state)
        ScanUniforms(*controls, text, map);
    Finish(state, text);
}
BENCHMARK(BM_ScanUniforms)->Arg(0)->Unit(benchmark::kMicrosecond);

// All three, as each change of the text needs them.
void BM_Rebuild(benchmark::State& state) {
    const QString text = TextOf(state);
    const auto controls = std::make_unique<ControlSet>();
    for (auto _ : state) {
        const std::vector<uint8_t> map = BuildCommentMap(text);
        ScanDefines(*controls, text);
        ScanUniforms(*controls, text, map);
    }
    state.counters["controls"] = controls->defineCount + controls->uniformCount;
    Finish(state, text);
}
BENCHMARK(BM_Rebuild)->DenseRange(0, 5)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace pixelgrove
