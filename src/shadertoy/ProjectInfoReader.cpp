#include <algorithm>
#include <optional>

#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonParts.h"

namespace pixelgrove {
namespace {

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

}  // namespace

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

bool ReadInfoJson(const QString& text, ShaderInfo& info, LoadWarnings* warnings) {
    info = ShaderInfo{};
    const std::optional<JsonObject> root = JsonObject::Parse(text);
    if (!root) return false;
    const std::optional<JsonObject> shader = root->GetNamedObject(u"Shader");
    if (!shader) return false;
    const std::optional<JsonObject> source = shader->GetNamedObject(u"info");
    return source && ReadInfo(*source, info, warnings);
}

}  // namespace pixelgrove
