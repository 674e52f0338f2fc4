#include <cerrno>
#include <cstdlib>
#include <optional>
#include <utility>

#include "platform/CodePage.h"
#include "platform/TextScan.h"
#include "shadertoy/JsonNames.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonParts.h"

namespace pixelgrove {
namespace {

// As std::stof converts, whatever the process's locale: leading white space, any form of number, anything
// behind it. Nothing when there is no number or it is outside float's range.
std::optional<float> LeadingFloat(const QString& text) {
    const QByteArray bytes = ToCodePage(text);
    char* end = nullptr;
    errno = 0;
    const float value = strtof_l(bytes.constData(), &end, PlainLocale());
    if (end == bytes.constData() || errno == ERANGE) return std::nullopt;
    return value;
}

// The stage of a pass, by its type and name; with a warning, none for a pass that has no stage here. Nothing
// when a key is missing.
std::optional<uint32_t> StageOfPass(const JsonObject& pass, const QString& type, LoadWarnings* warnings) {
    if (type == u"common") return kStageCommon;
    if (type == u"image") return kStageImage;
    if (type == u"sound") {
        Warn(warnings, QStringLiteral("The sound pass was left out; there is no such stage here."));
        return kStageNone;
    }
    if (type != u"buffer" && type != u"cubemap") {
        Warn(warnings, QStringLiteral("A pass of the unknown type %1 was left out.").arg(InQuotes(type)));
        return kStageNone;
    }
    const std::optional<QString> name = pass.GetNamedString(u"name");
    if (!name) {
        Warn(warnings, QStringLiteral("A %1 pass without a name was left out.").arg(type));
        return std::nullopt;
    }
    const uint32_t kind = ValueOf(kPassNames, *name);
    if (kind == kStageNone)
        Warn(warnings,
             QStringLiteral("The pass %1 was left out; no stage has that name.").arg(InQuotes(*name)));
    return kind;
}

}  // namespace

bool ReadPassJson(const JsonObject& pass, ShaderStage& stage, LoadWarnings* warnings) {
    stage = ShaderStage{};
    const std::optional<QString> type = pass.GetNamedString(u"type");
    if (!type) {
        Warn(warnings, QStringLiteral("A pass without a type was left out."));
        return false;
    }
    const std::optional<uint32_t> kind = StageOfPass(pass, *type, warnings);
    if (!kind) return false;
    if (*type == u"sound") return true;  // no such stage here: an empty record for the discard slot
    stage.kind = *kind;
    if (stage.kind == kStageNone) warnings = nullptr;  // the whole pass was spoken of

    const QString stageName = StageName(stage.kind);
    const std::optional<QString> code = pass.GetNamedString(u"code");
    if (!code) {
        Warn(warnings, QStringLiteral("%1: the stage was left out, as it has no code.").arg(stageName));
        return false;
    }
    const QString text = UntilZero(*code);
    if (text.size() < code->size())
        Warn(warnings, QStringLiteral("%1: the text behind a zero character was left out.").arg(stageName));
    stage.source = ToCodePage(text);
    if (CountLackingCharacters(text) > 0) stage.text = text;

    const std::optional<JsonArray> inputs = pass.GetNamedArray(u"inputs");
    if (inputs && ReadInputs(*inputs, stage, warnings)) return true;
    Warn(warnings,
         QStringLiteral("%1: the stage was left out, as its inputs are missing or damaged.").arg(stageName));
    return false;
}

bool ReadProjectJson(const QString& text, ShaderProject& project, LoadWarnings* warnings) {
    project = ShaderProject{};

    const std::optional<JsonObject> root = JsonObject::Parse(text);
    if (!root) return false;
    const std::optional<JsonObject> shader = root->GetNamedObject(u"Shader");
    if (!shader) return false;

    const std::optional<QString> ver = shader->GetNamedString(u"ver");
    if (!ver) return false;
    const std::optional<float> version = LeadingFloat(*ver);
    if (!version) return false;
    project.version = *version;

    const std::optional<JsonObject> info = shader->GetNamedObject(u"info");
    if (!info) return false;
    // A project with gaps in its description still runs.
    ReadInfo(*info, project.info, warnings);

    const std::optional<JsonArray> passes = shader->GetNamedArray(u"renderpass");
    if (!passes) return false;
    for (qsizetype i = 0; i < passes->Size(); ++i) {
        const std::optional<JsonObject> pass = passes->GetObjectAt(i);
        if (!pass) return false;
        ShaderStage stage;
        if (!ReadPassJson(*pass, stage, warnings)) continue;
        const uint32_t slot = stage.kind;
        if (slot != kStageNone && project.stages[slot].kind != kStageNone)
            Warn(warnings, QStringLiteral("%1: there is more than one such pass; the last one counts.")
                               .arg(StageName(slot)));
        project.stages[slot] = std::move(stage);
    }
    return true;
}

}  // namespace pixelgrove
