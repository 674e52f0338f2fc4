#include "render/source/MessageLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pixelgrove {
namespace {

TEST(ErrorLinesOfTest, NumbersOfTheShownStage) {
    const QString far = QString(48, u' ');
    const QString pane = QStringLiteral(
                             "Image(4): error: a\n"
                             "Common(5): error: b\n"
                             "\n"
                             "see IMAGE (6, 7)\n"  // any letter case, the number's tail is not read
                             "Image(((8): x\n"     // the last "(" before the first ")"
                             "Image): x (9)\n"     // none before it
                             "Image(x): y\n"       // no number
                             "Image: 10\n"         // no place
                             "Image( -2): z\n") +
                         // The closing parenthesis is the 62nd character, then the 63rd.
                         QStringLiteral("Image : ") + far + QStringLiteral("(1234)\n") +  //
                         QStringLiteral("Image : ") + far + QStringLiteral("(12345)\n");
    EXPECT_THAT(ErrorLinesOf(pane, QStringLiteral("Image")), testing::ElementsAre(4, 6, 8, -2, 1234));
    EXPECT_TRUE(ErrorLinesOf(QString(), QStringLiteral("Image")).empty());
}

TEST(ParseMessageLineTest, Targets) {
    struct Case {
        QString line;
        QString name;  // empty: no target
        int number;
        bool isStage;
    };
    const QString longPath = QString(250, u'p');
    const Case cases[] = {
        {QStringLiteral("Image(12): error (3)"), QStringLiteral("Image"), 12, true},
        {QStringLiteral("Common(1)"), QStringLiteral("Common"), 1, true},
        {QStringLiteral("Buffer D(2): x"), QStringLiteral("Buffer D"), 2, true},
        {QStringLiteral("Cube A(3): x"), QStringLiteral("Cube A"), 3, true},
        {QStringLiteral("image(3): x"), QStringLiteral("image"), 3, false},
        {QStringLiteral("+(3): x"), QStringLiteral("+"), 3, false},
        {QStringLiteral("/a/b.glsl(7): x"), QStringLiteral("/a/b.glsl"), 7, false},
        {QStringLiteral("Image(0): x"), QStringLiteral("Image"), 0, true},
        {QStringLiteral("Image(0x): x"), QStringLiteral("Image"), 0, true},
        {QStringLiteral("Image( 0): x"), {}, 0, false},
        {QStringLiteral("Image(x): x"), {}, 0, false},
        {QStringLiteral("Image(-5): x"), QStringLiteral("Image"), -5, true},
        {QStringLiteral("Image(): x"), {}, 0, false},
        {QStringLiteral("Image(5: x"), {}, 0, false},
        {QStringLiteral("(5): x"), {}, 0, false},
        {QStringLiteral("Image: 5"), {}, 0, false},
        {QString(), {}, 0, false},
        {QStringLiteral("Image(") + QString(30, u'0') + QStringLiteral("9)"), QStringLiteral("Image"), 9,
         true},
        {QStringLiteral("Image(") + QString(31, u'0') + QStringLiteral("9)"), {}, 0, false},
        {QStringLiteral("Image(99999999999)"), QStringLiteral("Image"), 2147483647, true},
        // The closing parenthesis is the 255th character, then the 256th.
        {longPath + QStringLiteral("(123)"), longPath, 123, false},
        {longPath + QStringLiteral("(1234)"), {}, 0, false},
    };
    for (const Case& c : cases) {
        const std::optional<MessageTarget> target = ParseMessageLine(c.line);
        ASSERT_EQ(target.has_value(), !c.name.isEmpty()) << c.line.toStdString();
        if (!target) continue;
        EXPECT_EQ(target->name, c.name);
        EXPECT_EQ(target->line, c.number) << c.line.toStdString();
        EXPECT_EQ(target->isStage, c.isStage) << c.line.toStdString();
    }
}

}  // namespace
}  // namespace pixelgrove
