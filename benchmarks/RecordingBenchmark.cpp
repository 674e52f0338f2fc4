// What a recorded frame costs beside its drawing and its packing, and how fast it is against ffmpeg packing
// the same pixels. Each frame is measured as a whole and in its two parts, in turns; see README.md beside
// this file.

#include <sys/resource.h>
#include <time.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "../tests/support/Engine.h"
#include "media/PngWriter.h"
#include "project/ProjectModel.h"
#include "render/FrameRecorder.h"
#include "shadertoy/ProjectFile.h"

namespace pixelgrove {
namespace {

constexpr SurfaceSize kSize{1920, 1080};
constexpr int kFrames = 40;

// Time of all processors, which other programs don't add to: this program's, and its children's.
double OwnMs() {
    timespec spent{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &spent);
    return double(spent.tv_sec) * 1e3 + double(spent.tv_nsec) / 1e6;
}

template <typename F>
double MsOf(F&& run) {
    const double start = OwnMs();
    run();
    return OwnMs() - start;
}

// What the quickest tenth stays below: other programs still take the caches.
double Quick(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 10];
}

double MsOfChildren() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1e3 +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e3;
}

// Rows of red, green and blue.
bool WriteRaw(const Bitmap& frame, QFile& file) {
    QByteArray row(qsizetype(frame.width) * 3, 0);
    for (int y = frame.height - 1; y >= 0; --y) {
        const uint8_t* in = frame.Row(y);
        for (qsizetype i = 0; i < row.size(); i += 3, in += 4) {
            row[i] = char(in[2]);
            row[i + 1] = char(in[1]);
            row[i + 2] = char(in[0]);
        }
        if (file.write(row) != row.size()) return false;
    }
    return true;
}

double SizeOfFiles(const QString& folder) {
    double bytes = 0;
    for (const QFileInfo& file : QDir(folder).entryInfoList({QStringLiteral("f-*.png")}))
        bytes += double(file.size());
    return bytes;
}

// Milliseconds of one processor that one thread of ffmpeg takes a frame to pack the raw frames into the
// folder; 0 without it.
double MsOfFfmpeg(const QString& rawPath, const QString& folder) {
    const QString size = QStringLiteral("%1x%2").arg(kSize.width).arg(kSize.height);
    QStringList arguments =
        QStringLiteral("-loglevel error -y -f rawvideo -pix_fmt rgb24 -video_size").split(u' ');
    arguments << size << QStringLiteral("-i") << rawPath;
    arguments << QStringLiteral("-threads 1 -c:v png").split(u' ') << folder + QStringLiteral("/f-%d.png");
    const double before = MsOfChildren();
    const int result = QProcess::execute(QStringLiteral("ffmpeg"), arguments);
    return result == 0 ? (MsOfChildren() - before) / kFrames : 0;
}

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
    engine.Draw(3);

    QFile raw(theirs.filePath(QStringLiteral("raw")));
    if (!raw.open(QIODevice::WriteOnly)) return false;
    std::vector<double> whole, drawing, reading, packing;
    for (int i = 0; i < kFrames; ++i) {
        // Not recorded, a frame is drawn and nothing else, or read back too: the surface has no window.
        asked.useGdiDisplay = 0;
        drawing.push_back(MsOf([&] { engine.Draw(1); }));
        asked.useGdiDisplay = 1;
        reading.push_back(MsOf([&] { engine.Draw(1); }));
        SetRecordingState(*App(), kManualStopSeconds);
        asked.recordFrameIndex = uint32_t(i);
        whole.push_back(MsOf([&] { engine.Draw(1); }));
        SetRecordingState(*App(), 0);
        packing.push_back(MsOf([&] { EncodePng(*engine.Run().frame); }));
        if (!WriteRaw(*engine.Run().frame, raw)) return false;
    }
    raw.close();
    const double ffmpegMs = MsOfFfmpeg(raw.fileName(), theirs.path());
    const double frameMs = Quick(whole);
    const double drawMs = Quick(drawing);
    const double restMs = frameMs - Quick(reading) - Quick(packing);
    std::printf("%-16s %8.1f %8.1f %8.1f %8.1f %7.1f%% %8.1f %8.2f %8.2f %6.2f\n",
                qPrintable(QFileInfo(projectPath).completeBaseName()), frameMs, drawMs,
                Quick(reading) - drawMs, Quick(packing), restMs / frameMs * 100, ffmpegMs, ffmpegMs / frameMs,
                ffmpegMs / (frameMs - drawMs), SizeOfFiles(folder.path()) / SizeOfFiles(theirs.path()));
    return true;
}

}  // namespace
}  // namespace pixelgrove

int main(int argumentCount, char** arguments) {
    if (argumentCount < 2) {
        std::fprintf(stderr, "bench_recording PROJECT...\n");
        return 2;
    }
    std::printf("%dx%d PNG, ms of processor a frame, the quickest tenth of %d frames\n",
                pixelgrove::kSize.width, pixelgrove::kSize.height, pixelgrove::kFrames);
    std::printf("%-16s %8s %8s %8s %8s %8s %8s %8s %8s %6s\n", "project", "recorded", "drawing", "reading",
                "packing", "rest", "ffmpeg", "faster", "undrawn", "size");
    for (int i = 1; i < argumentCount; ++i) {
        if (pixelgrove::Measure(QString::fromLocal8Bit(arguments[i]))) continue;
        std::fprintf(stderr, "%s can't be played\n", arguments[i]);
        return 1;
    }
    return 0;
}
