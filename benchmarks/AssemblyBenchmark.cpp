// Source assembly at three sizes. The bytes per second should be the same at each: the cost is linear.
#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "platform/Files.h"
#include "render/source/SourceAssembly.h"

namespace pixelgrove {
namespace {

constexpr const char* kFunction = R"glsl(
/* Fractal sum of value noise.
   The octaves are turned against each other, which hides the grid. */
float Fbm%1(in vec2 p, const int octaves)
{
    float sum = 0.0, amplitude = 0.5;     // amplitudes add up to 1
    mat2 turn = mat2(0.8, 0.6, -0.6, 0.8);
    for (int i = 0; i < octaves; ++i) {
        sum += amplitude * Noise(p);      // in 0..1
        p = turn * p * 2.02;
        amplitude *= 0.5;
    }
    return sum; // uniform float Detail%1 = 0.5;
}
)glsl";

// Functions and comments of about this size, behind a few includes.
QByteArray TextOf(qsizetype bytes, const QByteArray& includes) {
    QByteArray text = includes;
    for (int i = 0; text.size() < bytes; ++i)
        text += QByteArray(kFunction).replace("%1", QByteArray::number(i));
    return text;
}

struct Sample {
    QTemporaryDir folder;
    ShaderProject project;
    IncludeContext context;

    // Half of the text stands in the stage, the other half in five files that it includes.
    explicit Sample(qsizetype bytes) {
        context.searchFolder = folder.path();
        QByteArray includes;
        for (int i = 0; i < 5; ++i) {
            const QString name = QStringLiteral("part%1.glsl").arg(i);
            WriteWholeFile(folder.filePath(name), TextOf(bytes / 10, QByteArray()));
            includes += "#include \"" + name.toLatin1() + "\"\n";
        }
        project.stages[kStageImage].source = TextOf(bytes / 2, includes);
    }
};

void BM_AssembleStage(benchmark::State& state) {
    Sample sample(state.range(0));
    qsizetype bytes = 0;
    for (auto _ : state) {
        const auto assembled =
            AssembleStageSource(sample.project, sample.context, kStageImage, "#version 460");
        if (!assembled || assembled->size() < state.range(0)) {
            state.SkipWithError("the assembly failed");
            break;
        }
        bytes += assembled->size();
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_AssembleStage)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

// The expander alone, without files and line ends.
void BM_ExpandIncludes(benchmark::State& state) {
    const QByteArray text = TextOf(state.range(0), "#include \"piece\"\n");
    IncludeContext context;
    context.virtualFiles = {{QStringLiteral("piece"), QByteArray("float piece;\n")}};
    qsizetype bytes = 0;
    for (auto _ : state) {
        context.includedFiles.clear();
        QByteArray output;
        int lineCounter = 1;
        if (!ExpandIncludes(context, text, output, lineCounter, 0)) {
            state.SkipWithError("the expansion failed");
            break;
        }
        bytes += output.size();
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_ExpandIncludes)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace pixelgrove
