#include "ui/text/Links.h"

#include <algorithm>

namespace pixelgrove {

namespace {

constexpr qsizetype kReach = 2048;

bool EndsLink(QChar unit) {
    return unit.isSpace() || unit.unicode() < 0x20 || QStringView(u"\"<>`{}|\\^").contains(unit);
}

bool IsTrimmed(QStringView link) {
    const QChar last = link.back();
    if (last == u')') return link.count(u'(') < link.count(u')');
    if (last == u']') return link.count(u'[') < link.count(u']');
    return QStringView(u".,;:!?'*").contains(last);
}

}  // namespace

std::optional<LinkSpan> FindLinkAt(QStringView line, qsizetype column) {
    if (column < 0 || column >= line.size()) return std::nullopt;
    const qsizetype from = std::max<qsizetype>(0, column - kReach);
    const qsizetype to = std::min(line.size(), column + kReach);
    qsizetype start = column;
    while (start > from && !EndsLink(line[start - 1]))
        --start;
    qsizetype end = column;
    while (end < to && !EndsLink(line[end]))
        ++end;
    // The address may stand behind an opening bracket or an equals sign.
    const QStringView run = line.sliced(start, end - start);
    qsizetype first = -1;
    for (const QStringView scheme : {QStringView(u"http://"), QStringView(u"https://")}) {
        const qsizetype at = run.indexOf(scheme, 0, Qt::CaseInsensitive);
        if (at < 0 || at + scheme.size() >= run.size()) continue;
        if (at > 0 && run[at - 1].isLetterOrNumber()) continue;
        if (first < 0 || at < first) first = at;
    }
    if (first < 0) return std::nullopt;
    QStringView link = run.sliced(first);
    while (!link.isEmpty() && IsTrimmed(link))
        link.chop(1);
    start += first;
    if (column < start || column >= start + link.size()) return std::nullopt;
    return LinkSpan{start, link.size()};
}

}  // namespace pixelgrove
