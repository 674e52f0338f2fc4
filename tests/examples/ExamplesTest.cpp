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

// Whether an eye would see no difference: not in any channel's mean, nor in more than a few pixels.
bool IsAlike(const QImage& first, const QImage& second) {
    if (first.size() != second.size() || first.isNull()) return false;
    const QImage a = first.convertToFormat(QImage::Format_RGB888), b = second.convertToFormat(a.format());
    std::array<int64_t, 3> sums{};
    int64_t farPixels = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            int largest = 0;
            for (size_t channel = 0; channel < sums.size(); ++channel) {
                const size_t at = 3 * size_t(x) + channel;
                const int step = std::abs(a.constScanLine(y)[at] - b.constScanLine(y)[at]);
                sums[channel] += step;
                largest = std::max(largest, step);
            }
            farPixels += largest > kFarStep;
        }
    }
    const double pixels = double(a.width()) * a.height();
    return double(std::ranges::max(sums)) < kMaxChannelMean * pixels &&
           double(farPixels) <= kMaxFarShare * pixels;
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
        EXPECT_TRUE(IsAlike(drawn, golden));
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
