// pixelgrove where it ends before it shows a window.
#include <gtest/gtest.h>

#include <QProcess>

#include "app/WorkbenchOptions.h"

namespace pixelgrove {
namespace {

TEST(WorkbenchStart, SaysWhatItIsOrWhatIsWrong) {
    const struct {
        const char *arguments, *platform;
        int exitCode;
        const char *out, *err;  // how they begin
    } rows[] = {
        {"--help", "wayland", 0, "Usage: pixelgrove", ""},
        {"a.json --version", "", 0, "pixelgrove " PIXELGROVE_VERSION, ""},
        {"--help --what", "", 2, "", "pixelgrove: Unknown option --what.\nUsage: pixelgrove"},
        {"-platform offscreen", "", 2, "", "pixelgrove: Unknown option -platform."},
        {"a.json", "", 1, "", "pixelgrove: no X display"},
        {"", "wayland;xcb", 1, "", "pixelgrove: no X display"},
        {"", "wayland", 1, "", "pixelgrove: QT_QPA_PLATFORM asks for \"wayland\""},
        {"", "xcbfoo", 1, "", "pixelgrove: QT_QPA_PLATFORM asks for \"xcbfoo\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.arguments) + " with " + row.platform);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("DISPLAY"));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QString::fromLatin1(row.platform));
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(PIXELGROVE_BIN_DIR "/pixelgrove"),
                      QString::fromLatin1(row.arguments).split(u' ', Qt::SkipEmptyParts));
        ASSERT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), row.exitCode);
        const QByteArray out = program.readAllStandardOutput(), err = program.readAllStandardError();
        EXPECT_TRUE(row.out[0] ? out.startsWith(row.out) : out.isEmpty()) << out.toStdString();
        EXPECT_TRUE(row.err[0] ? err.startsWith(row.err) : err.isEmpty()) << err.toStdString();
    }
}

TEST(WorkbenchStart, TellsFilesFromOptions) {
    const WorkbenchOptions options = ParseWorkbenchOptions(
        QStringLiteral("--watch a.json -session 12_34 b.glsl -- --help -x").split(u' '));
    EXPECT_TRUE(options.watch);
    EXPECT_EQ(options.files.join(u' '), QStringLiteral("a.json b.glsl --help -x"));
    EXPECT_TRUE(options.error.isEmpty() && !options.help);
}

}  // namespace
}  // namespace pixelgrove
