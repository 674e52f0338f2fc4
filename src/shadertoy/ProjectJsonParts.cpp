#include "shadertoy/ProjectJsonParts.h"

#include "platform/CodePage.h"

namespace pixelgrove {

void Warn(LoadWarnings* warnings, const QString& sentence) {
    if (warnings) warnings->Add(sentence);
}

QString UntilZero(const QString& text) {
    const qsizetype zero = text.indexOf(QChar(u'\0'));
    return zero < 0 ? text : text.left(zero);
}

QString FittingText(const QString& text, qsizetype capacity, const QString& what, LoadWarnings* warnings) {
    QString result = UntilZero(text);
    if (result.size() < capacity) return result;
    Warn(warnings, QStringLiteral("%1 is too long (%2 characters, %3 fit) and was left out.")
                       .arg(what)
                       .arg(result.size())
                       .arg(capacity - 1));
    return {};
}

QString WithEscapes(const QString& json) {
    QString text;
    text.reserve(json.size());
    for (const QChar unit : json) {
        if (unit.unicode() >= 0x80 && CountLackingCharacters(QStringView(&unit, 1)) > 0) {
            text += QStringLiteral("\\u%1").arg(uint(unit.unicode()), 4, 16, QChar(u'0'));
        } else {
            text += unit;
        }
    }
    return text;
}

std::optional<int64_t> Truncated(double number) {
    // The largest double below 2^63 converts; 2^63 itself would not.
    constexpr double kLimit = 9223372036854775808.0;
    if (!(number >= -kLimit && number < kLimit)) return std::nullopt;
    return int64_t(number);
}

}  // namespace pixelgrove
