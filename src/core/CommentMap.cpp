#include "core/CommentMap.h"

namespace pixelgrove {

std::vector<uint8_t> BuildCommentMap(QStringView text) {
    enum : uint8_t { kCode = 0, kLine = 1, kBlock = 2 };
    std::vector<uint8_t> map(size_t(text.size()), kCode);
    uint8_t state = kCode;
    // A NUL ends the text; what lies behind it stays code.
    const qsizetype nul = text.indexOf(QChar(0));
    const qsizetype length = nul < 0 ? text.size() : nul;
    for (qsizetype i = 0; i < length; ++i) {
        const char16_t unit = text[i].unicode();
        const char16_t next = i + 1 < length ? text[i + 1].unicode() : u'\0';
        if (state == kCode && unit == u'/' && next == u'/') {
            state = kLine;
        } else if (state == kCode && unit == u'/' && next == u'*') {
            // Both characters at once, so that the star can't also close: "/*/" stays open.
            map[size_t(i++)] = kBlock;
            state = kBlock;
        } else if (state == kBlock && unit == u'*' && next == u'/') {
            map[size_t(i++)] = kBlock;
            map[size_t(i)] = kBlock;
            state = kCode;
            continue;
        }
        map[size_t(i)] = state;
        if (state == kLine && (unit == u'\n' || unit == u'\r')) state = kCode;
    }
    return map;
}

}  // namespace pixelgrove
