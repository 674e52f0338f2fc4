#include <gtest/gtest.h>

#include "platform/CodePage.h"
#include "platform/Environment.h"
#include "platform/TextEditor.h"

namespace pixelgrove {
namespace {

TEST(CodePage, EveryByteSurvivesTheRoundTrip) {
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all.append(char(i));
    const QString text = FromCodePage(all);
    ASSERT_EQ(text.size(), 256);
    EXPECT_EQ(ToCodePage(text), all);
}

TEST(CodePage, KnownCharacters) {
    struct Row {
        uint8_t byte;
        char16_t unit;
    };
    const Row rows[] = {{0x80, 0x20AC}, {0x81, 0x0081}, {0x85, 0x2026}, {0x8C, 0x0152}, {0x8D, 0x008D},
                        {0x91, 0x2018}, {0x96, 0x2013}, {0x99, 0x2122}, {0x9D, 0x009D}, {0x9F, 0x0178},
                        {0xA0, 0x00A0}, {0xE4, 0x00E4}, {0xFF, 0x00FF}, {0x41, 'A'},    {0x00, 0x0000}};
    for (const Row& row : rows) {
        const char byte = char(row.byte);
        EXPECT_EQ(FromCodePage(QByteArrayView(&byte, 1)), QString(QChar(row.unit))) << int(row.byte);
        EXPECT_EQ(ToCodePage(QString(QChar(row.unit))), QByteArray(1, byte)) << int(row.byte);
    }
}

TEST(CodePage, WhatDoesNotFitBecomesAQuestionMark) {
    EXPECT_EQ(ToCodePage(u"a\u03b1\u0080\u0192\uffff"), QByteArray("a??\x83?"));
    EXPECT_EQ(ToCodePage(u"\U0001F333!"), QByteArray("?"
                                                     "?!"));
    EXPECT_TRUE(ToCodePage(QStringView()).isEmpty());
    EXPECT_TRUE(FromCodePage(QByteArrayView()).isEmpty());
}

TEST(Environment, ExpandsKnownNamesOnly) {
    SetVariable("PG_TEST_FOLDER", QStringLiteral("/tmp/gr\u00fcn %x%"));
    SetVariable("PG_TEST_EMPTY", QString());
    struct Row {
        const char16_t* text;
        const char16_t* expanded;
    };
    const Row rows[] = {
        {u"%PG_TEST_FOLDER%\\Shaders", u"/tmp/gr\u00fcn %x%\\Shaders"},
        {u"a%PG_TEST_EMPTY%b", u"ab"},
        {u"%PG_TEST_UNKNOWN%\\UI", u"%PG_TEST_UNKNOWN%\\UI"},
        {u"%PG_TEST_UNKNOWN%PG_TEST_FOLDER%", u"%PG_TEST_UNKNOWN/tmp/gr\u00fcn %x%"},
        {u"100%", u"100%"},
        {u"%%", u"%%"},
        {u"", u""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ExpandVariables(QString::fromUtf16(row.text)), QString::fromUtf16(row.expanded));
    }
}

TEST(Environment, ApplicationDataNeedsAnAbsoluteVariable) {
    const QString before = QString::fromLocal8Bit(qgetenv("XDG_DATA_HOME"));
    SetVariable("XDG_DATA_HOME", QStringLiteral("/somewhere/data"));
    EXPECT_EQ(ApplicationDataFolder(), QStringLiteral("/somewhere/data"));
    SetVariable("XDG_DATA_HOME", QStringLiteral("relative"));
    EXPECT_TRUE(ApplicationDataFolder().endsWith(QStringLiteral("/.local/share")));
    EXPECT_TRUE(ApplicationDataFolder().startsWith(u'/'));
    SetVariable("XDG_DATA_HOME", before);
}

TEST(Environment, ProgramPathNamesThisProgram) {
    EXPECT_TRUE(ProgramPath().startsWith(u'/'));
    EXPECT_TRUE(ProgramPath().contains(QStringLiteral("test_platform")));
}

TEST(TextEditor, EachEditorGetsItsOwnLineOption) {
    struct Row {
        const char* installed;
        QStringList arguments;
    };
    const QString file = QStringLiteral("/s/a b.glsl");
    const Row rows[] = {
        {"kate", {QStringLiteral("--line=12"), file}},
        {"gedit", {QStringLiteral("+12"), file}},
        {"gnome-text-editor", {QStringLiteral("+12"), file}},
        {"mousepad", {QStringLiteral("--line=12"), file}},
        {"xed", {QStringLiteral("+12"), file}},
        {"code", {QStringLiteral("--goto"), file + QStringLiteral(":12")}},
        {"xdg-open", {file}},
    };
    for (const Row& row : rows) {
        const auto find = [&](const QString& name) {
            return name == QLatin1String(row.installed) ? QStringLiteral("/bin/") + name : QString();
        };
        const EditorCommand command = ChooseEditorCommand(file, 12, find);
        EXPECT_EQ(command.program, QStringLiteral("/bin/") + QLatin1String(row.installed));
        EXPECT_EQ(command.arguments, row.arguments) << row.installed;
        EXPECT_EQ(ChooseEditorCommand(file, 0, find).arguments, QStringList{file}) << row.installed;
    }
}

TEST(TextEditor, TakesTheFirstInstalledAndNoOptionFromTheName) {
    const auto all = [](const QString& name) { return name; };
    const EditorCommand command = ChooseEditorCommand(QStringLiteral("-x\\+1.glsl"), 3, all);
    EXPECT_EQ(command.program, QStringLiteral("kate"));
    EXPECT_TRUE(command.arguments.last().startsWith(u'/'));
    EXPECT_TRUE(command.arguments.last().endsWith(QStringLiteral("/-x/+1.glsl")));

    const auto none = [](const QString&) { return QString(); };
    EXPECT_TRUE(ChooseEditorCommand(QStringLiteral("/a"), 1, none).program.isEmpty());
}

TEST(TextEditor, RefusesWhatIsNoFile) {
    EXPECT_FALSE(OpenInTextEditor(QStringLiteral("/nowhere/missing.glsl"), 1));
    EXPECT_FALSE(OpenInTextEditor(QStringLiteral("/tmp"), 1));
}

}  // namespace
}  // namespace pixelgrove
