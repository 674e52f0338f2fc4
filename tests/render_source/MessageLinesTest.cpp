#include "render/source/MessageLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pixelgrove {
namespace {

TEST(ErrorLinesOfTest, NumbersOfTheShownStage) {
    const QString far = QStringLiteral("Image : ") + QString(48, u' ');
    const QString pane = QStringLiteral(
        "Image(4): error: a\n"
        "Common(5): error: b\n"
        "\n"
        "see IMAGE (6, 7)\n"  // any letter case, the number's tail is not read
        "Image(((8): x\n"     // the last "(" before the first ")"
        "Image): x (9)\n"     // none before it
        "Image(x): y\n"       // no number
        "Image: 10\n"         // no place
        "Image( -2): z\n");
    // The closing parenthesis is the 62nd character, then the 63rd.
    const QString limit = far + QStringLiteral("(1234)\n") + far + QStringLiteral("(12345)\n");
    EXPECT_THAT(ErrorLinesOf(pane + limit, QStringLiteral("Image")), testing::ElementsAre(4, 6, 8, -2, 1234));
}

TEST(ParseMessageLineTest, Targets) {
    struct Case {
        std::string line, name;  // no name: no target
        int number = 0;
        bool isStage = false;
    };
    const std::string longPath(250, 'p');
    const Case cases[] = {
        {"Image(12): error (3)", "Image", 12, true},
        {"Common(1)", "Common", 1, true},
        {"Buffer D(2): x", "Buffer D", 2, true},
        {"image(3): x", "image", 3, false},
        {"/a/b.glsl(7): x", "/a/b.glsl", 7, false},
        {"Image(0): x", "Image", 0, true},
        {"Image(0x): x", "Image", 0, true},
        {"Image( 0): x"},
        {"Image(x): x"},
        {"Image(-5): x", "Image", -5, true},
        {"Image(): x"},
        {"Image(5: x"},
        {"(5): x"},
        {"Image: 5"},
        {"Image(" + std::string(30, '0') + "9)", "Image", 9, true},
        {"Image(" + std::string(31, '0') + "9)"},
        {"Image(99999999999)", "Image", 2147483647, true},
        // The closing parenthesis is the 255th character, then the 256th.
        {longPath + "(123)", longPath, 123, false},
        {longPath + "(1234)"},
    };
    for (const Case& c : cases) {
        const std::optional<MessageTarget> target = ParseMessageLine(QString::fromStdString(c.line));
        ASSERT_EQ(target.has_value(), !c.name.empty()) << c.line;
        if (!target) continue;
        EXPECT_EQ(target->name.toStdString(), c.name);
        EXPECT_EQ(target->line, c.number) << c.line;
        EXPECT_EQ(target->isStage, c.isStage) << c.line;
    }
}

}  // namespace
}  // namespace pixelgrove
