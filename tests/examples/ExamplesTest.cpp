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
#include <array>
#include <vector>

namespace {

// How much drivers may round differently.
constexpr int kFarStep = 24;
constexpr double kMaxChannelMean = 3.0;
constexpr double kMaxFarShare = 0.02;
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

std::array<int, 3> ChannelsOf(QRgb pixel) {
    return {qRed(pixel), qGreen(pixel), qBlue(pixel)};
}

// How far two pictures are apart.
struct PictureDifference {
    double worstChannelMean = 255.0;  // mean absolute difference of the worst of red, green and blue, 0..255
    double farShare = 1.0;            // part of the pixels with a channel that is more than kFarStep off
};

// Both extremes for pictures of different sizes or without pixels.
PictureDifference ComparePictures(const QImage& left, const QImage& right) {
    if (left.size() != right.size() || left.isNull()) return {};
    std::array<int64_t, 3> sums{};
    int64_t farPixels = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const std::array<int, 3> a = ChannelsOf(left.pixel(x, y)), b = ChannelsOf(right.pixel(x, y));
            bool isFar = false;
            for (size_t channel = 0; channel < sums.size(); ++channel) {
                const int step = std::abs(a[channel] - b[channel]);
                sums[channel] += step;
                isFar = isFar || step > kFarStep;
            }
            farPixels += isFar ? 1 : 0;
        }
    }
    const double pixels = double(left.width()) * left.height();
    return {double(*std::max_element(sums.begin(), sums.end())) / pixels, double(farPixels) / pixels};
}

bool IsAlike(const PictureDifference& difference) {
    return difference.worstChannelMean < kMaxChannelMean && difference.farShare <= kMaxFarShare;
}

class ExampleTest : public ::testing::TestWithParam<GoldenRow> {};

void ExpectGoldens(const GoldenRow& row) {
    const QTemporaryDir folder;
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
        ASSERT_FALSE(golden.isNull()) << "run scripts/update_goldens";
        const PictureDifference difference = ComparePictures(drawn, golden);
        EXPECT_TRUE(IsAlike(difference)) << difference.worstChannelMean << ' ' << difference.farShare;
    }
}

TEST_P(ExampleTest, LooksLikeItsGoldens) {
    ExpectGoldens(GetParam());
}

// Buffers, a cube map and a picture file in a context without what core profiles have left behind.
TEST(CoreProfileTest, DrawsTheSame) {
    qputenv("PIXELGROVE_GL_CORE", "1");
    for (const GoldenRow& row : ReadGoldenRows()) {
        if (row.project == QLatin1String("liquid_chrome") || row.project == QLatin1String("golden_seams"))
            ExpectGoldens(row);
    }
    qunsetenv("PIXELGROVE_GL_CORE");
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

}  // namespace
