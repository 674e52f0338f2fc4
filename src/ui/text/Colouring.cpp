#include "ui/text/Colouring.h"

#include <algorithm>

#include "ui/text/GlslWords.h"

namespace pixelgrove {

Colouring ColourText(QStringView text, std::span<const uint8_t> commentMap, qsizetype start, qsizetype end) {
    Colouring result;
    // A map that is too short says nothing of the rest.
    const qsizetype length = std::min(text.size(), qsizetype(commentMap.size()));
    if (end < 0 || end > length) end = length;
    qsizetype i = std::max<qsizetype>(start, 0);
    while (i < end) {
        if (commentMap[size_t(i)] != 0) {
            qsizetype behind = i + 1;
            while (behind < length && commentMap[size_t(behind)] != 0)
                ++behind;
            result.spans.push_back({i, behind, word_colours::kComment});
            i = behind;
            continue;
        }
        if (!IsWordCharacter(text[i])) {
            ++i;
            continue;
        }
        qsizetype behind = i + 1;
        while (behind < length && IsWordCharacter(text[behind]))
            ++behind;
        const QStringView word = text.sliced(i, behind - i);
        if (const std::optional<uint32_t> colour = WordColour(word)) {
            result.spans.push_back({i, behind, *colour});
            if (word == u"uniform" || word == u"#define") {
                if (result.changedStart < 0) result.changedStart = i;
                result.changedEnd = behind;
            }
        }
        i = behind;
    }
    return result;
}

}  // namespace pixelgrove
