// pixelgrove-render: plays a project without a window or a display server and writes its frames to files or
// to a pipe.

#include <malloc.h>

#include <QCoreApplication>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include "app/FrameFeed.h"
#include "app/FrameOutput.h"
#include "app/FrameQueue.h"
#include "app/RenderControls.h"
#include "app/RenderOptions.h"
#include "app/RenderProgress.h"
#include "app/RenderProject.h"
#include "app/RenderReport.h"
#include "controls/Annotations.h"
#include "controls/LiveValues.h"
#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "platform/Thread.h"
#include "render/EglSurface.h"
#include "render/GlSetup.h"
#include "render/ProjectCompiler.h"
#include "render/RenderContext.h"
#include "render/RenderThread.h"
#include "render/StageTargets.h"
#include "soundfile/SoundFile.h"

namespace pixelgrove {

namespace {

// The stage's latest picture, in place of what `picture` holds if it holds something; for Cube A its six
// faces side by side.
std::shared_ptr<Bitmap> ReadPicture(RenderContext& context, uint32_t stage, std::shared_ptr<Bitmap> picture) {
    if (stage != kStageCubeA) {
        if (!picture) picture = CreateFrameBitmap(context.renderSize.width, context.renderSize.height);
        if (!picture || !ReadBackStage(context, stage, *picture)) return nullptr;
        return picture;
    }
    if (!picture) picture = CreateFrameBitmap(6 * kCubeSide, kCubeSide);
    const auto face = CreateFrameBitmap(kCubeSide, kCubeSide);
    if (!picture || !face) return nullptr;
    for (int n = 0; n < 6; ++n) {
        if (!ReadBackStage(context, stage, *face, n)) return nullptr;
        for (int row = 0; row < kCubeSide; ++row) {
            std::memcpy(picture->Row(row) + size_t(n) * face->StrideBytes(), face->Row(row),
                        face->StrideBytes());
        }
    }
    return picture;
}

// The first failure ends it: one of drawing frame 20 comes after one of writing frame 19.
int WriteFrames(RenderRun& run, const RenderOptions& options, SoundFile* sound) {
    QString problem;
    const std::unique_ptr<FrameOutput> output = OpenFrameOutput(options, &problem);
    if (!output) return Refuse(problem);
    const int last = options.first + options.frames - 1;
    RenderProgress progress(last);
    FrameFeed feed(run, options, sound);
    problem = feed.GoToFirst(progress);
    FrameQueue queue(options.jobs,
                     [&output](int frame, const Bitmap& picture) { return output->Write(frame, picture); });
    for (int frame = options.first; frame <= last && problem.isEmpty(); ++frame) {
        problem = feed.DrawNext();
        if (!problem.isEmpty()) break;
        std::shared_ptr<Bitmap> picture = ReadPicture(*run.context, options.stage, queue.TakeSpare());
        if (!picture)
            problem = QStringLiteral("%1 has no picture.").arg(StageName(options.stage));
        else if (!queue.Put(frame, std::move(picture)))
            break;
        progress.Show(frame);
    }
    const QString writeProblem = queue.Finish();
    progress.End();
    if (!writeProblem.isEmpty()) return Refuse(writeProblem);
    return problem.isEmpty() ? kExitDone : Refuse(problem);
}

int Render(AppState& app, ControlSet& controls, const RenderOptions& options) {
    if (const int code = LoadIntoEditingForm(app.project, options); code != kExitDone) return code;
    const StageDocument& image = app.project.documents[kStageImage];
    ScanControls(image, options, controls);
    NamedTexts otherValues;
    if (const int code = SetControls(options, controls, otherValues); code != kExitDone) return code;
    if (options.listControls) return PrintToStdout(ControlLines(controls).toLocal8Bit());
    std::unique_ptr<SoundFile> sound;
    if (!options.audio.isEmpty()) {
        QString reason;
        sound = SoundFile::Open(options.audio, &reason);
        if (!sound) return Refuse(QStringLiteral("%1 can't be heard: %2.").arg(options.audio, reason));
    }
    RunRequest request = SnapshotProject(app, controls);
    BakeImageAnew(image, options, controls, request);
    request.startTime = options.start;
    request.surface = CreateEglSurface({options.width, options.height});
    if (!request.surface) return Refuse(QStringLiteral("no OpenGL without a window on this system."));
    RenderRun run(app, std::move(request));
    if (!PrepareRenderContext(run)) {
        return Refuse(QStringLiteral("OpenGL %1.%2 or newer is needed. This system has: %3.")
                          .arg(kLeastGlVersion.major)
                          .arg(kLeastGlVersion.minor)
                          .arg(QString::fromStdString(OpenGlVersionText())));
    }
    RenderContext& context = *run.context;
    if (options.printSource != kStageNone) return PrintSource(context, options.printSource);
    const CompileOutcome outcome = CompileProject(context);
    if (outcome.result != CompileResult::Good) return ReportCompileFailure(run, outcome, options);
    for (const auto& [name, value] : otherValues)
        if (const int code = SetUniform(name, value, context); code != kExitDone) return code;
    if (options.checkOnly) return kExitDone;
    if (context.webcamTexture != 0)
        PrintError(QStringLiteral("pixelgrove-render: no camera is used; the webcam's channel stays blank."));
    PublishControlValues(controls);
    return WriteFrames(run, options, sound.get());
}

int RenderMain(const QStringList& arguments) {
    const ParsedOptions parsed = ParseRenderOptions(arguments);
    if (!parsed.error.isEmpty()) {
        return Refuse(
            QStringLiteral("%1\n\"pixelgrove-render --help\" lists the options.").arg(parsed.error));
    }
    if (parsed.options.help || parsed.options.version) {
        return PrintToStdout(parsed.options.help
                                 ? RenderUsage().toLocal8Bit()
                                 : QByteArrayLiteral("pixelgrove-render " PIXELGROVE_VERSION "\n"));
    }
    if (!AllocateGlobals()) return Refuse(QStringLiteral("no memory."));
    AppState& app = *App();
    SetBaseFolders();
    InitialiseSpeed(*Controls());
    app.project.includeContext = CreateIncludeContext();
    int code = kExitUsage;
    Thread thread;
    if (!thread.Start(kRenderStackBytes, [&] { code = Render(app, *Controls(), parsed.options); }))
        Refuse(QStringLiteral("the system gives no thread to compile on."));
    thread.Join();
    FreeGlobals();
    return code;
}

}  // namespace

}  // namespace pixelgrove

int main(int argc, char** argv) {
    // One heap for all threads: the driver compiles on a second one, whose own heap would grow by single
    // pages, with a call to the system for each.
    mallopt(M_ARENA_MAX, 1);
    const QCoreApplication application(argc, argv);
    return pixelgrove::RenderMain(QCoreApplication::arguments().mid(1));
}
