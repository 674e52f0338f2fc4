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
    // The bit that tells small letters is set in '#' too.
    const auto isInitial = [initial = keyword_[0].unicode()](char16_t unit) {
        return (unit | 0x20) == initial;
    };
    const auto isLineEnd = [](char16_t unit) { return unit == u'\n' || unit == u'\r'; };
    const char16_t* const begin = text_.utf16();
    const char16_t* const end = begin + text_.size();
    while (position_ < text_.size()) {
        position_ = std::find_if(begin + position_, end, isInitial) - begin;
        const QStringView rest = text_.sliced(position_);
        if (!rest.startsWith(keyword_, Qt::CaseInsensitive)) {
            ++position_;
            continue;
        }
        if (commentMap_[size_t(position_)] == 0) {
            const qsizetype length = std::find_if(begin + position_, end, isLineEnd) - (begin + position_);
            const KeywordLine line{position_, rest.first(length), rest};
            position_ = std::min(position_ + length + 1, text_.size());
            return line;
        }
        const auto comment = commentMap_.begin();
        position_ = std::find(comment + position_, comment + text_.size(), uint8_t(0)) - comment;
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
