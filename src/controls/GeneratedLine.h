// GeneratedLine: a source line whose comment has the shape of a live control, from its parts. Pure.
//
// Not every pair of control and data makes a line that the annotations know: a uniform to select from
// doesn't.
#pragma once

#include <QString>
#include <optional>

namespace pixelgrove {

inline constexpr qsizetype kMaxGeneratorField = 255;  // code units of a text that the line is made of
inline constexpr qsizetype kMaxGeneratedLine = 1023;  // of the line; the rest of a longer one is left out

enum class GeneratedControl { Uniform, FlagDefine, ValueDefine };
enum class GeneratedData { FloatRange, IntRange, ItemSelect };

struct GeneratorFields {
    GeneratedControl control = GeneratedControl::Uniform;
    GeneratedData data = GeneratedData::FloatRange;
    QString name;
    QString parent;  // in the tree, components separated by '!'
    QString description;
    QString options;  // separated by commas; the default one begins with '@', else it's the first
    QString minimum, maximum, defaultValue;
};

// Without its line end; line breaks in the texts become blanks. Nothing while a text is empty, also one that
// this line doesn't use.
std::optional<QString> GeneratedLine(const GeneratorFields& fields);

// The number that the text begins with, else 0: with two decimals of a float range, as a whole number of an
// int range. A number that no field holds leaves the text as it is, and so does what isn't a range.
QString NumberText(GeneratedData data, const QString& text);

}  // namespace pixelgrove
