#include "shadertoy/JsonText.h"

namespace pixelgrove {
namespace {

bool IsBlank(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

}  // namespace

std::optional<QByteArrayView> CheckJsonText(QByteArrayView text) {
    const qsizetype zero = text.indexOf('\0');
    if (zero >= 0) text.truncate(zero);

    qsizetype first = 0;
    while (first < text.size() && IsBlank(text[first]))
        ++first;
    if (first == text.size() || (text[first] != '{' && text[first] != '[')) return std::nullopt;
    if (text.startsWith("{\"Error\":")) return std::nullopt;

    qsizetype braces = 0;
    qsizetype brackets = 0;
    qsizetype end = 0;  // one past the last bracket that closed everything
    bool inString = false;
    for (qsizetype i = first; i < text.size(); ++i) {
        const char byte = text[i];
        if (byte == '\\') {
            ++i;  // the next byte stands for itself
            continue;
        }
        if (byte == '"') inString = !inString;
        if (inString) continue;
        if (byte == '{') ++braces;
        if (byte == '[') ++brackets;
        if (byte != '}' && byte != ']') continue;
        if (--(byte == '}' ? braces : brackets) < 0) return std::nullopt;
        if (braces == 0 && brackets == 0) end = i + 1;
    }
    if (inString || braces != 0 || brackets != 0) return std::nullopt;
    return text.first(end);
}

}  // namespace pixelgrove
