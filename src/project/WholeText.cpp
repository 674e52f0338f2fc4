#include "project/WholeText.h"

namespace pixelgrove {

namespace {

// What JSON's brackets and strings leave open.
bool IsJsonClosed(const QByteArray& text) {
    int depth = 0;
    bool isString = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (isString && c == '\\') {
            ++i;
        } else if (c == '"') {
            isString = !isString;
        } else if (!isString) {
            depth += c == '{' || c == '[';
            depth -= c == '}' || c == ']';
        }
    }
    return depth == 0 && !isString;
}

bool IsGlslClosed(const QByteArray& text) {
    int depth = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '/' && i + 1 < text.size() && (text[i + 1] == '/' || text[i + 1] == '*')) {
            const bool isLine = text[i + 1] == '/';
            const qsizetype end = isLine ? text.indexOf('\n', i) : text.indexOf("*/", i + 2);
            if (end < 0) return isLine && depth == 0;
            i = end + (isLine ? 0 : 1);
            continue;
        }
        depth += text[i] == '{';
        depth -= text[i] == '}';
    }
    return depth == 0;
}

}  // namespace

bool LooksWhole(const QByteArray& bytes) {
    const QByteArray text = bytes.trimmed();
    if (text.isEmpty()) return false;
    const bool isJson = text.startsWith('{') || text.startsWith('[');
    return isJson ? IsJsonClosed(text) : IsGlslClosed(text);
}

}  // namespace pixelgrove
