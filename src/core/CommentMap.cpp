#include "core/CommentMap.h"

#include <algorithm>

namespace pixelgrove {

namespace {

constexpr uint8_t kCode = 0;
constexpr uint8_t kLine = 1;
constexpr uint8_t kBlock = 2;

qsizetype LineCommentEnd(QStringView text, qsizetype start) {
    const auto isEnd = [](QChar unit) { return unit == u'\n' || unit == u'\r'; };
    const auto end = std::find_if(text.begin() + start, text.end(), isEnd);
    return end == text.end() ? text.size() : end - text.begin() + 1;
}

qsizetype BlockCommentEnd(QStringView text, qsizetype start) {
    // Behind the opener, whose star can't also close: "/*/" stays open.
    const qsizetype end = text.indexOf(u"*/", start + 2);
    return end < 0 ? text.size() : end + 2;
}

}  // namespace

std::vector<uint8_t> BuildCommentMap(QStringView text) {
    std::vector<uint8_t> map(size_t(text.size()), kCode);
    // A NUL ends the text; what lies behind it stays code.
    const qsizetype nul = text.indexOf(QChar(0));
    if (nul >= 0) text = text.first(nul);
    qsizetype i = 0;
    while ((i = text.indexOf(u'/', i)) >= 0 && i + 1 < text.size()) {
        const QChar next = text[i + 1];
        if (next != u'/' && next != u'*') {
            ++i;
            continue;
        }
        const bool isLine = next == u'/';
        const qsizetype end = isLine ? LineCommentEnd(text, i) : BlockCommentEnd(text, i);
        std::fill(map.begin() + i, map.begin() + end, isLine ? kLine : kBlock);
        i = end;
    }
    return map;
}

}  // namespace pixelgrove
