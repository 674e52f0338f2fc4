// pixelgrove-render: plays a project without a window or a display server and writes its frames to files.

#include <QCoreApplication>
#include <QDir>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include "app/RenderControls.h"
#include "app/RenderOptions.h"
#include "controls/Annotations.h"
#include "controls/BakedText.h"
#include "controls/LiveValues.h"
#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "library/ShaderService.h"
#include "media/ImageFiles.h"
#include "net/WebClient.h"
#include "platform/Thread.h"
#include "project/ProjectModel.h"
#include "render/EglSurface.h"
#include "render/GlSetup.h"
#include "render/ProjectCompiler.h"
#include "render/RenderContext.h"
#include "render/RenderThread.h"
#include "render/StageTargets.h"
#include "render/UniformLookup.h"
#include "render/source/SourceAssembly.h"

namespace pixelgrove {

namespace {

enum ExitCode { kExitDone = 0, kExitCompileFailed = 1, kExitUsage = 2 };

void PrintError(const QString& text) {
    QByteArray line = text.toLocal8Bit();
    if (!line.endsWith('\n')) line += '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
}

int LoadIntoEditingForm(EditingForm& form, const QString& path) {
    WebClient client;
    const FetchFunction fetch = [&client](const QString& url) {
        FetchResult result = client.Fetch(url);
        // Folders are made by who has something to keep. The main thread waits meanwhile.
        if (result.failure == FetchFailure::None) MakeDataFolders();
        return result;
    };
    const ShaderService service{ServiceOfEnvironment(), fetch};
    ShaderProject project;
    const ProjectFileResult read = LoadProjectFromService(service, path, project);
    for (const QString& warning : read.warnings)
        PrintError(QStringLiteral("pixelgrove-render: %1: %2").arg(path, warning));
    if (read.status != ProjectFileStatus::Loaded) {
        PrintError(QStringLiteral("pixelgrove-render: %1: %2").arg(path, read.message));
        return kExitUsage;
    }
    AdoptProject(form, project, path);
    return kExitDone;
}

// The value in the form that the uniform has; nothing when that form can't hold it.
std::optional<UniformValue> ExactValue(ControlValueType type, double number) {
    UniformValue value;
    value.type = type;
    const bool isWhole = std::trunc(number) == number;
    switch (type) {
        case kControlFloat:
            value.floatValue = float(number);
            return value;
        case kControlBool:
            value.boolValue = number != 0.0 ? 1 : 0;
            return value;
        case kControlInt:
            if (!isWhole || number < -2147483648.0 || number > 2147483647.0) return std::nullopt;
            value.intValue = int32_t(number);
            return value;
        case kControlUint:
            if (!isWhole || number < 0.0 || number > 4294967295.0) return std::nullopt;
            value.uintValue = uint32_t(number);
            return value;
        default:
            return std::nullopt;
    }
}

int Refuse(const QString& sentence) {
    PrintError(QStringLiteral("pixelgrove-render: ") + sentence);
    return kExitUsage;
}

// Gives each --set that names a live control to its record. The others go to `others`.
int SetControls(const RenderOptions& options, ControlSet& controls,
                std::vector<std::pair<QString, QString>>& others) {
    for (const auto& [name, value] : options.values) {
        const ControlSetting setting = SetControl(controls, name, value);
        if (!setting.problem.isEmpty()) return Refuse(setting.problem);
        if (!setting.isControl) others.emplace_back(name, value);
    }
    return kExitDone;
}

// Turns a --set of what is no control into a value of the type that the compiled programs declare.
int SetUniform(const QString& name, const QString& text, RenderContext& context) {
    const std::optional<ControlValueType> type = FindUniformType(context, name);
    if (!type) {
        return Refuse(QStringLiteral("no stage uses a float, int, uint or bool uniform named %1.").arg(name));
    }
    const std::optional<double> number = ControlNumber(text);
    if (!number) return Refuse(QStringLiteral("\"%1\" is no value for %2.").arg(text, name));
    std::optional<UniformValue> value = ExactValue(*type, *number);
    if (!value) {
        const QString kind = *type == kControlUint ? QStringLiteral(" uint") : QStringLiteral("n int");
        return Refuse(QStringLiteral("%1 is a%2 and can't be %3.").arg(name, kind, text));
    }
    value->name = name;
    context.fixedValues.push_back(*value);
    return kExitDone;
}

// The Image stage's controls, as the tree of the workbench has them.
void ScanControls(const StageDocument& image, const RenderOptions& options, ControlSet& controls) {
    ScanDefines(controls, image.text);
    ScanUniforms(controls, image.text, image.commentMap);
    controls.uniforms[0].range.value = options.speed;
}

// A stage before Image with other controls in its records threw away what was set there; its own bake is
// over by then.
void BakeImageAnew(const StageDocument& image, const RenderOptions& options, ControlSet& controls,
                   RunRequest& request) {
    for (const auto& [name, value] : options.values)
        SetControl(controls, name, value);
    BakedText baked = BakeDefines(controls, image.text);
    request.project.stages[kStageImage].source = std::move(baked.text);
    request.baked[kStageImage] = std::move(baked.lines);
}

int PrintToStdout(const QByteArray& text) {
    const bool written =
        std::fwrite(text.constData(), 1, size_t(text.size()), stdout) == size_t(text.size()) &&
        std::fflush(stdout) == 0;
    return written ? kExitDone
                   : Refuse(QStringLiteral("the text can't be written: %1.").arg(qt_error_string()));
}

int PrintSource(RenderContext& context, uint32_t stage) {
    if (context.project.stages[stage].kind != stage) {
        PrintError(QStringLiteral("pixelgrove-render: the project has no stage %1.").arg(StageName(stage)));
        return kExitUsage;
    }
    SetVersionLine(context);
    SetSelfReference(context, stage);
    const std::optional<QByteArray> text =
        AssembleStageSource(context.project, context.includeContext, stage, context.versionLine);
    if (!text) {
        PrintError(context.includeContext.failure);
        return kExitCompileFailed;
    }
    return PrintToStdout(*text);
}

int ReportCompileFailure(RenderRun& run, const CompileOutcome& outcome) {
    const FailureReport report = ReportOf(*run.context, outcome, run.request.baked);
    for (const CompileMessages& messages : report.errors) {
        if (!messages.empty()) PrintError(TextOf(messages));
    }
    if (!report.failure.empty()) PrintError(TextOf(report.failure));
    return kExitCompileFailed;
}

// The stage's latest picture; for Cube A its six faces side by side.
std::shared_ptr<Bitmap> ReadPicture(const RenderContext& context, uint32_t stage) {
    if (stage != kStageCubeA) {
        auto picture = CreateFrameBitmap(context.renderSize.width, context.renderSize.height);
        if (!picture || !ReadBackStage(context, stage, *picture)) return nullptr;
        return picture;
    }
    auto strip = CreateFrameBitmap(6 * kCubeSide, kCubeSide);
    const auto face = CreateFrameBitmap(kCubeSide, kCubeSide);
    if (!strip || !face) return nullptr;
    for (int n = 0; n < 6; ++n) {
        if (!ReadBackStage(context, stage, *face, n)) return nullptr;
        for (int row = 0; row < kCubeSide; ++row) {
            std::memcpy(strip->Row(row) + size_t(n) * face->StrideBytes(), face->Row(row),
                        face->StrideBytes());
        }
    }
    return strip;
}

int WriteFrames(RenderRun& run, const RenderOptions& options) {
    const QDir folder(options.outFolder);
    if (!folder.exists()) {
        PrintError(QStringLiteral("pixelgrove-render: there is no folder %1.").arg(options.outFolder));
        return kExitUsage;
    }
    for (int frame = 1; frame <= options.frames; ++frame) {
        if (!RenderFrameTick(run)) {
            PrintError(QStringLiteral("pixelgrove-render: frame %1 can't be drawn.").arg(frame));
            return kExitUsage;
        }
        const std::shared_ptr<Bitmap> picture = ReadPicture(*run.context, options.stage);
        if (!picture) {
            PrintError(QStringLiteral("pixelgrove-render: %1 has no picture.").arg(StageName(options.stage)));
            return kExitUsage;
        }
        const QString path = folder.filePath(*FormatFrameName(options.format, frame));
        QString reason;
        if (!SaveBitmapImage(*picture, path, &reason)) {
            PrintError(QStringLiteral("pixelgrove-render: %1 can't be written: %2.").arg(path, reason));
            return kExitUsage;
        }
    }
    return kExitDone;
}

int Render(AppState& app, ControlSet& controls, const RenderOptions& options) {
    if (const int code = LoadIntoEditingForm(app.project, options.project); code != kExitDone) return code;
    const StageDocument& image = app.project.documents[kStageImage];
    ScanControls(image, options, controls);
    std::vector<std::pair<QString, QString>> otherValues;
    if (const int code = SetControls(options, controls, otherValues); code != kExitDone) return code;
    if (options.listControls) return PrintToStdout(ControlLines(controls).toLocal8Bit());
    RunRequest request = SnapshotProject(app, controls);
    BakeImageAnew(image, options, controls, request);
    request.startTime = options.start;
    request.surface = CreateEglSurface({options.width, options.height});
    if (!request.surface) {
        PrintError(QStringLiteral("pixelgrove-render: no OpenGL without a window on this system."));
        return kExitUsage;
    }
    RenderRun run(app, std::move(request));
    if (!PrepareRenderContext(run)) {
        PrintError(QStringLiteral("pixelgrove-render: OpenGL %1.%2 or newer is needed. This system has: %3.")
                       .arg(kLeastGlVersion.major)
                       .arg(kLeastGlVersion.minor)
                       .arg(QString::fromStdString(OpenGlVersionText())));
        return kExitUsage;
    }
    RenderContext& context = *run.context;
    if (options.printSource != kStageNone) return PrintSource(context, options.printSource);
    const CompileOutcome outcome = CompileProject(context);
    if (outcome.result != CompileResult::Good) return ReportCompileFailure(run, outcome);
    for (const auto& [name, value] : otherValues)
        if (const int code = SetUniform(name, value, context); code != kExitDone) return code;
    if (options.checkOnly) return kExitDone;
    if (context.webcamTexture != 0)
        PrintError(QStringLiteral("pixelgrove-render: no camera is used; the webcam's channel stays blank."));
    PublishControlValues(controls);
    return WriteFrames(run, options);
}

int RenderMain(const QStringList& arguments) {
    const ParsedOptions parsed = ParseRenderOptions(arguments);
    if (!parsed.error.isEmpty()) {
        PrintError(QStringLiteral("pixelgrove-render: %1\n%2").arg(parsed.error, RenderUsage()));
        return kExitUsage;
    }
    if (parsed.options.help) {
        std::fputs(RenderUsage().toLocal8Bit().constData(), stdout);
        return kExitDone;
    }
    if (!AllocateGlobals()) {
        PrintError(QStringLiteral("pixelgrove-render: no memory."));
        return kExitUsage;
    }
    AppState& app = *App();
    SetBaseFolders();
    InitialiseSpeed(*Controls());
    app.project.includeContext = CreateIncludeContext();
    int code = kExitUsage;
    Thread thread;
    if (!thread.Start(kRenderStackBytes, [&] { code = Render(app, *Controls(), parsed.options); }))
        PrintError(QStringLiteral("pixelgrove-render: the system gives no thread to compile on."));
    thread.Join();
    FreeGlobals();
    return code;
}

}  // namespace

}  // namespace pixelgrove

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return pixelgrove::RenderMain(QCoreApplication::arguments().mid(1));
}
