#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

#include "platform/TextScan.h"
#include "shadertoy/JsonNames.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonParts.h"

namespace pixelgrove {
namespace {

// Whether "cubemap" means the Cube A stage is decided by the input's id.
constexpr JsonName kChannelNames[] = {
    {u"texture", kChannelTexture}, {u"buffer", kChannelBuffer},     {u"cubemap", kChannelCubemap},
    {u"volume", kChannelVolume},   {u"keyboard", kChannelKeyboard}, {u"webcam", kChannelWebcam},
    {u"audio", kChannelAudio},     {u"musicstream", kChannelAudio}, {u"music", kChannelAudio},
    {u"mic", kChannelAudio},
};

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

}  // namespace

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

}  // namespace pixelgrove
