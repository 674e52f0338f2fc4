#include "ui/text/Indentation.h"

#include <algorithm>

namespace pixelgrove {

namespace {

const QString kFourSpaces = QStringLiteral("    ");

void RemoveOneLevel(QString& indent) {
    if (const qsizetype tab = indent.indexOf(u'\t'); tab >= 0) {
        indent.remove(tab, 1);
    } else if (const qsizetype spaces = indent.indexOf(kFourSpaces); spaces >= 0) {
        indent.remove(spaces, kFourSpaces.size());
    }
}

QString WithTabsExpanded(QStringView line) {
    QString expanded;
    expanded.reserve(line.size());
    for (const QChar unit : line) {
        if (unit == u'\t') {
            expanded.append(QString(kTabColumns - expanded.size() % kTabColumns, u' '));
        } else {
            expanded.append(unit);
        }
        if (expanded.size() > kMaxExpandedLine) return line.toString();
    }
    return expanded;
}

}  // namespace

qsizetype LeadingBlanks(QStringView line) {
    const auto* end = std::ranges::find_if(line, [](QChar unit) { return unit != u' ' && unit != u'\t'; });
    return end - line.begin();
}

QString IndentOfNextLine(QStringView line) {
    QString indent = line.first(LeadingBlanks(line)).toString();
    const qsizetype opening = line.indexOf(u'{');
    const qsizetype closing = line.indexOf(u'}');
    if (opening >= 0 && (closing < 0 || closing < opening)) indent.append(u'\t');
    if (closing >= 0 && (opening < 0 || opening > closing)) RemoveOneLevel(indent);
    return indent;
}

bool IsOnlyBlanks(QStringView beforeCaret) {
    return !beforeCaret.isEmpty() &&
           std::ranges::all_of(beforeCaret, [](QChar unit) { return unit.isSpace(); });
}

QString UnindentedLine(QStringView line) {
    QString result = WithTabsExpanded(line);
    const auto* begin = result.cbegin();
    const auto* end = std::find_if(begin, begin + std::min(qsizetype(kTabColumns), result.size()),
                                   [](QChar unit) { return unit != u' '; });
    result.remove(0, end - begin);
    return result;
}

std::vector<int> LineDepths(QStringView text, std::span<const uint8_t> commentMap) {
    std::vector<int> depths;
    const qsizetype length = std::min(text.size(), qsizetype(commentMap.size()));
    int depth = 0;
    bool opens = false;
    qsizetype lineStart = 0;
    for (qsizetype i = 0; i < length; ++i) {
        const char16_t unit = text[i].unicode();
        const uint8_t comment = commentMap[size_t(i)];
        if (unit == u'\r' || unit == u'\n') {
            const bool isDirective = lineStart > 0 && text[lineStart] == u'#';
            if (comment == 2 || isDirective) {
                depths.push_back(kLeaveLine);
            } else {
                depths.push_back(std::max(0, opens ? depth - 1 : depth));
            }
            if (unit == u'\r' && i + 1 < length && text[i + 1] == u'\n') ++i;
            lineStart = i + 1;
            opens = false;
        } else if (comment == 0 && unit == u'{') {
            ++depth;
            opens = true;
        } else if (comment == 0 && unit == u'}') {
            --depth;
            opens = false;
        }
    }
    depths.push_back(depth);
    return depths;
}

}  // namespace pixelgrove
