#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QTemporaryDir>
#include <fstream>
#include <string>

#include "platform/CodePage.h"
#include "platform/Environment.h"
#include "platform/Programs.h"
#include "platform/TextEditor.h"
#include "platform/TextScan.h"

namespace pixelgrove {
namespace {

TEST(CodePage, EveryByteSurvivesTheRoundTrip) {
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all.append(char(i));
    const QString text = FromCodePage(all);
    ASSERT_EQ(text.size(), 256);
    EXPECT_EQ(CountLackingCharacters(text), 0);
    EXPECT_EQ(ToCodePage(text), all);
}

TEST(TextScan, EveryLineEndBecomesAnLf) {
    EXPECT_EQ(WithLineFeeds(QString::fromUtf16(u"a\r\nb\rc\u2029d\u2028e\n\u00A0\ufdd0\ufdd1")),
              QString::fromUtf16(u"a\nb\nc\nd\ne\n\u00A0\n\n"));
}

TEST(Environment, ExpandsKnownNamesOnly) {
    SetVariable("PG_TEST_FOLDER", QStringLiteral("/tmp/gr\u00fcn %x%"));
    SetVariable("PG_TEST_EMPTY", QString());
    const std::pair<const char16_t*, const char16_t*> rows[] = {
        {u"%PG_TEST_FOLDER%\\Shaders", u"/tmp/gr\u00fcn %x%\\Shaders"},
        {u"a%PG_TEST_EMPTY%b", u"ab"},
        {u"%PG_TEST_UNKNOWN%PG_TEST_FOLDER%", u"%PG_TEST_UNKNOWN/tmp/gr\u00fcn %x%"},
        {u"100%", u"100%"},
        {u"%%", u"%%"},
    };
    for (const auto& [text, expanded] : rows)
        EXPECT_EQ(ExpandVariables(QString::fromUtf16(text)), QString::fromUtf16(expanded));
}

TEST(Programs, GetTheEnvironmentThatTheUserGave) {
    const QTemporaryDir folder;
    const QByteArray pipe = folder.filePath(QStringLiteral("pipe")).toLocal8Bit();
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    qputenv("PG_TEST_GIVEN", "given");
    for (const char* name : {"PG_TEST_GIVEN", "PG_TEST_OURS"})
        for (const QString& value : {QStringLiteral("first"), QStringLiteral("second")})
            SetVariable(name, value);
    ASSERT_TRUE(StartProgram(QStringLiteral("/bin/sh"),
                             {QStringLiteral("-c"), QStringLiteral("echo $PG_TEST_GIVEN,$PG_TEST_OURS. >$0"),
                              QString::fromLocal8Bit(pipe)}));
    std::string line;
    std::getline(std::ifstream(pipe.constData()), line);
    EXPECT_EQ(line, "given,.");
    EXPECT_EQ(qgetenv("PG_TEST_GIVEN"), "second");
}

TEST(TextEditor, EachEditorGetsItsOwnLineOption) {
    const QString file = QStringLiteral("/s/a b.glsl");
    const std::pair<QString, QStringList> rows[] = {
        {QStringLiteral("kate"), {QStringLiteral("--line=12"), file}},
        {QStringLiteral("gedit"), {QStringLiteral("+12"), file}},
        {QStringLiteral("code"), {QStringLiteral("--goto"), file + QStringLiteral(":12")}},
        {QStringLiteral("xdg-open"), {file}},
    };
    for (const auto& row : rows) {
        const auto find = [&](const QString& name) { return name == row.first ? u'/' + name : QString(); };
        const EditorCommand command = ChooseEditorCommand(file, 12, find);
        EXPECT_EQ(command.program, u'/' + row.first);
        EXPECT_EQ(command.arguments, row.second);
        EXPECT_EQ(ChooseEditorCommand(file, 0, find).arguments, QStringList{file});
    }
    const auto all = [](const QString& name) { return name; };
    EXPECT_TRUE(ChooseEditorCommand(QStringLiteral("-x"), 3, all).arguments.last().startsWith(u'/'));
    EXPECT_FALSE(OpenInTextEditor(QStringLiteral("/nowhere/missing.glsl"), 1));
}

}  // namespace
}  // namespace pixelgrove
