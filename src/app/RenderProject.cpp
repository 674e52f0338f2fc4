#include "app/RenderProject.h"

#include <QFileInfo>
#include <cmath>
#include <optional>
#include <utility>

#include "app/RenderControls.h"
#include "app/RenderReport.h"
#include "controls/Annotations.h"
#include "controls/BakedText.h"
#include "core/BaseFolders.h"
#include "core/ProblemLines.h"
#include "library/ShaderService.h"
#include "net/WebClient.h"
#include "platform/TextScan.h"
#include "project/ProjectModel.h"
#include "render/UniformLookup.h"
#include "render/source/SourceAssembly.h"

namespace pixelgrove {

namespace {

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

// One line for each: how it is picked, and its name.
QString ListOf(const FoundShaders& found) {
    QString list;
    for (size_t i = 0; i < found.shaders.size(); ++i) {
        const FoundShader& shader = found.shaders[i];
        list += QStringLiteral("\n#%1\t%2\t%3").arg(i + 1).arg(shader.id, InQuotes(shader.name));
    }
    return list;
}

bool IsPicked(const QString& pick, const FoundShader& shader, size_t place) {
    return shader.id == pick || pick == QStringLiteral("#%1").arg(place + 1);
}

// The shader that is to be taken from a file of several. The result is as it was when it isn't there.
void TakePicked(const QString& pick, const QString& path, const ShaderService& service,
                ProjectFileResult& result, ShaderProject& project) {
    const FoundShaders found = result.choices;
    for (size_t i = 0; i < found.shaders.size(); ++i) {
        if (!IsPicked(pick, found.shaders[i], i)) continue;
        result = LoadFoundWithService(service, found.shaders[i], QStringLiteral("shader"),
                                      QFileInfo(path).absolutePath(), project);
        return;
    }
    result.message += (pick.isEmpty() ? QStringLiteral(" Choose one with --pick:")
                                      : QStringLiteral(" None of them is %1:").arg(InQuotes(pick))) +
                      ListOf(found);
}

}  // namespace

int LoadIntoEditingForm(EditingForm& form, const RenderOptions& options) {
    const QString& path = options.project;
    const QString& pick = options.pick;
    const auto say = [&](const QString& kind, const QString& text) {
        PrintError(options.gccErrors
                       ? ProblemLine(path, 1, 1, kind, text)
                       : QStringLiteral("pixelgrove-render: ") + path + QStringLiteral(": ") + text);
    };
    WebClient client;
    const FetchFunction fetch = [&client](const QString& url) {
        FetchResult result = client.Fetch(url);
        // Folders are made by who has something to keep. The main thread waits meanwhile.
        if (result.failure == FetchFailure::None) MakeDataFolders();
        return result;
    };
    const ShaderService service{ServiceOfEnvironment(), fetch};
    ShaderProject project;
    ProjectFileResult read = LoadProjectFromService(service, path, project);
    if (read.status == ProjectFileStatus::ManyShaders)
        TakePicked(pick, path, service, read, project);
    else if (read.status == ProjectFileStatus::Loaded && !pick.isEmpty() && project.info.id != pick)
        return Refuse(QStringLiteral("%1: there is no shader %2.").arg(path, InQuotes(pick)));
    for (const QString& warning : read.warnings)
        say(QStringLiteral("warning"), warning);
    if (read.status != ProjectFileStatus::Loaded) {
        say(QStringLiteral("error"), read.message);
        return kExitUsage;
    }
    AdoptProject(form, project, path);
    return kExitDone;
}

int SetControls(const RenderOptions& options, ControlSet& controls, NamedTexts& others) {
    for (const auto& [name, value] : options.values) {
        const ControlSetting setting = SetControl(controls, name, value);
        if (!setting.problem.isEmpty()) return Refuse(setting.problem);
        if (!setting.isControl) others.emplace_back(name, value);
    }
    return kExitDone;
}

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

void ScanControls(const StageDocument& image, const RenderOptions& options, ControlSet& controls) {
    ScanDefines(controls, image.text);
    ScanUniforms(controls, image.text, image.commentMap);
    controls.uniforms[0].range.value = options.speed;
}

void BakeImageAnew(const StageDocument& image, const RenderOptions& options, ControlSet& controls,
                   RunRequest& request) {
    for (const auto& [name, value] : options.values)
        SetControl(controls, name, value);
    BakedText baked = BakeDefines(controls, image.text);
    request.project.stages[kStageImage].source = std::move(baked.text);
    request.baked[kStageImage] = std::move(baked.lines);
}

int PrintSource(RenderContext& context, uint32_t stage) {
    if (context.project.stages[stage].kind != stage)
        return Refuse(QStringLiteral("the project has no stage %1.").arg(StageName(stage)));
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

int ReportCompileFailure(RenderRun& run, const CompileOutcome& outcome, const RenderOptions& options) {
    const FailureReport report = ReportOf(*run.context, outcome, run.request.baked);
    const auto print = [&options](const CompileMessages& messages) {
        PrintError(options.gccErrors ? ProblemLinesOf(messages, options.project) : TextOf(messages));
    };
    for (const CompileMessages& messages : report.errors) {
        if (!messages.empty()) print(messages);
    }
    if (!report.failure.empty()) print(report.failure);
    return kExitCompileFailed;
}

}  // namespace pixelgrove
