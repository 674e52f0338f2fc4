// JsonObject and JsonArray: the few document operations that the project format needs, with look-ups that
// fail instead of falling back to a default value.
//
// Values, cheap to copy. A copy that was handed out does not follow later changes. Any thread, one object
// by one thread at a time.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <optional>

namespace pixelgrove {

class JsonArray;

// Texts with more code units are refused unread.
constexpr qsizetype kMaxJsonUnits = qsizetype(64) << 20;

class JsonObject {
  public:
    JsonObject() = default;

    // The object that the whole text holds. Nothing for malformed text, another top-level value, nesting
    // deeper than 1024, or more than kMaxJsonUnits. Every UTF-16 code unit of a string arrives unchanged,
    // half a surrogate pair too, written out or as an escape.
    static std::optional<JsonObject> Parse(QStringView text);

    // Each of these gives nothing when the key is absent or its value has another type.
    std::optional<JsonObject> GetNamedObject(QStringView key) const;
    std::optional<JsonArray> GetNamedArray(QStringView key) const;
    std::optional<QString> GetNamedString(QStringView key) const;
    std::optional<double> GetNamedNumber(QStringView key) const;  // always finite
    std::optional<bool> GetNamedBool(QStringView key) const;

    bool HasKey(QStringView key) const;

    // Sets or replaces a key. A number that isn't finite is written as null.
    void SetNamedValue(const QString& key, const JsonObject& value);
    void SetNamedValue(const QString& key, const JsonArray& value);
    void SetNamedValue(const QString& key, const QString& value);
    void SetNamedValue(const QString& key, double value);
    void SetNamedValue(const QString& key, bool value) = delete;  // the format has no booleans

    // Compact text, keys in alphabetical order.
    QString Stringify() const;

  private:
    friend class JsonArray;
    explicit JsonObject(const QJsonObject& object) : object_(object) {}
    QJsonObject object_;
};

class JsonArray {
  public:
    JsonArray() = default;

    // The array that the whole text holds, as JsonObject::Parse.
    static std::optional<JsonArray> Parse(QStringView text);

    void Append(const JsonObject& value);
    void Append(const QString& value);

    qsizetype Size() const;

    // Nothing for an index outside 0..Size()-1 or an element of another type.
    std::optional<JsonObject> GetObjectAt(qsizetype index) const;
    std::optional<QString> GetStringAt(qsizetype index) const;

  private:
    friend class JsonObject;
    explicit JsonArray(const QJsonArray& array) : array_(array) {}
    QJsonArray array_;
};

}  // namespace pixelgrove
