#include "shadertoy/ProjectFile.h"

#include <QFileInfo>
#include <algorithm>
#include <optional>
#include <utility>

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "shadertoy/JsonText.h"
#include "shadertoy/LoadWarnings.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectMedia.h"

namespace pixelgrove {
namespace {

ProjectFileResult Failure(ProjectFileStatus status, const QString& sentence, const QString& path) {
    return {status, sentence.arg(path), {}, true, {}};
}

bool HasStage(const ShaderProject& project) {
    return std::any_of(project.stages.begin(), project.stages.end(),
                       [](const ShaderStage& stage) { return stage.kind != kStageNone; });
}

// The service's form alone. The warnings come before its own.
ProjectFileResult LoadServiceForm(QByteArrayView bytes, LoadWarnings warnings, const QString& whatItIs,
                                  const QString& folder, ShaderProject& project,
                                  const FetchMedium& fetchMedium) {
    const ProjectFileResult notAProject =
        Failure(ProjectFileStatus::NotAProject, QStringLiteral("The %1 is not a shader project."), whatItIs);
    const std::optional<QByteArrayView> text = CheckJsonText(bytes);
    if (!text) return notAProject;
    ShaderProject read;
    const bool isWhole = ReadProjectJson(FromCodePage(*text), read, &warnings);
    if (!isWhole && !HasStage(read)) return notAProject;

    ProjectFileResult result{ProjectFileStatus::Loaded, {}, {}, isWhole && warnings.IsEmpty(), {}};
    if (!isWhole) {
        result.warnings +=
            QStringLiteral("The project is damaged; the stages behind the damage are missing.");
    }
    warnings.Add(PrepareProjectChannels(read, folder, fetchMedium));
    result.warnings += warnings.Lines();
    project = std::move(read);

    if (project.stages[kStageImage].kind == kStageNone) {
        result.status = ProjectFileStatus::NoImageStage;
        result.message = QStringLiteral("The %1 has no Image stage.").arg(whatItIs);
    }
    return result;
}

}  // namespace

ProjectFileResult LoadProjectBytes(QByteArrayView bytes, const QString& whatItIs, const QString& folder,
                                   ShaderProject& project, const FetchMedium& fetchMedium) {
    FoundShaders found = FindShaders(bytes);
    if (found.form == TextForm::None || found.form == TextForm::Service)
        return LoadServiceForm(bytes, {}, whatItIs, folder, project, fetchMedium);
    if (found.shaders.size() == 1)
        return LoadFoundShader(found.shaders.front(), whatItIs, folder, project, fetchMedium);
    ProjectFileResult result{ProjectFileStatus::ManyShaders, {}, {}, true, std::move(found)};
    result.message = QStringLiteral("The %1 holds %2 shaders.")
                         .arg(whatItIs)
                         .arg(qsizetype(result.choices.shaders.size()) + result.choices.leftOut);
    return result;
}

ProjectFileResult LoadFoundShader(const FoundShader& shader, const QString& whatItIs, const QString& folder,
                                  ShaderProject& project, const FetchMedium& fetchMedium) {
    LoadWarnings warnings;
    warnings.Add(shader.warnings);
    ProjectFileResult result =
        LoadServiceForm(shader.json, std::move(warnings), whatItIs, folder, project, fetchMedium);
    result.isComplete = false;
    return result;
}

ProjectFileResult LoadProjectFile(const QString& path, ShaderProject& project,
                                  const FetchMedium& fetchMedium) {
    const QFileInfo info(NormalizePath(path));
    if (IsPlainFile(path) && info.size() > kMaxProjectFileBytes) {
        return Failure(ProjectFileStatus::TooLarge,
                       QStringLiteral("The file \"%1\" is too large for a project."), path);
    }
    const std::optional<QByteArray> bytes = ReadWholeFile(path, kMaxProjectFileBytes);
    if (!bytes) {
        return Failure(ProjectFileStatus::Unreadable, QStringLiteral("The file \"%1\" can't be read."), path);
    }
    return LoadProjectBytes(*bytes, QStringLiteral("file \"%1\"").arg(path), info.absolutePath(), project,
                            fetchMedium);
}

}  // namespace pixelgrove
