#include <charconv>
#include <system_error>

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "shadertoy/JsonNames.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonParts.h"

namespace pixelgrove {
namespace {

struct StageRow {
    const char16_t* type;
    const char16_t* name;
};
// By StageId; 0 is no stage.
constexpr StageRow kStageRows[kStageCount] = {
    {nullptr, nullptr},       {u"common", u"Common"},   {u"buffer", u"Buffer A"},   {u"buffer", u"Buffer B"},
    {u"buffer", u"Buffer C"}, {u"buffer", u"Buffer D"}, {u"cubemap", u"Cubemap A"}, {u"image", u"Image"},
};

QString ChannelTypeText(uint32_t kind) {
    switch (kind) {
        case kChannelTexture:
            return QStringLiteral("texture");
        case kChannelBuffer:
            return QStringLiteral("buffer");
        case kChannelCubeA:
        case kChannelCubemap:
            return QStringLiteral("cubemap");
        case kChannelVolume:
            return QStringLiteral("volume");
        case kChannelKeyboard:
            return QStringLiteral("keyboard");
        case kChannelWebcam:
            return QStringLiteral("webcam");
        case kChannelAudio:
            return QStringLiteral("audio");
        default:
            return QStringLiteral("unknown");
    }
}

// A value without a name gets that of the first row.
template <typename Table>
QString NameOf(const Table& table, uint32_t value) {
    for (const JsonName& row : table) {
        if (row.value == value) return row.text.toString();
    }
    return table.front().text.toString();
}

QString Truth(uint32_t value) {
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

// Six decimals, whatever the process's locale.
QString VersionText(float version) {
    char text[64];  // the largest float has 39 digits before the point
    const std::to_chars_result result =
        std::to_chars(text, text + sizeof text, double(version), std::chars_format::fixed, 6);
    return QString::fromLatin1(text, result.ptr - text);
}

}  // namespace

JsonObject WriteInputJson(const ChannelInput& channel) {
    JsonObject sampler;
    sampler.SetNamedValue(QStringLiteral("filter"), NameOf(kFilterNames, channel.filter));
    sampler.SetNamedValue(QStringLiteral("wrap"), NameOf(kWrapNames, channel.wrap));
    sampler.SetNamedValue(QStringLiteral("vflip"), Truth(channel.vflip));
    sampler.SetNamedValue(QStringLiteral("srgb"), Truth(channel.srgb));
    if (channel.internalFormat == 1) {
        sampler.SetNamedValue(QStringLiteral("internal"), QStringLiteral("byte"));
    }

    double id = kOtherInputId;
    if (channel.kind == kChannelBuffer) id = double(channel.sourceStage) + kBufferInputOffset;
    if (channel.kind == kChannelCubeA) id = kCubeAInputId;

    JsonObject input;
    input.SetNamedValue(QStringLiteral("id"), id);
    input.SetNamedValue(QStringLiteral("src"), channel.fileName);
    input.SetNamedValue(QStringLiteral("ctype"), ChannelTypeText(channel.kind));
    input.SetNamedValue(QStringLiteral("channel"), double(channel.channelIndex));
    input.SetNamedValue(QStringLiteral("sampler"), sampler);
    input.SetNamedValue(QStringLiteral("published"), 1.0);
    return input;
}

JsonObject WritePassJson(const ShaderStage& stage) {
    JsonArray inputs;
    for (const ChannelInput& channel : stage.channels) {
        if (channel.kind != kChannelUnused) inputs.Append(WriteInputJson(channel));
    }
    // The reader knows a stage by its name; the service wants an output, and one for all will do.
    JsonObject output;
    output.SetNamedValue(QStringLiteral("id"), 41.0);
    output.SetNamedValue(QStringLiteral("channel"), 0.0);
    JsonArray outputs;
    outputs.Append(output);

    JsonObject pass;
    pass.SetNamedValue(QStringLiteral("inputs"), inputs);
    pass.SetNamedValue(QStringLiteral("outputs"), outputs);
    pass.SetNamedValue(QStringLiteral("code"), FromCodePage(stage.source));
    if (stage.kind == kStageNone || stage.kind >= uint32_t(kStageCount)) {
        pass.SetNamedValue(QStringLiteral("type"), QStringLiteral("unknown"));
        return pass;
    }
    const StageRow& row = kStageRows[stage.kind];
    pass.SetNamedValue(QStringLiteral("name"), QString::fromUtf16(row.name));
    pass.SetNamedValue(QStringLiteral("description"), QString());
    pass.SetNamedValue(QStringLiteral("type"), QString::fromUtf16(row.type));
    return pass;
}

JsonObject WriteInfoJson(const ShaderInfo& info) {
    JsonArray tags;
    if (!info.tags.isEmpty()) {
        // Blanks stay: the pieces are what stands between the commas.
        for (const QString& tag : info.tags.split(u','))
            tags.Append(tag);
    }
    JsonObject object;
    object.SetNamedValue(QStringLiteral("id"), info.id);
    object.SetNamedValue(QStringLiteral("date"), info.date);
    object.SetNamedValue(QStringLiteral("viewed"), double(info.viewed));
    object.SetNamedValue(QStringLiteral("name"), info.name);
    object.SetNamedValue(QStringLiteral("username"), info.username);
    object.SetNamedValue(QStringLiteral("description"), info.description);
    object.SetNamedValue(QStringLiteral("likes"), double(info.likes));
    object.SetNamedValue(QStringLiteral("published"), double(info.published));
    object.SetNamedValue(QStringLiteral("flags"), double(info.flags));
    object.SetNamedValue(QStringLiteral("usePreview"), double(info.usePreview));
    object.SetNamedValue(QStringLiteral("tags"), tags);
    object.SetNamedValue(QStringLiteral("hasliked"), double(info.hasliked));
    return object;
}

QString WriteProjectJson(const ShaderProject& project) {
    JsonArray passes;
    for (const StageId id : {kStageImage, kStageCommon, kStageBufferA, kStageBufferB, kStageBufferC,
                             kStageBufferD, kStageCubeA}) {
        if (project.stages[id].kind != kStageNone) passes.Append(WritePassJson(project.stages[id]));
    }
    JsonObject shader;
    shader.SetNamedValue(QStringLiteral("ver"), VersionText(project.version));
    shader.SetNamedValue(QStringLiteral("info"), WriteInfoJson(project.info));
    shader.SetNamedValue(QStringLiteral("renderpass"), passes);
    JsonObject root;
    root.SetNamedValue(QStringLiteral("Shader"), shader);
    return root.Stringify();
}

bool SaveProjectJson(const QString& path, const ShaderProject& project, QString* reason) {
    return WriteWholeFile(path, ToCodePage(WithEscapes(WriteProjectJson(project))), reason);
}

}  // namespace pixelgrove
