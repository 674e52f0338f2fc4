#include "controls/GeneratedLine.h"

#include <gtest/gtest.h>

#include "controls/Annotations.h"
#include "core/CommentMap.h"

namespace pixelgrove {
namespace {

using enum GeneratedControl;
using enum GeneratedData;

GeneratorFields Fields(GeneratedControl control, GeneratedData data, const QString& options) {
    const auto number = [data](const char* text) { return NumberText(data, QString::fromLatin1(text)); };
    return {control,
            data,
            QStringLiteral("name"),
            QStringLiteral("a!b"),
            QStringLiteral("text"),
            options,
            number("1"),
            number("3"),
            number("2")};
}

std::string Line(const GeneratorFields& fields) {
    return GeneratedLine(fields).value_or(QStringLiteral("nothing")).toStdString();
}

// What the annotations make of the line: path, then type, range and value, or the chosen option.
std::string Scanned(const std::string& line) {
    const QString text = QString::fromStdString(line);
    ControlSet controls;
    ScanDefines(controls, text);
    ScanUniforms(controls, text, BuildCommentMap(text));
    const bool isDefine = controls.defineCount == 1;
    if (!isDefine && controls.uniformCount != 2) return "none";
    const UniformControl& record = isDefine ? controls.defines[0] : controls.uniforms[1];
    if (record.kind == 1)
        return (record.treePath + u'|' + record.options[size_t(record.combo.selection)].text).toStdString();
    return QStringLiteral("%1|%2 %3..%4 %5")
        .arg(record.treePath)
        .arg(record.type)
        .arg(double(record.range.minimum))
        .arg(double(record.range.maximum))
        .arg(double(record.range.value))
        .toStdString();
}

TEST(GeneratedLine, EachControlWithEachDataAndWhatItDeclares) {
    const struct {
        GeneratedControl control;
        GeneratedData data;
        const char* options;
        const char* line;
        const char* declared;
    } cases[] = {
        {Uniform, FloatRange, "x", "uniform float name;\t// a!b: text [1.00..3.00, 2.00]",
         "Uniforms!a!b!name|1 1..3 2"},
        {Uniform, IntRange, "x", "uniform int name;\t// a!b: text [1..3, 2]", "Uniforms!a!b!name|2 1..3 2"},
        {Uniform, ItemSelect, "p, @q", "uniform combo name;\t// a!b: text [p, @q]", "none"},
        {ValueDefine, FloatRange, "x", "#define name\t2.00\t// a!b: text [1.00..3.00, 2.00]",
         "Defines!a!b: text |1 1..3 2"},
        {ValueDefine, IntRange, "x", "#define name\t2\t// a!b: text [1..3, 2]",
         "Defines!a!b: text |2 1..3 2"},
        {ValueDefine, ItemSelect, "@p, q", "#define name\tp\t// a!b: text [@p, q]", "Defines!a!b: text |p"},
        {FlagDefine, FloatRange, "x", "#define 2.00\t\t// a!b: text [1.00..3.00, 2.00]",
         "Defines!a!b: text |1 1..3 2"},
        {FlagDefine, IntRange, "x", "#define 2\t\t// a!b: text [1..3, 2]", "Defines!a!b: text |2 1..3 2"},
        {FlagDefine, ItemSelect, "a, @b", "#define b\t\t// a!b: text [a, @b]", "Defines!a!b: text |b"},
        // The default: the first with a mark, the first of all without one, a mark further in is none. The
        // annotations take the last mark, and one anywhere.
        {FlagDefine, ItemSelect, "  p, q", "#define p\t\t// a!b: text [  p, q]", "Defines!a!b: text |p"},
        {FlagDefine, ItemSelect, "p@, @q ,@r", "#define q \t\t// a!b: text [p@, @q ,@r]",
         "Defines!a!b: text |r"},
        {FlagDefine, ItemSelect, "p,\t@q", "#define p\t\t// a!b: text [p,\t@q]", "Defines!a!b: text |q"},
        // What the user writes is no pattern, and never begins a line.
        {FlagDefine, ItemSelect, "%1%s", "#define %1%s\t\t// a!b: text [%1%s]", "none"},
        {FlagDefine, ItemSelect, "p,\r\nq", "#define p\t\t// a!b: text [p, q]", "Defines!a!b: text |p"},
    };
    for (const auto& row : cases) {
        const std::string line = Line(Fields(row.control, row.data, QString::fromLatin1(row.options)));
        EXPECT_EQ(line, row.line);
        EXPECT_EQ(Scanned(line), row.declared) << row.line;
    }
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
