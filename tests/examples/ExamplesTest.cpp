// The example projects, drawn by pixelgrove-render as users have it and compared with stored pictures.
// scripts/update_goldens draws those anew.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <algorithm>
#include <vector>

#include "examples/PictureDifference.h"

namespace {

// A picture whose channels all span less than this is as good as one flat colour.
constexpr int kLeastChannelRange = 40;
// Cube A alone is six million pixels a frame, which takes a while without a GPU.
constexpr int kRenderLimitMs = 240000;

struct GoldenRow {
    QString project, size;
    std::vector<int> frames;  // ascending
};

QString SourcePath(const QString& path) {
    return QStringLiteral(PIXELGROVE_SOURCE_DIR "/") + path;
}

QString GoldenPath(const QString& project, int frame) {
    return SourcePath(
        QStringLiteral("tests/examples/%1-%2.png").arg(project).arg(frame, 4, 10, QLatin1Char('0')));
}

std::vector<GoldenRow> ReadGoldenRows() {
    std::vector<GoldenRow> rows;
    QFile file(SourcePath(QStringLiteral("tests/examples/goldens.txt")));
    if (!file.open(QIODevice::ReadOnly)) return rows;
    for (const QString& line : QString::fromLatin1(file.readAll()).split(QLatin1Char('\n'))) {
        const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (words.size() < 3 || words[0].startsWith(QLatin1Char('#'))) continue;
        GoldenRow row{words[0], words[1], {}};
        for (const QString& word : words.mid(2))
            row.frames.push_back(word.toInt());
        rows.push_back(row);
    }
    return rows;
}

void PrintTo(const GoldenRow& row, std::ostream* out) {
    *out << row.project.toStdString();
}

class ExampleTest : public ::testing::TestWithParam<GoldenRow> {};

TEST_P(ExampleTest, LooksLikeItsGoldens) {
    const GoldenRow& row = GetParam();
    const QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(
        QStringLiteral(PIXELGROVE_BIN_DIR "/pixelgrove-render"),
        {SourcePath(QStringLiteral("data/examples/%1.json").arg(row.project)), QStringLiteral("--frames"),
         QString::number(row.frames.back()), QStringLiteral("--size"), row.size, QStringLiteral("--out"),
         folder.path(), QStringLiteral("--format"), QStringLiteral("%04d.png")});
    ASSERT_TRUE(program.waitForFinished(kRenderLimitMs)) << program.errorString().toStdString();
    ASSERT_EQ(program.exitStatus(), QProcess::NormalExit);
    ASSERT_EQ(program.exitCode(), 0) << program.readAll().toStdString();

    for (const int frame : row.frames) {
        SCOPED_TRACE(frame);
        const QImage drawn(folder.filePath(QStringLiteral("%1.png").arg(frame, 4, 10, QLatin1Char('0'))));
        const QImage golden(GoldenPath(row.project, frame));
        ASSERT_FALSE(drawn.isNull());
        ASSERT_FALSE(golden.isNull()) << "run scripts/update_goldens";
        EXPECT_GE(WidestChannelRange(drawn), kLeastChannelRange) << "one flat colour";
        const PictureDifference difference = ComparePictures(drawn, golden);
        EXPECT_LT(difference.worstChannelMean, kMaxChannelMean);
        EXPECT_LE(difference.farShare, kMaxFarShare);
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, ExampleTest, ::testing::ValuesIn(ReadGoldenRows()),
                         [](const auto& row) { return row.param.project.toStdString(); });

TEST(ExampleFilesTest, EveryProjectHasGoldensAndTheDefaultExists) {
    QSet<QString> tested;
    for (const GoldenRow& row : ReadGoldenRows())
        tested.insert(row.project + QStringLiteral(".json"));
    const QStringList files =
        QDir(SourcePath(QStringLiteral("data/examples"))).entryList({QStringLiteral("*.json")});
    EXPECT_FALSE(files.isEmpty());
    EXPECT_EQ(QSet<QString>(files.begin(), files.end()), tested);

    QFile defaultName(SourcePath(QStringLiteral("data/examples/default.txt")));
    ASSERT_TRUE(defaultName.open(QIODevice::ReadOnly));
    EXPECT_TRUE(files.contains(QString::fromLatin1(defaultName.readLine()).trimmed()));
}

// The tolerance lets rounding pass and nothing that an eye would notice.
TEST(PictureDifferenceTest, TellsRoundingFromChange) {
    const QImage picture(GoldenPath(QStringLiteral("lantern_lake"), 40));
    ASSERT_FALSE(picture.isNull());
    QImage rounded = picture, brighter = picture;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor color = picture.pixelColor(x, y);
            const auto add = [&color](int step) {
                return QColor(std::clamp(color.red() + step, 0, 255),
                              std::clamp(color.green() + step, 0, 255),
                              std::clamp(color.blue() + step, 0, 255));
            };
            rounded.setPixelColor(x, y, add((x + y) % 2 ? 2 : -2));
            brighter.setPixelColor(x, y, add(5));
        }
    }
    QImage flat = picture;
    flat.fill(picture.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixelColor(0, 0));

    EXPECT_TRUE(IsAlike(ComparePictures(picture, rounded)));
    EXPECT_FALSE(IsAlike(ComparePictures(picture, brighter)));
    EXPECT_FALSE(IsAlike(ComparePictures(picture, picture.mirrored(true, false))));
    EXPECT_FALSE(
        IsAlike(ComparePictures(picture, picture.copy(0, 0, picture.width(), picture.height() - 1))));
    EXPECT_FALSE(IsAlike(ComparePictures(picture, flat)));
    EXPECT_FALSE(IsAlike(ComparePictures(QImage(), QImage())));
    EXPECT_LT(WidestChannelRange(flat), kLeastChannelRange);
}

}  // namespace
