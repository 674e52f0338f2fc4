#include "controls/GeneratedLine.h"

#include <gtest/gtest.h>

namespace pixelgrove {
namespace {

using enum GeneratedControl;
using enum GeneratedData;

GeneratorFields Fields(GeneratedControl control, GeneratedData data, const QString& options) {
    return {control,
            data,
            QStringLiteral("name"),
            QStringLiteral("a!b"),
            QStringLiteral("text"),
            options,
            QStringLiteral("1.00"),
            QStringLiteral("3.00"),
            QStringLiteral("2.00")};
}

std::string Line(const GeneratorFields& fields) {
    return GeneratedLine(fields).value_or(QStringLiteral("nothing")).toStdString();
}

TEST(GeneratedLine, EachControlWithEachData) {
    const struct {
        GeneratedControl control;
        GeneratedData data;
        const char* options;
        const char* line;
    } cases[] = {
        {Uniform, FloatRange, "x", "uniform float name;\t// a!b: text [1.00..3.00, 2.00]"},
        {Uniform, IntRange, "x", "uniform int name;\t// a!b: text [1.00..3.00, 2.00]"},
        {Uniform, ItemSelect, "p, @q", "uniform combo name;\t// a!b: text [p, @q]"},
        {ValueDefine, FloatRange, "x", "#define name\t2.00\t// a!b: text [1.00..3.00, 2.00]"},
        {ValueDefine, IntRange, "x", "#define name\t2.00\t// a!b: text [1.00..3.00, 2.00]"},
        {ValueDefine, ItemSelect, "@p, q", "#define name\tp\t// a!b: text [@p, q]"},
        {FlagDefine, FloatRange, "x", "#define 2.00\t\t// a!b: text [1.00..3.00, 2.00]"},
        {FlagDefine, IntRange, "x", "#define 2.00\t\t// a!b: text [1.00..3.00, 2.00]"},
        {FlagDefine, ItemSelect, "a, @b", "#define b\t\t// a!b: text [a, @b]"},
        // The default: the first with a mark, the first of all without one, a mark further in is none.
        {FlagDefine, ItemSelect, "  p, q", "#define p\t\t// a!b: text [  p, q]"},
        {FlagDefine, ItemSelect, "p@, @q ,@r", "#define q \t\t// a!b: text [p@, @q ,@r]"},
        {FlagDefine, ItemSelect, "p,\t@q", "#define p\t\t// a!b: text [p,\t@q]"},
        // What the user writes is no pattern, and never begins a line.
        {FlagDefine, ItemSelect, "%1%s", "#define %1%s\t\t// a!b: text [%1%s]"},
        {FlagDefine, ItemSelect, "p,\r\nq", "#define p\t\t// a!b: text [p, q]"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(Line(Fields(row.control, row.data, QString::fromLatin1(row.options))), row.line);
}

TEST(GeneratedLine, NeedsEveryTextAndHasALimit) {
    for (QString GeneratorFields::*text :
         {&GeneratorFields::name, &GeneratorFields::parent, &GeneratorFields::description,
          &GeneratorFields::options, &GeneratorFields::minimum, &GeneratorFields::maximum,
          &GeneratorFields::defaultValue}) {
        GeneratorFields fields = Fields(FlagDefine, ItemSelect, QStringLiteral("p"));
        fields.*text = QString(kMaxGeneratorField, u'm');
        EXPECT_NE(Line(fields), "nothing");
        fields.*text = QString();
        EXPECT_EQ(Line(fields), "nothing");
    }
    const QString longest(kMaxGeneratorField, u'm');
    const QString line =
        *GeneratedLine({Uniform, FloatRange, longest, longest, longest, longest, longest, longest, longest});
    EXPECT_EQ(line.size(), 1023);
    EXPECT_TRUE(line.startsWith(QStringLiteral("uniform float m")));
}

TEST(GeneratedLine, NumbersAreWrittenInTheFormOfTheRange) {
    const struct {
        const char *text, *asFloat, *asInt;
    } cases[] = {
        {"0.5", "0.50", "0"},   {"1", "1.00", "1"},      {" -7.999x", "-8.00", "-7"},
        {"1e2", "100.00", "1"}, {"0.125", "0.12", "0"},  {"", "0.00", "0"},
        {"m", "0.00", "0"},     {"1e300", "1e300", "1"}, {"99999999999", "99999999999.00", "2147483647"},
    };
    for (const auto& row : cases) {
        const QString text = QString::fromLatin1(row.text);
        EXPECT_EQ(NumberText(FloatRange, text).toStdString(), row.asFloat) << row.text;
        EXPECT_EQ(NumberText(IntRange, text).toStdString(), row.asInt) << row.text;
        EXPECT_EQ(NumberText(ItemSelect, text), text);
    }
}

}  // namespace
}  // namespace pixelgrove
