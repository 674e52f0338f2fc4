#include "controls/AnnotationLines.h"

#include <algorithm>

#include "platform/TextScan.h"

namespace pixelgrove {

KeywordLines::KeywordLines(QStringView text, std::span<const uint8_t> commentMap, QStringView keyword)
    : text_(text.first(std::min(text.size(), qsizetype(commentMap.size())))),
      commentMap_(commentMap),
      keyword_(keyword) {
    const qsizetype nul = text_.indexOf(QChar(0));
    if (nul >= 0) text_ = text_.first(nul);
}

std::optional<KeywordLine> KeywordLines::Next() {
    const char16_t* const units = text_.utf16();
    const char16_t initial = keyword_[0].unicode();
    for (; position_ + keyword_.size() <= text_.size(); ++position_) {
        // The bit that tells small letters is set in '#' too.
        if ((units[position_] | 0x20) != initial) continue;
        if (text_.sliced(position_, keyword_.size()).compare(keyword_, Qt::CaseInsensitive) != 0) continue;

        if (commentMap_[size_t(position_)] != 0) {
            while (position_ + 1 < text_.size() && commentMap_[size_t(position_) + 1] != 0)
                ++position_;
            continue;
        }
        qsizetype end = position_;
        while (end < text_.size() && units[end] != u'\n' && units[end] != u'\r')
            ++end;
        const KeywordLine line{position_, text_.sliced(position_, end - position_), text_.sliced(position_)};
        position_ = end + 1;
        return line;
    }
    return std::nullopt;
}

std::optional<std::array<QStringView, 3>> FirstWords(QStringView text) {
    std::array<QStringView, 3> words;
    qsizetype position = 0;
    for (QStringView& word : words) {
        word = ScanWord(text, position);
        if (word.isEmpty()) return std::nullopt;
    }
    return words;
}

QString Without(QStringView text, QStringView set) {
    QString rest;
    rest.reserve(text.size());
    for (const QChar unit : text) {
        if (!set.contains(unit)) rest.append(unit);
    }
    return rest;
}

QStringView WithoutLeading(QStringView text, QStringView set) {
    qsizetype first = 0;
    while (first < text.size() && set.contains(text[first]))
        ++first;
    return text.sliced(first);
}

}  // namespace pixelgrove
