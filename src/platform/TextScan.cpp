#include "platform/TextScan.h"

#include <stdlib.h>

#include <algorithm>
#include <limits>

namespace pixelgrove {

namespace {

bool IsSpace(QChar unit) {
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}

// True when there was a minus.
bool SkipSign(QStringView text, qsizetype& position) {
    const bool negative = SkipChar(text, position, u'-');
    if (!negative) SkipChar(text, position, u'+');
    return negative;
}

bool SkipDigits(QStringView text, qsizetype& position) {
    const qsizetype first = position;
    while (position < text.size() && text[position] >= u'0' && text[position] <= u'9')
        ++position;
    return position > first;
}

}  // namespace

QString WithLineFeeds(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (const char16_t unit : {u'\r', u'\u2028', u'\u2029', u'\ufdd0', u'\ufdd1'})
        text.replace(QChar(unit), u'\n');
    return text;
}

void SkipSpace(QStringView text, qsizetype& position) {
    while (position < text.size() && IsSpace(text[position]))
        ++position;
}

QStringView ScanWord(QStringView text, qsizetype& position) {
    SkipSpace(text, position);
    const qsizetype first = position;
    while (position < text.size() && !IsSpace(text[position]))
        ++position;
    return text.sliced(first, position - first);
}

std::optional<int> ScanInt(QStringView text, qsizetype& position) {
    SkipSpace(text, position);
    const bool negative = SkipSign(text, position);

    // One beyond the largest int is the most that counts: it is what the smallest int needs.
    constexpr int64_t kMost = int64_t(std::numeric_limits<int>::max()) + 1;
    const qsizetype firstDigit = position;
    int64_t value = 0;
    while (position < text.size() && text[position] >= u'0' && text[position] <= u'9') {
        value = qMin(kMost, value * 10 + (text[position].unicode() - u'0'));
        ++position;
    }
    if (position == firstDigit) return std::nullopt;
    return static_cast<int>(negative ? -value : qMin(value, kMost - 1));
}

std::optional<float> ScanFloat(QStringView text, qsizetype& position) {
    SkipSpace(text, position);
    const qsizetype first = position;
    SkipSign(text, position);
    bool hasDigits = SkipDigits(text, position);
    if (SkipChar(text, position, u'.')) hasDigits |= SkipDigits(text, position);
    if (!hasDigits) return std::nullopt;

    qsizetype exponent = position;
    if (SkipChar(text, exponent, u'e') || SkipChar(text, exponent, u'E')) {
        SkipSign(text, exponent);
        if (SkipDigits(text, exponent)) position = exponent;
    }
    const QByteArray number = text.sliced(first, position - first).toLatin1();
    constexpr float kMost = std::numeric_limits<float>::max();
    return std::clamp(strtof_l(number.constData(), nullptr, PlainLocale()), -kMost, kMost);
}

locale_t PlainLocale() {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    return plain;
}

QString InQuotes(QStringView name) {
    constexpr qsizetype kMaxUnits = 300;
    QString text = name.left(kMaxUnits).toString();
    for (QChar& unit : text) {
        const QChar::Category category = unit.category();
        const bool breaksLine = category == QChar::Other_Control || category == QChar::Separator_Line ||
                                category == QChar::Separator_Paragraph;
        if (breaksLine) unit = u'?';
    }
    const QString rest = name.size() > kMaxUnits ? QStringLiteral("...") : QString();
    return u'"' + text + rest + u'"';
}

bool SkipChar(QStringView text, qsizetype& position, char16_t expected) {
    if (position >= text.size() || text[position] != expected) return false;
    ++position;
    return true;
}

}  // namespace pixelgrove
