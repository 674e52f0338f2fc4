// The three forms of palette files, and what stretching makes of them. Expected numbers come from exact
// fractions, at places where the result is no whole number, where rounding could go either way.
#include "media/PaletteFile.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <array>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Files.h"

namespace pixelgrove {
namespace {

constexpr uint32_t kPadded = 0x42004200, kCounted = 0x42006900;

QByteArray Word(uint32_t value) {
    QByteArray bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes.append(char(value >> shift));
    return bytes;
}

// Each byte another one for a while.
QByteArray Steps(qsizetype length) {
    QByteArray bytes;
    for (qsizetype i = 0; i < length; ++i)
        bytes.append(char(i * 5 + 3));
    return bytes;
}

using Colour = std::array<int, 3>;

Colour At(const PaletteBlock& block, int i) {
    return {block.red[i], block.green[i], block.blue[i]};
}

TEST(PaletteFile, EachFormGivesItsColours) {
    const auto block = std::make_unique<PaletteBlock>();
    ASSERT_TRUE(ReadPalette(Word(kPadded) + Word(944) + Steps(944), *block));
    EXPECT_EQ(block->count, 236);
    EXPECT_EQ(At(*block, 0), (Colour{3, 8, 13}));
    EXPECT_EQ(At(*block, 1), (Colour{23, 28, 33}));
    EXPECT_EQ(At(*block, 235), (Colour{4703 % 256, 4708 % 256, 4713 % 256}));
    EXPECT_EQ(At(*block, 236), (Colour{0, 0, 0}));

    ASSERT_TRUE(ReadPalette(Word(kCounted) + Word(2) + QByteArray("abcdefg"), *block));
    EXPECT_EQ(block->count, 2);
    EXPECT_EQ(At(*block, 0), (Colour{'a', 'b', 'c'}));
    EXPECT_EQ(At(*block, 1), (Colour{'d', 'e', 'f'}));
    EXPECT_EQ(At(*block, 2), (Colour{0, 0, 0})) << "nothing is left of the palette before";

    // Byte i of the file is i, and 4 times that what a colour gets: after the first four, green and blue of
    // entry 1 are bytes 4 and 5, and its red is byte 6, the first of the entry behind it.
    QByteArray plain(768, '\0');
    for (qsizetype i = 0; i < plain.size(); ++i)
        plain[i] = char(i % 64);
    ASSERT_TRUE(ReadPalette(plain, *block));
    EXPECT_EQ(block->count, 256);
    EXPECT_EQ(At(*block, 0), (Colour{6 * 4, 4 * 4, 5 * 4}));
    EXPECT_EQ(At(*block, 1), At(*block, 0)) << "1 * 254 / 256 is 0";
    EXPECT_EQ(At(*block, 2), (Colour{9 * 4, 7 * 4, 8 * 4}));
    EXPECT_EQ(At(*block, 128), (Colour{(387 % 64) * 4, (385 % 64) * 4, (386 % 64) * 4}));
    EXPECT_EQ(At(*block, 255), (Colour{(765 % 64) * 4, (763 % 64) * 4, (764 % 64) * 4}));
    // What has more than 6 bits loses the upper two.
    plain[4] = char(0x7F);
    ASSERT_TRUE(ReadPalette(plain, *block));
    EXPECT_EQ(block->green[0], 0xFC);
}

TEST(PaletteFile, CountsAndLengths) {
    const QByteArray padded = Word(kPadded) + Word(944);
    const auto counted = [](int32_t count, qsizetype bytes) {
        return Word(kCounted) + Word(uint32_t(count)) + Steps(bytes);
    };
    const struct {
        QByteArray bytes;
        int count;  // -1 for a file that is none
    } cases[] = {
        {Steps(767), -1},
        {Steps(768), 256},
        {Steps(769), -1},
        {Word(kPadded) + Steps(764), -1},  // 768 bytes, but of another form
        {counted(253, 760), 253},
        {counted(254, 760), -1},
        {Word(kPadded) + Word(943) + Steps(944), -1},
        {padded + Steps(1000), 236},
        {counted(-1, 0), 0},
        {counted(INT32_MIN, 9), 0},
        {counted(0, 0), 0},
        {counted(1, 3), 1},
        {counted(2048, 6144), 2048},
        {counted(2049, 6147), -1},
        {counted(INT32_MAX, 6147), -1},
        {counted(INT32_MAX / 3 * 2 + 3, 6147), -1},  // three times which overflows to little
        {Word(0x00420042) + Steps(940), -1},         // the other byte order
        {{}, -1},
    };
    const auto block = std::make_unique<PaletteBlock>();
    for (const auto& c : cases) {
        block->count = 77;
        EXPECT_EQ(ReadPalette(c.bytes, *block), c.count >= 0) << &c - cases;
        EXPECT_EQ(block->count, c.count >= 0 ? c.count : 77) << &c - cases;
    }
    // Cut off anywhere: exactly allocated, so that reading on would be seen.
    for (const QByteArray& whole : {padded + Steps(944), counted(700, 2100)}) {
        for (qsizetype length = 0; length < whole.size(); ++length) {
            const std::vector<char> cut(whole.begin(), whole.begin() + length);
            EXPECT_FALSE(ReadPalette(QByteArrayView(cut), *block)) << length;
        }
        EXPECT_TRUE(ReadPalette(whole, *block));
    }
}

TEST(PaletteFile, LoadsPlainFilesOnly) {
    QTemporaryDir folder;
    const auto block = std::make_unique<PaletteBlock>();
    const QString path = folder.filePath(QStringLiteral("a.pal"));
    ASSERT_TRUE(WriteWholeFile(path, Steps(768)));
    EXPECT_TRUE(LoadPaletteFile(path, *block));
    ASSERT_TRUE(WriteWholeFile(path, Word(kCounted) + Word(1) + Steps(qsizetype(4) << 20)));
    for (const QString& none : {path, folder.path(), folder.filePath(QStringLiteral("absent")), QString(),
                                QStringLiteral("/dev/zero")})
        EXPECT_FALSE(LoadPaletteFile(none, *block)) << qPrintable(none);
    for (const auto* name : {u"a.PAL", u"x.colour.bak", u".pal"})
        EXPECT_TRUE(IsPaletteName(QStringView(name)));
    for (const auto* name : {u"palette", u"a.co", u""})
        EXPECT_FALSE(IsPaletteName(QStringView(name)));
}

std::vector<uint8_t> Channel(int count, int step, int first) {
    std::vector<uint8_t> channel(kMaxPaletteColours);
    for (int i = 0; i < count; ++i)
        channel[size_t(i)] = uint8_t(i * step + first);
    return channel;
}

TEST(Resample, FollowsTheCurve) {
    const size_t places[] = {0, 1, 9, 700, 1024, 2043, 2047};
    const struct {
        int count, step, first;
        int levels[7];
    } cases[] = {
        {0, 0, 0, {0, 0, 0, 0, 0, 0, 0}},
        {1, 0, 77, {77, 77, 77, 77, 77, 77, 77}},
        {2, 240, 10, {10, 10, 11, 92, 130, 249, 250}},
        {236, 37, 11, {11, 15, 49, 168, 115, 102, 2}},
        {256, 91, 200, {200, 179, 34, 163, 137, 63, 109}},
    };
    for (const auto& c : cases) {
        std::vector<uint8_t> channel = Channel(c.count, c.step, c.first);
        ASSERT_TRUE(ResamplePalette(channel, c.count, kMaxPaletteColours));
        for (size_t i = 0; i < std::size(places); ++i)
            EXPECT_EQ(channel[places[i]], c.levels[i]) << c.count << " at " << places[i];
    }
    std::vector<uint8_t> shrunk = Channel(2048, 5, 0);
    ASSERT_TRUE(ResamplePalette(shrunk, 2048, 16));
    shrunk.resize(16);
    // 269.36 and 262.24 are too bright.
    EXPECT_EQ(shrunk, (std::vector<uint8_t>{0, 170, 84, 162, 169, 83, 255, 168, 82, 217, 167, 81, 255, 166,
                                            80, 251}));
    // Every level comes back: 255 times a 255th of it isn't cut to the one below.
    std::vector<uint8_t> same = Channel(256, 1, 0);
    ASSERT_TRUE(ResamplePalette(same, 256, 256));
    EXPECT_EQ(same, Channel(256, 1, 0));
}

TEST(Resample, RefusesCountsWithoutRoom) {
    std::vector<uint8_t> channel = Channel(16, 3, 1);
    channel.resize(16);
    for (const auto& [source, target] : {std::pair(17, 16), {16, 17}, {-1, 16}, {16, 0}, {1, INT32_MAX}})
        EXPECT_FALSE(ResamplePalette(channel, source, target)) << source << ' ' << target;
    EXPECT_EQ(channel[15], 46);
}

TEST(Resample, APaletteOfFullSizeStays) {
    const auto block = std::make_unique<PaletteBlock>();
    ASSERT_TRUE(ReadPalette(Word(kCounted) + Word(2048) + Steps(6144), *block));
    const PaletteBlock before = *block;
    FillPalette(*block);
    EXPECT_EQ(0, std::memcmp(&before, block.get(), sizeof before));
    ASSERT_TRUE(ReadPalette(Word(kCounted) + Word(2) + QByteArray("\x0A\x00\x07\xFA\xFF\x07", 6), *block));
    FillPalette(*block);
    EXPECT_EQ(block->count, 2048);
    EXPECT_EQ(At(*block, 1024), (Colour{130, 127, 7}));
}

}  // namespace
}  // namespace pixelgrove
