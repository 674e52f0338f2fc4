#include "shadertoy/JsonText.h"

#include <cstring>

namespace pixelgrove {
namespace {

bool IsBlank(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

// Finds what can end or continue a string. Nearly all of a project lies inside strings, and the library's
// search takes many bytes at a time. Each byte is looked at once for each mark, as the next quote is kept.
class StringWalk {
  public:
    explicit StringWalk(QByteArrayView text) : text_(text) {}

    // The first quote or backslash at or behind position; the end of the text without one. Positions come in
    // rising order.
    qsizetype NextMark(qsizetype position) {
        if (quote_ < position) quote_ = Find('"', position, text_.size());
        return Find('\\', position, quote_);
    }

  private:
    qsizetype Find(char mark, qsizetype from, qsizetype end) const {
        if (from >= end) return end;
        const void* found = std::memchr(text_.data() + from, mark, size_t(end - from));
        return found ? static_cast<const char*>(found) - text_.data() : end;
    }

    QByteArrayView text_;
    qsizetype quote_ = -1;
};

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
    StringWalk strings(text);
    for (qsizetype i = first; i < text.size(); ++i) {
        if (inString) i = strings.NextMark(i);
        if (i == text.size()) break;
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
