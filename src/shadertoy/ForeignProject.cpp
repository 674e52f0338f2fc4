#include "shadertoy/ForeignProject.h"

#include <cmath>
#include <optional>

#include "core/Stages.h"
#include "platform/TextScan.h"
#include "shadertoy/JsonNames.h"
#include "shadertoy/ProjectJsonParts.h"

namespace pixelgrove {
namespace {

// What the pages call the buffers, as an input and as the output of the pass that draws it.
constexpr JsonName kStageIds[] = {
    {u"4dXGR8", kStageBufferA}, {u"XsXGR8", kStageBufferB}, {u"4sXGR8", kStageBufferC},
    {u"XdfGR8", kStageBufferD}, {u"4dX3Rr", kStageCubeA},   {u"4dfGRr", kStageImage},
};
constexpr QStringView kSoundOutputId = u"XsfGRr";

// A project has eight stages of four channels each; what is beyond these is nobody's work, and not converted.
constexpr qsizetype kMaxPasses = 100;
constexpr qsizetype kMaxInputs = 100;
constexpr qsizetype kMaxTags = 1000;

// How many elements of the list are taken, with a warning when that isn't all.
qsizetype CountTaken(const JsonArray& list, qsizetype most, const char* what, LoadWarnings& warnings) {
    if (list.Size() <= most) return list.Size();
    warnings.Add(QStringLiteral("Of %1 %2 those behind the first %3 were left out.")
                     .arg(list.Size())
                     .arg(QLatin1String(what))
                     .arg(most));
    return most;
}

int InputIdOf(uint32_t stage) {
    if (stage >= kStageBufferA && stage <= kStageBufferD) return int(stage) + kBufferInputOffset;
    return stage == kStageCubeA ? kCubeAInputId : kOtherInputId;
}

std::optional<double> WholeNumber(const QString& text) {
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number)) return std::nullopt;
    return number;
}

std::optional<double> NumberOf(const JsonObject& object, QStringView key) {
    if (const std::optional<double> number = object.GetNamedNumber(key)) return number;
    const std::optional<QString> text = object.GetNamedString(key);
    return text ? WholeNumber(*text) : std::nullopt;
}

std::optional<QString> TextOf(const JsonObject& object, QStringView key) {
    if (std::optional<QString> text = object.GetNamedString(key)) return text;
    if (const std::optional<double> number = object.GetNamedNumber(key))
        return QString::number(*number, 'g', 15);
    if (const std::optional<bool> flag = object.GetNamedBool(key))
        return *flag ? QStringLiteral("true") : QStringLiteral("false");
    return std::nullopt;
}

// What the reader takes for a version; it refuses a project without one.
QString VersionOf(const JsonObject& shader) {
    const QString text = TextOf(shader, u"ver").value_or(QString());
    bool isNumber = false;
    const float version = text.toFloat(&isNumber);
    return isNumber && (version == 0.0f || std::isnormal(version)) ? text : QStringLiteral("0.1");
}

// The id of the pass's first output: a text of the pages, or a number of the service's form. Empty without
// one.
QString OutputIdOf(const JsonObject& pass) {
    const std::optional<JsonArray> outputs = pass.GetNamedArray(u"outputs");
    const std::optional<JsonObject> output = outputs ? outputs->GetObjectAt(0) : std::nullopt;
    return output ? TextOf(*output, u"id").value_or(QString()) : QString();
}

// The stage that an id means; kStageNone for other ids.
uint32_t StageOfId(const QString& id) {
    if (const uint32_t stage = ValueOf(kStageIds, id)) return stage;
    const double number = WholeNumber(id).value_or(0.0);
    for (uint32_t stage = kStageBufferA; stage <= kStageCubeA; ++stage)
        if (number == double(InputIdOf(stage))) return stage;
    return kStageNone;
}

// What an input misses of the service's form, as the pages write it.
bool IsForeignInput(const JsonObject& input) {
    if (input.GetNamedString(u"id")) return true;
    if (!input.GetNamedString(u"ctype") && input.GetNamedString(u"type")) return true;
    return !input.GetNamedString(u"src") && input.GetNamedString(u"filepath");
}

// The stage that names a pass of that type: its output, where its own name means no stage. kStageNone where
// the name stays.
uint32_t StageToName(const JsonObject& pass, const QString& type, const QString& outputId) {
    if (type != u"buffer" && type != u"cubemap") return kStageNone;
    if (ValueOf(kPassNames, pass.GetNamedString(u"name").value_or(QString())) != kStageNone)
        return kStageNone;
    const uint32_t drawn = StageOfId(outputId);
    return drawn == kStageImage ? kStageNone : drawn;
}

JsonObject ConvertSampler(const JsonObject& sampler) {
    JsonObject converted;
    const auto take = [&](const char16_t* key, const char16_t* otherwise) {
        converted.SetNamedValue(QString::fromUtf16(key),
                                TextOf(sampler, key).value_or(QString::fromUtf16(otherwise)));
    };
    take(u"filter", u"linear");
    take(u"wrap", u"clamp");
    take(u"vflip", u"false");
    take(u"srgb", u"false");
    if (TextOf(sampler, u"internal") == QStringLiteral("byte")) take(u"internal", u"byte");
    return converted;
}

JsonObject ConvertInput(const JsonObject& input, const QString& stage, LoadWarnings& warnings) {
    const QString kind = TextOf(input, u"ctype").value_or(TextOf(input, u"type").value_or(QString()));
    // As the reader has it, an input without a place is in channel 0.
    const double channel = NumberOf(input, u"channel").value_or(0.0);
    const QString id = TextOf(input, u"id").value_or(QString());
    const uint32_t source = StageOfId(id);
    const bool isBuffer = source >= kStageBufferA && source <= kStageBufferD;
    if (kind == u"buffer" && !isBuffer)
        warnings.Add(QStringLiteral("%1: channel %2 reads %3, which is no buffer that is known.")
                         .arg(stage)
                         .arg(channel)
                         .arg(InQuotes(id)));

    JsonObject converted;
    if (!kind.isEmpty()) converted.SetNamedValue(QStringLiteral("ctype"), kind);
    converted.SetNamedValue(QStringLiteral("channel"), channel);
    converted.SetNamedValue(QStringLiteral("id"), double(InputIdOf(source)));
    converted.SetNamedValue(QStringLiteral("src"),
                            TextOf(input, u"src").value_or(TextOf(input, u"filepath").value_or(QString())));
    if (const std::optional<JsonObject> sampler = input.GetNamedObject(u"sampler"))
        converted.SetNamedValue(QStringLiteral("sampler"), ConvertSampler(*sampler));
    converted.SetNamedValue(QStringLiteral("published"), 1.0);
    return converted;
}

// What kind of pass it is, by its output where it doesn't say.
QString TypeOf(const JsonObject& pass, const QString& outputId) {
    if (std::optional<QString> type = pass.GetNamedString(u"type")) return *type;
    if (outputId == kSoundOutputId) return QStringLiteral("sound");
    switch (StageOfId(outputId)) {
        case kStageNone:
            return {};
        case kStageImage:
            return QStringLiteral("image");
        case kStageCubeA:
            return QStringLiteral("cubemap");
        default:
            return QStringLiteral("buffer");
    }
}

JsonObject ConvertPass(const JsonObject& pass, LoadWarnings& warnings) {
    const QString outputId = OutputIdOf(pass);
    const QString type = TypeOf(pass, outputId);
    QString name = pass.GetNamedString(u"name").value_or(QString());
    if (const uint32_t stage = StageToName(pass, type, outputId)) name = StageName(stage);

    JsonArray inputs;
    if (const std::optional<JsonArray> given = pass.GetNamedArray(u"inputs"); given && type != u"sound") {
        const qsizetype count = CountTaken(*given, kMaxInputs, "inputs of a pass", warnings);
        for (qsizetype i = 0; i < count; ++i) {
            // The pages leave holes where a channel has nothing.
            const std::optional<JsonObject> input = given->GetObjectAt(i);
            if (input) inputs.Append(ConvertInput(*input, name.isEmpty() ? type : name, warnings));
        }
    }
    JsonObject output;
    output.SetNamedValue(QStringLiteral("id"), double(InputIdOf(StageOfId(outputId))));
    output.SetNamedValue(QStringLiteral("channel"), 0.0);
    JsonArray outputs;
    outputs.Append(output);

    JsonObject converted;
    converted.SetNamedValue(QStringLiteral("inputs"), inputs);
    converted.SetNamedValue(QStringLiteral("outputs"), outputs);
    // The reader tells of what has no code or type.
    if (const std::optional<QString> code = pass.GetNamedString(u"code"))
        converted.SetNamedValue(QStringLiteral("code"), *code);
    converted.SetNamedValue(QStringLiteral("name"), name);
    converted.SetNamedValue(QStringLiteral("description"), QString());
    if (!type.isEmpty()) converted.SetNamedValue(QStringLiteral("type"), type);
    return converted;
}

JsonObject ConvertInfo(const JsonObject& info, const QString& userName, LoadWarnings& warnings) {
    JsonObject converted;
    for (const QStringView key : {u"id", u"date", u"name", u"description"})
        converted.SetNamedValue(key.toString(), TextOf(info, key).value_or(QString()));
    converted.SetNamedValue(QStringLiteral("username"), TextOf(info, u"username").value_or(userName));
    for (const QStringView key : {u"viewed", u"likes", u"published", u"flags", u"usePreview", u"hasliked"})
        converted.SetNamedValue(key.toString(), NumberOf(info, key).value_or(0.0));
    JsonArray tags;
    if (const std::optional<JsonArray> given = info.GetNamedArray(u"tags")) {
        const qsizetype count = CountTaken(*given, kMaxTags, "tags", warnings);
        for (qsizetype i = 0; i < count; ++i)
            if (const std::optional<QString> tag = given->GetStringAt(i)) tags.Append(*tag);
    }
    converted.SetNamedValue(QStringLiteral("tags"), tags);
    return converted;
}

}  // namespace

bool HasForeignMarks(const JsonObject& shader) {
    const std::optional<JsonArray> passes = shader.GetNamedArray(u"renderpass");
    for (qsizetype i = 0; passes && i < passes->Size(); ++i) {
        const std::optional<JsonObject> pass = passes->GetObjectAt(i);
        if (!pass) continue;
        const QString outputId = OutputIdOf(*pass);
        if (outputId == kSoundOutputId || ValueOf(kStageIds, outputId) != kStageNone) return true;
        const std::optional<JsonArray> inputs = pass->GetNamedArray(u"inputs");
        for (qsizetype n = 0; inputs && n < inputs->Size(); ++n) {
            const std::optional<JsonObject> input = inputs->GetObjectAt(n);
            if (input && IsForeignInput(*input)) return true;
        }
    }
    return false;
}

JsonObject ToServiceForm(const JsonObject& shader, const QString& userName, LoadWarnings& warnings) {
    JsonArray passes;
    if (const std::optional<JsonArray> given = shader.GetNamedArray(u"renderpass")) {
        const qsizetype count = CountTaken(*given, kMaxPasses, "passes", warnings);
        for (qsizetype i = 0; i < count; ++i) {
            if (const std::optional<JsonObject> pass = given->GetObjectAt(i)) {
                passes.Append(ConvertPass(*pass, warnings));
            } else {
                warnings.Add(QStringLiteral("A pass that is no object was left out."));
            }
        }
    }
    JsonObject converted;
    converted.SetNamedValue(QStringLiteral("ver"), VersionOf(shader));
    converted.SetNamedValue(
        QStringLiteral("info"),
        ConvertInfo(shader.GetNamedObject(u"info").value_or(JsonObject()), userName, warnings));
    converted.SetNamedValue(QStringLiteral("renderpass"), passes);
    JsonObject root;
    root.SetNamedValue(QStringLiteral("Shader"), converted);
    return root;
}

}  // namespace pixelgrove
