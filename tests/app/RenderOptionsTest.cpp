#include "app/RenderOptions.h"

#include <gtest/gtest.h>

namespace pixelgrove {
namespace {

ParsedOptions Parse(const char* line) {
    return ParseRenderOptions(QString::fromLatin1(line).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

TEST(RenderOptions, GoodLines) {
    const ParsedOptions plain = Parse("a.json");
    EXPECT_TRUE(plain.error.isEmpty());

    const ParsedOptions full = Parse(
        "--frames 12 --start -2.5 --speed -1 a.json --size 64X32 --set x=1.5 --set on=true --out d --format "
        "%d.png --check");
    ASSERT_TRUE(full.error.isEmpty()) << full.error.toStdString();
    EXPECT_EQ(full.options.frames, 12);
    EXPECT_EQ(full.options.start, -2.5f);
    EXPECT_EQ(full.options.width, 64);
    EXPECT_EQ(full.options.height, 32);
    EXPECT_TRUE(full.options.checkOnly);
    ASSERT_EQ(full.options.values.size(), 2u);
    EXPECT_EQ(full.options.values[1].second, QStringLiteral("true"));
    const ParsedOptions stage =
        ParseRenderOptions({QStringLiteral("a.json"), QStringLiteral("--stage"), QStringLiteral("buffer c")});
    EXPECT_EQ(stage.options.stage, uint32_t(kStageBufferC));
}

TEST(RenderOptions, BadLines) {
    for (const char* line :
         {"", "a.json b.json", "a.json --frames", "a.json --frames 0", "a.json --frames 99999999999",
          "a.json --size 10", "a.json --size 0x5", "a.json --size 1x1", "a.json --size 99999x10",
          "a.json --speed 1.5", "a.json --speed nan", "a.json --start inf", "a.json --stage Common",
          "a.json --set x", "a.json --set =1", "a.json --set x=", "a.json --format frame.png",
          "a.json --nonsense"}) {
        EXPECT_FALSE(Parse(line).error.isEmpty()) << line;
    }
}

TEST(RenderOptions, FrameNames) {
    const std::pair<const char*, const char*> good[] = {
        {"frame-%04d.png", "frame-0042.png"}, {"%d", "42"},       {"a%5db", "a   42b"},
        {"100%%-%d.png", "100%-42.png"},      {"%01d.x", "42.x"},
    };
    for (const auto& [format, expected] : good) {
        EXPECT_EQ(FormatFrameName(QString::fromLatin1(format), 42), QString::fromLatin1(expected)) << format;
    }
    for (const char* format : {"", "a.png", "%d%d", "%s", "%n", "%04", "%", "%10d", "%ld", "%-4d", "%00d"}) {
        EXPECT_FALSE(FormatFrameName(QString::fromLatin1(format), 42).has_value()) << format;
    }
}

}  // namespace
}  // namespace pixelgrove
