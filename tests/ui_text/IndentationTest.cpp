// Indentation by keys and by the text's braces.
#include "ui/text/Indentation.h"

#include <gtest/gtest.h>

#include "core/CommentMap.h"

namespace pixelgrove {
namespace {

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

TEST(IndentationTest, TheNextLine) {
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},          {"a;", ""},           {"\t  a;", "\t  "},       {"\tif (a) {", "\t\t"},
        {"{", "\t"},       {"\t}", ""},          {"  \t  }", "    "},      {"      }", "  "},
        {"  }", "  "},     {"\t} else {", "\t"}, {"    } else {", "    "}, {"\t{ x; }", "\t"},
        {"\t{ { }", "\t"}, {"\t} }", ""},        {"\t// {", "\t\t"},       {" \t ", " \t "},
    };
    for (const auto& [line, indent] : rows)
        EXPECT_EQ(IndentOfNextLine(Text(line)), Text(indent)) << '"' << line << '"';
}

TEST(IndentationTest, UnindentedLines) {
    const std::pair<QString, QString> rows[] = {
        {Text("\ta"), Text("a")},
        {Text("\t\ta"), Text("    a")},
        {Text("  \ta"), Text("a")},
        {Text("  a"), Text("a")},
        {Text("a\tb\t\tc"), Text("a   b       c")},
        {QString(), QString()},
        {Text("\t"), QString()},
        // A line that would grow too long keeps its tabs, and so all of it.
        {QString(4092, u'x') + u'\t', QString(4092, u'x') + u'\t'},
        {QString(4091, u'x') + u'\t', QString(4091, u'x') + u' '},
        {Text("  \t") + QString(9000, u'x'), u'\t' + QString(9000, u'x')},
    };
    for (const auto& [line, expected] : rows)
        EXPECT_EQ(UnindentedLine(line), expected) << line.left(40).toStdString();
}

std::vector<int> Depths(const QString& text) {
    return LineDepths(text, BuildCommentMap(text));
}

TEST(IndentationTest, DepthsOfLines) {
    using Depths = std::vector<int>;
    const std::pair<const char*, Depths> rows[] = {
        {"", {0}},
        {"{\na\n}\n", {0, 1, 0, 0}},
        {"{\n{\na\n}\n}", {0, 1, 2, 1, 0}},
        {"if {\n} else {\na\n}\n", {0, 0, 1, 0, 0}},
        {"{ {\na\n} }\n", {1, 2, 0, 0}},
        {"{ // }\na // {\n}\n", {0, 1, 0, 0}},
        {"{ /* } */\na\n}\n", {0, 1, 0, 0}},
        {"{\n/* b\n c */ d\n}\n", {0, -1, 1, 0, 0}},
        {"#a\n{\n#b\n #c\n}\n", {0, 0, -1, 1, 0, 0}},
        {"}\na\n{\nb\n", {0, 0, 0, 0, 0}},
        {"}\n}", {0, -2}},
        {"{", {1}},
        {"{ // a", {1}},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(::pixelgrove::Depths(Text(text)), expected) << text;
        const QString lines = Text(text);
        EXPECT_EQ(::pixelgrove::Depths(QString(lines).replace(Text("\n"), Text("\r\n"))), expected) << text;
        EXPECT_EQ(::pixelgrove::Depths(QString(lines).replace(Text("\n"), Text("\r"))), expected) << text;
    }
}

}  // namespace
}  // namespace pixelgrove
