// The words of the shading language that the editor colours.
//
// Pure; the table is made at its first use. Any thread.
#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>
#include <optional>
#include <vector>

namespace pixelgrove {

// In blue-green-red order, as 0x00BBGGRR.
namespace word_colours {
constexpr uint32_t kPrecision = 0x50c850;     // green
constexpr uint32_t kPreprocessor = 0x646464;  // grey
constexpr uint32_t kType = 0xff0000;          // blue
constexpr uint32_t kQualifier = 0xff0082;     // violet: qualifiers and flow words
constexpr uint32_t kFunction = 0x5050c8;      // brick red: built-in functions
constexpr uint32_t kComment = 0x329600;
}  // namespace word_colours

enum class KeywordKind : uint8_t { Word = 0, LineComment = 1, BlockComment = 2 };

struct KeywordRow {
    QString word;
    uint32_t colour;
    KeywordKind kind;
};

// All 361 rows by the order of their character codes. The two that open comments stand for their colour; as
// words they never occur.
const std::vector<KeywordRow>& KeywordRows();

// A word this long or longer is never in the table.
constexpr qsizetype kMaxWordLength = 64;

// The colour of a word, case sensitive; nothing for one that isn't in the table.
std::optional<uint32_t> WordColour(QStringView word);

// True for what words consist of: letters, digits, '#' and '_'.
inline bool IsWordCharacter(QChar unit) {
    return unit.isLetter() || unit.isDigit() || unit == u'#' || unit == u'_';
}

}  // namespace pixelgrove
