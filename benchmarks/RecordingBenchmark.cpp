// Recorded frames as PNG against one thread of ffmpeg packing the same pixels, and what of a recorded frame's
// time is neither drawing, reading nor packing. Both sides take turns; see README.md beside this file.
//
// The linker leads the calls of those three through this file (--wrap in CMakeLists.txt), which notes how
// long they take.

#include <sys/resource.h>
#include <time.h>

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include "../tests/support/Engine.h"
#include "media/PngWriter.h"
#include "project/ProjectModel.h"
#include "render/FrameRecorder.h"
#include "render/FrameRenderer.h"
#include "shadertoy/ProjectFile.h"

namespace pixelgrove {
namespace {

constexpr SurfaceSize kSize{1920, 1080};
constexpr int kTurns = 5;
constexpr double kTurnSeconds = 1.0;

double MsOn(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

// Wall time, and that of all processors, to which other programs don't add.
struct Cost {
    double wallMs = 0.0, ownMs = 0.0;

    Cost operator+(const Cost& other) const { return {wallMs + other.wallMs, ownMs + other.ownMs}; }
    Cost operator-(const Cost& other) const { return {wallMs - other.wallMs, ownMs - other.ownMs}; }
    Cost operator/(double count) const { return {wallMs / count, ownMs / count}; }
};

Cost Now() {
    return {MsOn(CLOCK_MONOTONIC), MsOn(CLOCK_PROCESS_CPUTIME_ID)};
}

Cost NowOfChildren() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return {MsOn(CLOCK_MONOTONIC), double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1e3 +
                                       double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e3};
}

// What the calls took since they were last set to nothing.
struct Spans {
    Cost drawing, reading, packing;
};
Spans spans;

template <typename F>
auto Noted(Cost& span, F&& call) {
    const Cost start = Now();
    auto result = call();
    span = span + (Now() - start);
    return result;
}

double SizeOfFiles(const QString& folder, int frames) {
    double bytes = 0;
    for (int i = 1; i <= frames; ++i)
        bytes += double(QFileInfo(folder + QStringLiteral("/f-%1.png").arg(i)).size());
    return bytes;
}

// What one thread of ffmpeg takes to pack the first so many raw frames into the folder; nothing without it.
Cost CostOfFfmpeg(const QString& rawPath, int frames, const QString& folder) {
    const QString size = QStringLiteral("%1x%2").arg(kSize.width).arg(kSize.height);
    QStringList arguments =
        QStringLiteral("-loglevel error -y -f rawvideo -pix_fmt rgb24 -video_size").split(u' ');
    arguments << size << QStringLiteral("-i") << rawPath << QStringLiteral("-frames:v")
              << QString::number(frames);
    arguments << QStringLiteral("-threads 1 -c:v png").split(u' ') << folder + QStringLiteral("/f-%d.png");
    const Cost before = NowOfChildren();
    const int result = QProcess::execute(QStringLiteral("ffmpeg"), arguments);
    return result == 0 ? NowOfChildren() - before : Cost();
}

// Numbers from 1, on top of those of the turn before.
Cost Record(test::Engine& engine, int frames) {
    SetRecordingState(*App(), kManualStopSeconds);
    const Cost start = Now();
    engine.Draw(frames);
    const Cost cost = Now() - start;
    SetRecordingState(*App(), 0);
    return cost;
}

// The turn's frames, for ffmpeg.
bool DecodeInto(const QString& rawPath, const QString& folder, int frames) {
    QFile raw(rawPath);
    if (!raw.open(QIODevice::WriteOnly)) return false;
    for (int i = 1; i <= frames; ++i) {
        const QImage picture =
            QImage(folder + QStringLiteral("/f-%1.png").arg(i)).convertToFormat(QImage::Format_RGB888);
        for (int y = 0; y < picture.height(); ++y) {
            const auto* line = reinterpret_cast<const char*>(picture.constScanLine(y));
            if (raw.write(line, qint64(picture.width()) * 3) != qint64(picture.width()) * 3) return false;
        }
    }
    return raw.size() == qint64(frames) * kSize.width * kSize.height * 3;
}

struct Range {
    double least = 0.0, median = 0.0, most = 0.0;
};

bool Measure(const QString& projectPath) {
    test::Engine engine;
    ShaderProject project;
    if (LoadProjectFile(projectPath, project).status != ProjectFileStatus::Loaded) return false;
    AdoptProject(App()->project, project, projectPath);
    if (engine.Start(kSize.width, kSize.height).result != CompileResult::Good) return false;
    const QTemporaryDir folder, theirs;
    const auto path = std::make_shared<SharedFramePath>();
    *Hold(*path) = {folder.path(), QStringLiteral("f-%d.png")};
    engine.Run().framePath = path;
    RunControls& asked = *App()->run;
    asked.recordWidth = uint32_t(kSize.width);
    asked.recordHeight = uint32_t(kSize.height);
    asked.recordFrameDelayMs = 0;
    Record(engine, 2);
    const int frames = std::clamp(int(kTurnSeconds * 1e3 / Record(engine, 1).wallMs), 3, 30);
    const QString rawPath = theirs.filePath(QStringLiteral("raw"));

    struct Turn {
        Cost whole;
        Spans parts;
        Cost ffmpeg;
    };
    std::vector<Turn> turns;
    std::vector<double> sizes;
    Cost start{1e9, 1e9};  // ffmpeg's for one frame, the least of all turns: it isn't counted
    for (int i = 0; i < kTurns; ++i) {
        spans = {};
        Turn turn;
        turn.whole = Record(engine, frames) / frames;
        turn.parts = {spans.drawing / frames, spans.reading / frames, spans.packing / frames};
        if (!DecodeInto(rawPath, folder.path(), frames)) return false;
        const Cost first = CostOfFfmpeg(rawPath, 1, theirs.path());
        start = {std::min(start.wallMs, first.wallMs), std::min(start.ownMs, first.ownMs)};
        turn.ffmpeg = CostOfFfmpeg(rawPath, frames, theirs.path());
        turns.push_back(turn);
        sizes.push_back(SizeOfFiles(folder.path(), frames) / SizeOfFiles(theirs.path(), frames));
    }
    for (Turn& turn : turns)
        turn.ffmpeg = (turn.ffmpeg - start) / (frames - 1);
    for (const auto clock : {&Cost::wallMs, &Cost::ownMs}) {
        const auto range = [&](auto&& value) {
            std::vector<double> values(turns.size());
            std::ranges::transform(turns, values.begin(), value);
            std::ranges::sort(values);
            return Range{values.front(), values[values.size() / 2], values.back()};
        };
        const Range recorded = range([&](const Turn& turn) { return turn.whole.*clock; });
        const Range drawing = range([&](const Turn& turn) { return turn.parts.drawing.*clock; });
        const Range reading = range([&](const Turn& turn) { return turn.parts.reading.*clock; });
        const Range packing = range([&](const Turn& turn) { return turn.parts.packing.*clock; });
        const Range rest = range([&](const Turn& turn) {
            const Spans& parts = turn.parts;
            const Cost named = parts.drawing + parts.reading + parts.packing;
            return 100.0 * (1.0 - named.*clock / (turn.whole.*clock));
        });
        const Range ffmpeg = range([&](const Turn& turn) { return turn.ffmpeg.*clock; });
        const Range faster =
            range([&](const Turn& turn) { return turn.ffmpeg.*clock / (turn.whole.*clock); });
        const Range undrawn = range([&](const Turn& turn) {
            return turn.ffmpeg.*clock / ((turn.whole - turn.parts.drawing).*clock);
        });
        std::ranges::sort(sizes);
        std::printf(
            "%-14s %-10s %8.1f %8.1f %8.1f %8.1f %6.1f%% %8.1f   %.2f (%.2f to %.2f)   %.2f (%.2f to %.2f) "
            "%6.2f\n",
            qPrintable(QFileInfo(projectPath).completeBaseName()),
            clock == &Cost::wallMs ? "wall" : "processors", recorded.median, drawing.median, reading.median,
            packing.median, rest.median, ffmpeg.median, faster.median, faster.least, faster.most,
            undrawn.median, undrawn.least, undrawn.most, sizes[sizes.size() / 2]);
    }
    return true;
}

}  // namespace

// The wrapped calls, by the names that the linker knows.
#define PIXELGROVE_DRAW \
    "_ZN10pixelgrove12RenderStagesEPNS_13RenderContextEPKNS_17SynchronizedValueINS_12PaletteTableEEE"
#define PIXELGROVE_READ "_ZN10pixelgrove13ReadBackStageERNS_13RenderContextEjRNS_6BitmapEi"
#define PIXELGROVE_PACK "_ZN10pixelgrove9EncodePngERKNS_6BitmapE"

bool RealDraw(RenderContext*, const SharedPalette*) asm("__real_" PIXELGROVE_DRAW);
bool RealRead(RenderContext&, uint32_t, Bitmap&, int) asm("__real_" PIXELGROVE_READ);
QByteArray RealPack(const Bitmap&) asm("__real_" PIXELGROVE_PACK);

bool NotedDraw(RenderContext* context, const SharedPalette* palette) asm("__wrap_" PIXELGROVE_DRAW);
bool NotedDraw(RenderContext* context, const SharedPalette* palette) {
    return Noted(spans.drawing, [&] { return RealDraw(context, palette); });
}

bool NotedRead(RenderContext& context, uint32_t stage, Bitmap& bitmap,
               int face) asm("__wrap_" PIXELGROVE_READ);
bool NotedRead(RenderContext& context, uint32_t stage, Bitmap& bitmap, int face) {
    return Noted(spans.reading, [&] { return RealRead(context, stage, bitmap, face); });
}

QByteArray NotedPack(const Bitmap& bitmap) asm("__wrap_" PIXELGROVE_PACK);
QByteArray NotedPack(const Bitmap& bitmap) {
    return Noted(spans.packing, [&] { return RealPack(bitmap); });
}

}  // namespace pixelgrove

int main(int argumentCount, char** arguments) {
    if (argumentCount < 2) {
        std::fprintf(stderr, "bench_recording PROJECT...\n");
        return 2;
    }
    std::printf("%dx%d PNG, ms a frame, medians of %d turns\n", pixelgrove::kSize.width,
                pixelgrove::kSize.height, pixelgrove::kTurns);
    std::printf("%-14s %-10s %8s %8s %8s %8s %7s %8s   %-21s %-21s %s\n", "project", "clock", "recorded",
                "drawing", "reading", "packing", "rest", "ffmpeg", "faster", "undrawn", "size");
    for (int i = 1; i < argumentCount; ++i) {
        if (pixelgrove::Measure(QString::fromLocal8Bit(arguments[i]))) continue;
        std::fprintf(stderr, "%s can't be played\n", arguments[i]);
        return 1;
    }
    return 0;
}
