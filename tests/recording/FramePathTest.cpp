#include "recording/FramePath.h"

#include <gtest/gtest.h>

#include "recording/RecorderSettings.h"

namespace pixelgrove {
namespace {

using namespace Qt::StringLiterals;

struct Sample {
    QString format;
    uint32_t number;
    std::optional<QString> text;
};

const QString kLong(258, u'x');

TEST(FramePath, AFormatTakesTheNumberAsTheCLibraryWould) {
    const Sample samples[] = {
        {u"f-%d.png"_s, 7, u"f-7.png"_s},
        {u"f-%04d.png"_s, 7, u"f-0007.png"_s},
        {u"f-%04i.png"_s, 123456, u"f-123456.png"_s},
        {u"[%6d|"_s, 42, u"[    42|"_s},
        {u"[%-6d|"_s, 42, u"[42    |"_s},
        {u"[%-06d|"_s, 42, u"[42    |"_s},
        {u"[%+d|"_s, 42, u"[+42|"_s},
        {u"[% 05d|"_s, 42, u"[ 0042|"_s},
        {u"[%+05u|"_s, 42, u"[00042|"_s},
        {u"[%.3d|"_s, 7, u"[007|"_s},
        {u"[%08.3d|"_s, 7, u"[     007|"_s},
        {u"[%.0d|"_s, 0, u"[|"_s},
        {u"[%.d|"_s, 5, u"[5|"_s},
        {u"[%x %%|"_s, 255, u"[ff %|"_s},
        {u"[%#06X|"_s, 255, u"[0X00FF|"_s},
        {u"[%#x|"_s, 0, u"[0|"_s},
        {u"[%#o|"_s, 8, u"[010|"_s},
        {u"[%#.0o|"_s, 0, u"[0|"_s},
        {u"[%3c|"_s, 65, u"[  A|"_s},
        {u"[%c|"_s, 0x1F600, u"[\U0001F600|"_s},
        {u"%u"_s, 4294967295u, u"4294967295"_s},
        {u"%d"_s, 4294967295u, u"4294967295"_s},
        {u"plain"_s, 1, u"plain"_s},
        {u"100%%"_s, 1, u"100%"_s},
        {kLong + u"%d"_s, 1, kLong + u"1"_s},

        {kLong + u"%d"_s, 10, {}},
        {u"%99999d"_s, 1, {}},
        {u"%.99999999999999999999d"_s, 1, {}},
        {u"%c"_s, 0, {}},
        {u"%c"_s, 0xD800, {}},
        {u"%s"_s, 1, {}},
        {u"%n"_s, 1, {}},
        {u"%ld"_s, 1, {}},
        {u"%*d"_s, 1, {}},
        {u"%1$d"_s, 1, {}},
        {u"%05.png"_s, 1, {}},
        {u"%d-%d"_s, 1, {}},
        {u"end%"_s, 1, {}},
        {u"end%05"_s, 1, {}},
    };
    for (const Sample& sample : samples)
        EXPECT_EQ(FormatNumber(sample.format, sample.number), sample.text) << sample.format.toStdString();
}

TEST(FramePath, TheFolderIsJoinedWithoutItsLastSeparatorsAndItsFieldsCount) {
    EXPECT_EQ(BuildFramePath({u"/a/b//\\"_s, u"f%02d.png"_s}, 3), u"/a/b/f03.png"_s);
    EXPECT_EQ(BuildFramePath({u"/take %d"_s, u"f.png"_s}, 3), u"/take 3/f.png"_s);
    EXPECT_EQ(BuildFramePath({u"/100%"_s, u"f%d.png"_s}, 3), std::nullopt);
}

TEST(FramePath, TheSampleSaysWhyThereIsNone) {
    struct {
        FramePathTemplate path;
        bool isGood;
        QString text;
    } const samples[] = {
        {{u"/a"_s, u"f%03d.png"_s}, true, u"/a/f042.png"_s},
        {{u"/%d"_s, u"f.png"_s}, true, u"/42/f.png"_s},
        {{u"/a"_s, u"f.png"_s},
         false,
         u"The filename format doesn't contain a frame number format specifier (eg. %05d)."_s},
        {{u"/"_s, kLong},
         false,
         u"The filename format doesn't contain a frame number format specifier (eg. %05d)."_s},
        {{u"/a"_s, kLong}, false, u"The resulting path is too long."_s},
        {{u"/a"_s, u"%99999d"_s}, false, u"The resulting path is too long."_s},
        {{u"/a"_s, u"%s"_s},
         false,
         u"Only one frame number format specifier (eg. %05d) is possible. Write %% for a percent sign."_s},
    };
    for (const auto& sample : samples) {
        const FramePathSample got = PreviewFramePath(sample.path, 42);
        EXPECT_EQ(got.isGood, sample.isGood) << sample.path.format.toStdString();
        EXPECT_EQ(got.text, sample.text);
    }
}

}  // namespace
}  // namespace pixelgrove
