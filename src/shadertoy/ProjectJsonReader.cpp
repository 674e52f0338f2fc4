#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>

#include "platform/CodePage.h"
#include "platform/TextScan.h"
#include "shadertoy/JsonNames.h"
#include "shadertoy/ProjectJson.h"

namespace pixelgrove {
namespace {

constexpr JsonName kStageNames[] = {
    {u"Buffer A", kStageBufferA}, {u"Buffer B", kStageBufferB}, {u"Buffer C", kStageBufferC},
    {u"Buffer D", kStageBufferD}, {u"Buf A", kStageBufferA},    {u"Buf B", kStageBufferB},
    {u"Buf C", kStageBufferC},    {u"Buf D", kStageBufferD},    {u"Cube A", kStageCubeA},
    {u"Cubemap A", kStageCubeA},
};

// Whether "cubemap" means the Cube A stage is decided by the input's id.
constexpr JsonName kChannelNames[] = {
    {u"texture", kChannelTexture}, {u"buffer", kChannelBuffer},     {u"cubemap", kChannelCubemap},
    {u"volume", kChannelVolume},   {u"keyboard", kChannelKeyboard}, {u"webcam", kChannelWebcam},
    {u"audio", kChannelAudio},     {u"musicstream", kChannelAudio}, {u"music", kChannelAudio},
    {u"mic", kChannelAudio},
};

template <typename Table>
uint32_t ValueOf(const Table& table, const QString& text) {
    for (const JsonName& row : table) {
        if (row.text == text) return row.value;
    }
    return 0;
}

void MarkRefused(bool* refused) {
    if (refused) *refused = true;
}

// All texts of the records are zero-terminated in meaning.
QString UntilZero(const QString& text) {
    const qsizetype zero = text.indexOf(QChar(u'\0'));
    return zero < 0 ? text : text.left(zero);
}

// capacity counts the terminating zero.
QString FittingText(const QString& text, qsizetype capacity, bool* refused) {
    QString result = UntilZero(text);
    if (result.size() < capacity) return result;
    MarkRefused(refused);
    return {};
}

std::optional<int64_t> Truncated(double number) {
    // The largest double below 2^63 converts; 2^63 itself would not.
    constexpr double kLimit = 9223372036854775808.0;
    if (!(number >= -kLimit && number < kLimit)) return std::nullopt;
    return int64_t(number);
}

bool ReadCount(const JsonObject& object, QStringView key, uint32_t& field, bool* refused) {
    const std::optional<double> number = object.GetNamedNumber(key);
    if (!number) return false;
    const std::optional<int64_t> whole = Truncated(*number);
    if (!whole) MarkRefused(refused);
    field = uint32_t(uint64_t(whole.value_or(0)) & 0xFFFFFFFFu);
    return true;
}

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

bool ReadTags(const JsonArray& array, ShaderInfo& info, bool* refused) {
    constexpr qsizetype kCapacity = 256;
    bool overflow = false;
    for (qsizetype i = 0; i < array.Size(); ++i) {
        const std::optional<QString> tag = array.GetStringAt(i);
        if (!tag) return false;
        if (overflow) continue;
        if (i > 0) info.tags += QStringLiteral(", ");
        info.tags += UntilZero(*tag);
        if (info.tags.size() >= kCapacity) {
            overflow = true;
            info.tags.clear();
            MarkRefused(refused);
        }
    }
    return true;
}

bool ReadInfo(const JsonObject& source, ShaderInfo& info, bool* refused) {
    info = ShaderInfo{};
    std::optional<QString> id, date, name, username, description;
    // The order decides which numbers a missing key leaves behind.
    if (!(id = source.GetNamedString(u"id"))) return false;
    if (!(date = source.GetNamedString(u"date"))) return false;
    if (!ReadCount(source, u"viewed", info.viewed, refused)) return false;
    if (!(name = source.GetNamedString(u"name"))) return false;
    if (!(username = source.GetNamedString(u"username"))) return false;
    if (!(description = source.GetNamedString(u"description"))) return false;
    if (!ReadCount(source, u"likes", info.likes, refused)) return false;
    if (!ReadCount(source, u"published", info.published, refused)) return false;
    if (!ReadCount(source, u"flags", info.flags, refused)) return false;
    if (!ReadCount(source, u"usePreview", info.usePreview, refused)) return false;
    if (!ReadCount(source, u"hasliked", info.hasliked, refused)) return false;

    info.id = FittingText(*id, 20, refused);
    info.date = FittingText(*date, 32, refused);
    info.name = FittingText(*name, 128, refused);
    info.username = FittingText(*username, 64, refused);
    info.description = FittingText(*description, 260, refused);

    const std::optional<JsonArray> tags = source.GetNamedArray(u"tags");
    return tags && ReadTags(*tags, info, refused);
}

bool ReadSampler(const JsonObject& sampler, ChannelInput& channel) {
    const std::optional<QString> filter = sampler.GetNamedString(u"filter");
    if (!filter) return false;
    channel.filter = ValueOf(kFilterNames, *filter);
    const std::optional<QString> wrap = sampler.GetNamedString(u"wrap");
    if (!wrap) return false;
    channel.wrap = ValueOf(kWrapNames, *wrap);
    const std::optional<QString> vflip = sampler.GetNamedString(u"vflip");
    if (!vflip) return false;
    channel.vflip = *vflip == u"true";
    const std::optional<QString> srgb = sampler.GetNamedString(u"srgb");
    if (!srgb) return false;
    channel.srgb = *srgb == u"true";
    const std::optional<QString> internal = sampler.GetNamedString(u"internal");
    if (!internal) return false;
    channel.internalFormat = *internal == u"byte";
    return true;
}

// Reads the inputs of a pass into its channels; false when an element is no object.
bool ReadInputs(const JsonArray& inputs, ShaderStage& stage, bool* refused) {
    for (qsizetype i = 0; i < inputs.Size(); ++i) {
        const std::optional<JsonObject> input = inputs.GetObjectAt(i);
        if (!input) return false;
        ChannelInput channel;
        // An input that can be read in part only still takes its place, channel 0 if it has no other.
        ReadInputJson(*input, channel, refused);
        if (channel.channelIndex >= uint32_t(kChannelCount)) {
            MarkRefused(refused);
            continue;
        }
        const uint32_t index = channel.channelIndex;
        stage.channels[index] = std::move(channel);
    }
    return true;
}

}  // namespace

bool ReadInputJson(const JsonObject& input, ChannelInput& channel, bool* refused) {
    channel = ChannelInput{};
    channel.sourceStage = 0;

    const std::optional<QString> ctype = input.GetNamedString(u"ctype");
    if (!ctype) return false;
    channel.kind = ValueOf(kChannelNames, *ctype);

    const std::optional<double> number = input.GetNamedNumber(u"channel");
    if (!number) return false;
    // A number that 32 bits can't tell apart from a good one must not become one.
    const std::optional<int64_t> index = Truncated(*number);
    channel.channelIndex = index && *index >= 0 && *index <= 0xFFFFFFFF ? uint32_t(*index) : 0xFFFFFFFFu;

    const std::optional<double> idNumber = input.GetNamedNumber(u"id");
    if (!idNumber) return false;
    const int64_t id = Truncated(*idNumber).value_or(-1);
    if (channel.kind == kChannelBuffer) {
        const int64_t stage = id < 0 ? 0 : id - kBufferInputOffset;
        if (stage >= kStageBufferA && stage <= kStageBufferD) channel.sourceStage = int32_t(stage);
    } else if (channel.kind == kChannelCubemap && id == kCubeAInputId) {
        channel.kind = kChannelCubeA;
        channel.sourceStage = kStageCubeA;
    }

    const std::optional<QString> src = input.GetNamedString(u"src");
    if (!src) return false;
    channel.fileName = FittingText(*src, kFileNameCapacity, refused);

    const std::optional<JsonObject> sampler = input.GetNamedObject(u"sampler");
    return sampler && ReadSampler(*sampler, channel);
}

bool ReadPassJson(const JsonObject& pass, ShaderStage& stage, bool* refused) {
    stage = ShaderStage{};
    const std::optional<QString> type = pass.GetNamedString(u"type");
    if (!type) return false;
    if (*type == u"sound") return true;  // no such stage here: an empty record for the discard slot
    if (*type == u"common") {
        stage.kind = kStageCommon;
    } else if (*type == u"image") {
        stage.kind = kStageImage;
    } else if (*type == u"buffer" || *type == u"cubemap") {
        const std::optional<QString> name = pass.GetNamedString(u"name");
        if (!name) return false;
        stage.kind = ValueOf(kStageNames, *name);
    }

    const std::optional<QString> code = pass.GetNamedString(u"code");
    if (!code) return false;
    const QString text = UntilZero(*code);
    stage.source = ToCodePage(text);
    if (CountLackingCharacters(text) > 0) stage.text = text;

    const std::optional<JsonArray> inputs = pass.GetNamedArray(u"inputs");
    return inputs && ReadInputs(*inputs, stage, refused);
}

bool ReadInfoJson(const QString& text, ShaderInfo& info, bool* refused) {
    info = ShaderInfo{};
    const std::optional<JsonObject> root = JsonObject::Parse(text);
    if (!root) return false;
    const std::optional<JsonObject> shader = root->GetNamedObject(u"Shader");
    if (!shader) return false;
    const std::optional<JsonObject> source = shader->GetNamedObject(u"info");
    return source && ReadInfo(*source, info, refused);
}

bool ReadProjectJson(const QString& text, ShaderProject& project, bool* refused) {
    project = ShaderProject{};
    if (refused) *refused = false;

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
    ReadInfo(*info, project.info, refused);

    const std::optional<JsonArray> passes = shader->GetNamedArray(u"renderpass");
    if (!passes) return false;
    for (qsizetype i = 0; i < passes->Size(); ++i) {
        const std::optional<JsonObject> pass = passes->GetObjectAt(i);
        if (!pass) return false;
        ShaderStage stage;
        const bool isRead = ReadPassJson(*pass, stage, refused);
        const uint32_t slot = stage.kind;
        // Of no stage here, as one of sound, or of one that an earlier pass was read for.
        if (!isRead || slot == kStageNone || project.stages[slot].kind != kStageNone) MarkRefused(refused);
        if (isRead) project.stages[slot] = std::move(stage);
    }
    return true;
}

}  // namespace pixelgrove
