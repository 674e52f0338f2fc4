#include "shadertoy/JsonObject.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <new>

namespace pixelgrove {
namespace {

// The parser takes UTF-8, which has no form for half a surrogate pair: such a unit goes in as an escape.
// Nothing when one follows a backslash, since no escape has that form.
std::optional<QByteArray> ToParserText(QStringView text) {
    if (text.isValidUtf16()) return text.toUtf8();

    QString escaped;
    escaped.reserve(text.size() + 64);
    bool afterBackslash = false;  // the next unit belongs to an escape
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text[i];
        const bool isPair = unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (isPair) {
            escaped += unit;
            escaped += text[++i];
        } else if (unit.isSurrogate()) {
            if (afterBackslash) return std::nullopt;
            escaped += QStringLiteral("\\u");
            escaped += QString::number(uint(unit.unicode()), 16);
        } else {
            escaped += unit;
        }
        afterBackslash = !afterBackslash && unit == u'\\';
    }
    return escaped.toUtf8();
}

bool StartsWith(char16_t bracket, QStringView text) {
    for (const QChar unit : text) {
        if (unit == bracket) return true;
        if (unit != u' ' && unit != u'\t' && unit != u'\r' && unit != u'\n') return false;
    }
    return false;
}

// Null unless the text, which begins with the bracket, is a document.
QJsonDocument ParseDocument(char16_t bracket, QStringView text) {
    // Asked first because it refuses most junk without converting it.
    if (text.size() > kMaxJsonUnits || !StartsWith(bracket, text)) return {};
    try {
        const std::optional<QByteArray> bytes = ToParserText(text);
        return bytes ? QJsonDocument::fromJson(*bytes) : QJsonDocument();
    } catch (const std::bad_alloc&) {
        return {};
    }
}

}  // namespace

std::optional<JsonObject> JsonObject::Parse(QStringView text) {
    const QJsonDocument document = ParseDocument(u'{', text);
    if (!document.isObject()) return std::nullopt;
    return JsonObject(document.object());
}

std::optional<JsonObject> JsonObject::GetNamedObject(QStringView key) const {
    const QJsonValue value = object_.value(key);
    if (!value.isObject()) return std::nullopt;
    return JsonObject(value.toObject());
}

std::optional<JsonArray> JsonObject::GetNamedArray(QStringView key) const {
    const QJsonValue value = object_.value(key);
    if (!value.isArray()) return std::nullopt;
    return JsonArray(value.toArray());
}

std::optional<QString> JsonObject::GetNamedString(QStringView key) const {
    const QJsonValue value = object_.value(key);
    if (!value.isString()) return std::nullopt;
    return value.toString();
}

std::optional<double> JsonObject::GetNamedNumber(QStringView key) const {
    const QJsonValue value = object_.value(key);
    if (!value.isDouble()) return std::nullopt;
    return value.toDouble();
}

std::optional<bool> JsonObject::GetNamedBool(QStringView key) const {
    const QJsonValue value = object_.value(key);
    if (!value.isBool()) return std::nullopt;
    return value.toBool();
}

bool JsonObject::HasKey(QStringView key) const {
    return object_.contains(key);
}

void JsonObject::SetNamedValue(const QString& key, const JsonObject& value) {
    object_.insert(key, value.object_);
}

void JsonObject::SetNamedValue(const QString& key, const JsonArray& value) {
    object_.insert(key, value.array_);
}

void JsonObject::SetNamedValue(const QString& key, const QString& value) {
    object_.insert(key, value);
}

void JsonObject::SetNamedValue(const QString& key, double value) {
    object_.insert(key, value);
}

QString JsonObject::Stringify() const {
    return QString::fromUtf8(QJsonDocument(object_).toJson(QJsonDocument::Compact));
}

std::optional<JsonArray> JsonArray::Parse(QStringView text) {
    const QJsonDocument document = ParseDocument(u'[', text);
    if (!document.isArray()) return std::nullopt;
    return JsonArray(document.array());
}

void JsonArray::Append(const JsonObject& value) {
    array_.append(value.object_);
}

void JsonArray::Append(const QString& value) {
    array_.append(value);
}

qsizetype JsonArray::Size() const {
    return array_.size();
}

std::optional<JsonObject> JsonArray::GetObjectAt(qsizetype index) const {
    if (index < 0 || index >= array_.size()) return std::nullopt;
    const QJsonValue value = array_.at(index);
    if (!value.isObject()) return std::nullopt;
    return JsonObject(value.toObject());
}

std::optional<QString> JsonArray::GetStringAt(qsizetype index) const {
    if (index < 0 || index >= array_.size()) return std::nullopt;
    const QJsonValue value = array_.at(index);
    if (!value.isString()) return std::nullopt;
    return value.toString();
}

}  // namespace pixelgrove
