#include "platform/TextScan.h"

#include <limits>

namespace pixelgrove {

QString WithLineFeeds(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (const char16_t unit : {u'\r', u'\u2028', u'\u2029', u'\ufdd0', u'\ufdd1'})
        text.replace(QChar(unit), u'\n');
    return text;
}

void SkipSpace(QStringView text, qsizetype& position) {
    while (position < text.size()) {
        const char16_t c = text[position].unicode();
        if (c != u' ' && (c < u'\t' || c > u'\r')) return;
        ++position;
    }
}

std::optional<int> ScanInt(QStringView text, qsizetype& position) {
    SkipSpace(text, position);
    const bool negative = position < text.size() && text[position] == u'-';
    if (negative || (position < text.size() && text[position] == u'+')) ++position;

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
