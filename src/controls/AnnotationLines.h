// AnnotationLines: the lines of a text that a keyword begins, and their words. Pure; any thread.
//
// All views point into the text that was given.
#pragma once

#include <QString>
#include <QStringView>
#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace pixelgrove {

// A line from its keyword on: what stands before it on the same line doesn't count.
struct KeywordLine {
    qsizetype position = 0;  // of the keyword in the text
    QStringView text;        // without its CR or LF
    QStringView rest;        // from the keyword to the end of the text
};

// Walks over the lines with a keyword outside comments, each line once. Takes linear time.
class KeywordLines {
  public:
    // keyword is ASCII in lower case and matches in any case. The text ends at a NUL, and where the map ends.
    KeywordLines(QStringView text, std::span<const uint8_t> commentMap, QStringView keyword);

    // Nothing at the end of the text.
    std::optional<KeywordLine> Next();

  private:
    QStringView text_;
    std::span<const uint8_t> commentMap_;
    QStringView keyword_;
    qsizetype position_ = 0;
};

// The first three words between blanks, as scanf's "%s %s %s" reads them; nothing when there are fewer.
std::optional<std::array<QStringView, 3>> FirstWords(QStringView text);

// The text without the characters of a set; the text from the first that is not in it.
QString Without(QStringView text, QStringView set);
QStringView WithoutLeading(QStringView text, QStringView set);

}  // namespace pixelgrove
