#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <iterator>
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

void Warn(LoadWarnings* warnings, const QString& sentence) {
    if (warnings) warnings->Add(sentence);
}

// All texts of the records are zero-terminated in meaning.
QString UntilZero(const QString& text) {
    const qsizetype zero = text.indexOf(QChar(u'\0'));
    return zero < 0 ? text : text.left(zero);
}

// Empty, with a warning, when it doesn't fit; what says which text it is. capacity counts the terminating
// zero.
QString FittingText(const QString& text, qsizetype capacity, const QString& what, LoadWarnings* warnings) {
    QString result = UntilZero(text);
    if (result.size() < capacity) return result;
    Warn(warnings, QStringLiteral("%1 is too long (%2 characters, %3 fit) and was left out.")
                       .arg(what)
                       .arg(result.size())
                       .arg(capacity - 1));
    return {};
}

std::optional<int64_t> Truncated(double number) {
    // The largest double below 2^63 converts; 2^63 itself would not.
    constexpr double kLimit = 9223372036854775808.0;
    if (!(number >= -kLimit && number < kLimit)) return std::nullopt;
    return int64_t(number);
}

bool ReadCount(const JsonObject& object, QStringView key, uint32_t& field, LoadWarnings* warnings) {
    const std::optional<double> number = object.GetNamedNumber(key);
    if (!number) return false;
    const std::optional<int64_t> whole = Truncated(*number);
    if (!whole)
        Warn(warnings,
             QStringLiteral("The number \"%1\" of the project is out of range and was left out.").arg(key));
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

// False when an element is no text.
bool ReadTags(const JsonArray& array, ShaderInfo& info, LoadWarnings* warnings) {
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
            Warn(warnings, QStringLiteral("The tags of the project are too long (%1 characters fit together) "
                                          "and were left out.")
                               .arg(kCapacity - 1));
        }
    }
    return true;
}

// All but the tags, which come last.
bool ReadInfoFields(const JsonObject& source, ShaderInfo& info, LoadWarnings* warnings) {
    std::optional<QString> id, date, name, username, description;
    // The order decides which numbers a missing key leaves behind.
    if (!(id = source.GetNamedString(u"id"))) return false;
    if (!(date = source.GetNamedString(u"date"))) return false;
    if (!ReadCount(source, u"viewed", info.viewed, warnings)) return false;
    if (!(name = source.GetNamedString(u"name"))) return false;
    if (!(username = source.GetNamedString(u"username"))) return false;
    if (!(description = source.GetNamedString(u"description"))) return false;
    if (!ReadCount(source, u"likes", info.likes, warnings)) return false;
    if (!ReadCount(source, u"published", info.published, warnings)) return false;
    if (!ReadCount(source, u"flags", info.flags, warnings)) return false;
    if (!ReadCount(source, u"usePreview", info.usePreview, warnings)) return false;
    if (!ReadCount(source, u"hasliked", info.hasliked, warnings)) return false;

    const auto fitting = [warnings](const QString& text, qsizetype capacity, const char* what) {
        return FittingText(text, capacity, QStringLiteral("The %1 of the project").arg(QLatin1String(what)),
                           warnings);
    };
    info.id = fitting(*id, 20, "id");
    info.date = fitting(*date, 32, "date");
    info.name = fitting(*name, 128, "name");
    info.username = fitting(*username, 64, "user name");
    info.description = fitting(*description, 260, "description");
    return true;
}

bool HasInfoText(const JsonObject& source) {
    constexpr QStringView kKeys[] = {u"id", u"date", u"name", u"username", u"description"};
    return std::ranges::any_of(
        kKeys, [&](QStringView key) { return !source.GetNamedString(key).value_or(QString()).isEmpty(); });
}

bool ReadInfo(const JsonObject& source, ShaderInfo& info, LoadWarnings* warnings) {
    info = ShaderInfo{};
    if (!ReadInfoFields(source, info, warnings)) {
        if (HasInfoText(source))
            Warn(warnings,
                 QStringLiteral("The info of the project has gaps; its name and other texts were left "
                                "out."));
        return false;
    }
    const std::optional<JsonArray> tags = source.GetNamedArray(u"tags");
    if (tags && ReadTags(*tags, info, warnings)) return true;
    if (source.HasKey(u"tags"))
        Warn(warnings, QStringLiteral("The tags of the project are damaged, and some were left out."));
    return false;
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

// True when reading, which ends at the first of the keys that has no value of its kind, left something
// unread.
template <size_t N, typename HasValue>
bool IsCutShort(const JsonObject& object, const QStringView (&keys)[N], HasValue hasValue) {
    const QStringView* failed = std::ranges::find_if_not(keys, hasValue);
    return std::any_of(failed, std::end(keys), [&](QStringView key) { return object.HasKey(key); });
}

bool IsInputCutShort(const JsonObject& input) {
    constexpr QStringView kKeys[] = {u"channel", u"id", u"src", u"sampler"};
    constexpr QStringView kSamplerKeys[] = {u"filter", u"wrap", u"vflip", u"srgb", u"internal"};
    const std::optional<JsonObject> sampler = input.GetNamedObject(u"sampler");
    if (IsCutShort(input, kKeys, [&](QStringView key) {
            if (key == u"sampler") return sampler.has_value();
            return key == u"src" ? input.GetNamedString(key).has_value()
                                 : input.GetNamedNumber(key).has_value();
        }))
        return true;
    return sampler && IsCutShort(*sampler, kSamplerKeys,
                                 [&](QStringView key) { return sampler->GetNamedString(key).has_value(); });
}

// Says what of an input did not get into the channel that was read from it.
void WarnOfInput(const JsonObject& input, const ChannelInput& channel, const QString& stage,
                 LoadWarnings& warnings) {
    const QString kind = input.GetNamedString(u"ctype").value_or(QString());
    if (kind.isEmpty()) {
        warnings.Add(QStringLiteral("%1: an input without a kind was left out.").arg(stage));
        return;
    }
    if (channel.channelIndex >= uint32_t(kChannelCount)) {
        warnings.Add(QStringLiteral("%1: an input for channel %2 was left out; there are channels 0 to 3.")
                         .arg(stage)
                         .arg(input.GetNamedNumber(u"channel").value_or(0)));
        return;
    }
    const QString place = QStringLiteral("channel %1").arg(channel.channelIndex);
    if (channel.kind == kChannelUnused) {
        warnings.Add(QStringLiteral("%1: the kind %3 of %2 is unknown, and its input was left out.")
                         .arg(stage, place, InQuotes(kind)));
        return;
    }
    const QString file = input.GetNamedString(u"src").value_or(QString());
    FittingText(file, kFileNameCapacity, QStringLiteral("%1: the file name of %2").arg(stage, place),
                &warnings);
    if (IsInputCutShort(input))
        warnings.Add(
            QStringLiteral("%1: the input of %2 is damaged and was read in part.").arg(stage, place));
}

// Reads the inputs of a pass into its channels; false when an element is no object.
bool ReadInputs(const JsonArray& inputs, ShaderStage& stage, LoadWarnings* warnings) {
    std::array<bool, kChannelCount> isTaken{};
    for (qsizetype i = 0; i < inputs.Size(); ++i) {
        const std::optional<JsonObject> input = inputs.GetObjectAt(i);
        if (!input) return false;
        ChannelInput channel;
        // An input that can be read in part only still takes its place, channel 0 if it has no other.
        ReadInputJson(*input, channel);
        if (warnings) WarnOfInput(*input, channel, StageName(stage.kind), *warnings);
        if (channel.channelIndex >= uint32_t(kChannelCount)) continue;
        const uint32_t index = channel.channelIndex;
        if (std::exchange(isTaken[index], true))
            Warn(warnings, QStringLiteral("%1: channel %2 has more than one input; the last one counts.")
                               .arg(StageName(stage.kind))
                               .arg(index));
        stage.channels[index] = std::move(channel);
    }
    return true;
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
    const uint32_t kind = ValueOf(kStageNames, *name);
    if (kind == kStageNone)
        Warn(warnings,
             QStringLiteral("The pass %1 was left out; no stage has that name.").arg(InQuotes(*name)));
    return kind;
}

}  // namespace

bool ReadInputJson(const JsonObject& input, ChannelInput& channel) {
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
    channel.fileName = FittingText(*src, kFileNameCapacity, {}, nullptr);

    const std::optional<JsonObject> sampler = input.GetNamedObject(u"sampler");
    return sampler && ReadSampler(*sampler, channel);
}

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

bool ReadInfoJson(const QString& text, ShaderInfo& info, LoadWarnings* warnings) {
    info = ShaderInfo{};
    const std::optional<JsonObject> root = JsonObject::Parse(text);
    if (!root) return false;
    const std::optional<JsonObject> shader = root->GetNamedObject(u"Shader");
    if (!shader) return false;
    const std::optional<JsonObject> source = shader->GetNamedObject(u"info");
    return source && ReadInfo(*source, info, warnings);
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
