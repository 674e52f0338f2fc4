#include "app/RenderOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <semaphore>
#include <vector>

#include "app/FrameQueue.h"
#include "app/RawFrames.h"
#include "app/RenderProgress.h"

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
        "%d.png --check --format-errors gcc");
    ASSERT_TRUE(full.error.isEmpty()) << full.error.toStdString();
    EXPECT_EQ(full.options.frames, 12);
    EXPECT_EQ(full.options.start, -2.5f);
    EXPECT_EQ(full.options.width, 64);
    EXPECT_EQ(full.options.height, 32);
    EXPECT_TRUE(full.options.checkOnly && full.options.gccErrors);
    ASSERT_EQ(full.options.values.size(), 2u);
    EXPECT_EQ(full.options.values[1].second, QStringLiteral("true"));
    const ParsedOptions stage =
        ParseRenderOptions({QStringLiteral("a.json"), QStringLiteral("--stage"), QStringLiteral("buffer c")});
    EXPECT_EQ(stage.options.stage, uint32_t(kStageBufferC));
    const ParsedOptions film = Parse(
        "--first=7 --rate 30000/1001 --set=a=b --date 2026-11-23T12:00:00.5 --audio a.wav --pipe y4m --start "
        "-1 "
        "b.json");
    ASSERT_TRUE(film.error.isEmpty()) << film.error.toStdString();
    EXPECT_EQ(film.options.first, 7);
    EXPECT_EQ(film.options.values.at(0).second, QStringLiteral("b"));
    EXPECT_EQ(film.options.rate, (FrameRate{30000, 1001}));
    EXPECT_EQ(film.options.audio, QStringLiteral("a.wav"));
    EXPECT_EQ(film.options.pipe, PipeForm::Y4m);
    EXPECT_EQ(film.options.project, QStringLiteral("b.json"));
    const ParsedOptions pipe = Parse("--pipe y4n");
    EXPECT_EQ(pipe.options.pipe, PipeForm::Rgb24);
    EXPECT_EQ(pipe.options.project, QStringLiteral("y4n"));
    for (const char* line : {"a.json --format still.png", "a.json --format %4d --frames 2",
                             "a.json --format 100%%-%01d.png --frames 2", "--help --pipe --out x"})
        EXPECT_TRUE(Parse(line).error.isEmpty()) << line;
}

TEST(RenderOptions, BadLines) {
    QStringList lines =
        QStringLiteral(
            "b.json | --frames | --frames 0 | --frames 99999999999 | --size 10 | --size 0x5 | "
            "--size 1x1 | --size 99999x10 | --speed 1.5 | --speed nan | --start inf | "
            "--stage Common | --set x | --set =1 | --set x= | --format frame.png --frames 2 | "
            "--format %d%d | --format %s | --first 0 | --jobs 0 | --jobs x | --rate 0 | --rate 1/0 | "
            "--rate -5 | --rate 1e3 | --rate . | --rate 99999 | --rate 1.0000000001 | --date 12:00 | "
            "--date 2026-02-30 | --date 2026-11-23T12:00:00Z | --date 2026-11-23T25:00:00 | "
            "--date 2026-11-23T | --pipe --out d | --pipe y4m --jobs 2 | --pipe --format %d.png | "
            "--pipe mp4 | --pipe=mp4 | --check=1 | --format-errors msvc | -x | --nonsense")
            .split(QStringLiteral(" | "));
    for (QString& line : lines)
        line.prepend(QStringLiteral("a.json "));
    lines.append(QString());  // no project at all
    for (const QString& line : lines) {
        const QString error = Parse(line.toLatin1()).error;
        EXPECT_TRUE(error.endsWith(u'.') && !error.contains(u'\n')) << qPrintable(line + error);
    }
}

TEST(FrameClock, MomentsFollowFromTheNumberAlone) {
    const struct {
        const char* text;
        FrameRate rate;
        int64_t frames, units;  // how much of 48000 a second has passed after so many frames
    } rows[] = {
        {"60", {60, 1}, 1, 800},
        {"59.94", {2997, 50}, 2997, 2400000},
        {"30000/1001", {30000, 1001}, 1, 1601},
        {"0.50", {1, 2}, 20000000, 1920000000000},
        {"9999.9999", {99999999, 10000}, 0, 0},
    };
    for (const auto& row : rows) {
        const std::optional<FrameRate> rate = ParseFrameRate(QString::fromLatin1(row.text));
        if (row.frames == 0) {
            EXPECT_FALSE(rate) << row.text;
            continue;
        }
        ASSERT_TRUE(rate) << row.text;
        EXPECT_EQ(*rate, row.rate) << row.text;
        EXPECT_EQ(UnitsAfter(*rate, row.frames, 48000), row.units) << row.text;
    }
    const std::optional<QDateTime> date = ParseDate(QStringLiteral("2028-02-29 23:59:59.900"));
    ASSERT_TRUE(date);
    EXPECT_THAT(DateOfFrame(*date, {10, 1}, 1), ::testing::ElementsAre(2028, 2, 29, 86399));
    EXPECT_THAT(DateOfFrame(*date, {10, 1}, 2), ::testing::ElementsAre(2028, 3, 1, 0));
}

TEST(RawFrames, PixelsAreThoseOfThePicture) {
    // A pixel of each corner of the colours and some between, one picture top-down, one bottom-up.
    const int levels[] = {0, 1, 77, 128, 254, 255};
    for (const bool isBottomUp : {false, true}) {
        const auto picture = CreateBitmap(27, 8, 32, isBottomUp);
        for (int i = 0; i < 216; ++i) {
            uint8_t* pixel = picture->Row(isBottomUp ? 7 - i / 27 : i / 27) + size_t(i % 27) * 4;
            for (int c = 0; c < 3; ++c)
                pixel[c] = uint8_t(levels[i / (c == 0 ? 1 : c == 1 ? 6 : 36) % 6]);
        }
        std::vector<uint8_t> rgb, yuv;
        ToRgb24(*picture, rgb);
        ToY4mFrame(*picture, yuv);
        ASSERT_EQ(rgb.size(), 216u * 3);
        ASSERT_EQ(yuv.size(), 6 + 216u * 3);
        for (size_t i = 0; i < 216; ++i) {
            const double blue = levels[i % 6], green = levels[i / 6 % 6], red = levels[i / 36];
            EXPECT_THAT((std::vector<int>{rgb[3 * i], rgb[3 * i + 1], rgb[3 * i + 2]}),
                        ::testing::ElementsAre(int(red), int(green), int(blue)));
            const double luma = 0.2126 * red + 0.7152 * green + 0.0722 * blue;
            EXPECT_NEAR(yuv[6 + i], 16.0 + luma * 219.0 / 255.0, 0.51);
            EXPECT_NEAR(yuv[6 + 216 + i], 128.0 + (blue - luma) / 1.8556 * 224.0 / 255.0, 0.51);
            EXPECT_NEAR(yuv[6 + 432 + i], 128.0 + (red - luma) / 1.5748 * 224.0 / 255.0, 0.51);
        }
    }
    EXPECT_EQ(Y4mHeader(7, 5, {30000, 1001}),
              "YUV4MPEG2 W7 H5 F30000:1001 Ip A1:1 C444 XCOLORRANGE=LIMITED\n");
}

TEST(FrameQueue, TheFirstFailureCountsAndWhatWasBegunIsWritten) {
    std::counting_semaphore<> begun(0), second(0);
    std::atomic<int> written{0};
    FrameQueue queue(2, [&](int frame, const Bitmap&) {
        begun.release();
        if (frame == 1) second.acquire();  // so that frame 2 fails first
        if (frame == 2) second.release();
        ++written;
        return QStringLiteral("frame %1").arg(frame);
    });
    for (const int frame : {1, 2}) {
        EXPECT_TRUE(queue.Put(frame, CreateFrameBitmap(2, 2)));
        begun.acquire();
    }
    int frame = 3;
    while (queue.Put(frame, CreateFrameBitmap(2, 2)))
        ASSERT_LT(++frame, 100000) << "no failure stops the frames";
    EXPECT_EQ(queue.Finish(), QStringLiteral("frame 1"));
    EXPECT_EQ(queue.Finish(), QStringLiteral("frame 1"));
    EXPECT_GE(written, 2);
}

TEST(RenderProgress, OneLineSaysHowFarItIs) {
    EXPECT_EQ(ProgressLine(12, 600, 12, 0.3), QStringLiteral("frame 12 of 600, 40.0 a second, 0:15 left"));
    EXPECT_EQ(ProgressLine(101, 5500, 1, 2.0),
              QStringLiteral("frame 101 of 5500, 0.50 a second, 2:59:58 left"));
}

}  // namespace
}  // namespace pixelgrove
