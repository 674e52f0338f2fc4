// pixelgrove-render as a script runs it: exit status, messages, files.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <tuple>

#include "support/TestService.h"
#include "support/WaveFile.h"

namespace {

struct Outcome {
    int exitCode = -1;  // also of one that crashed
    QString out, err;
};

QByteArray Pass(const char* type, const char* name, const QByteArray& code, const QByteArray& inputs = "") {
    QByteArray escaped = code;
    escaped.replace('\\', "\\\\").replace('"', "\\\"").replace('\n', "\\n");
    return QByteArray("{\"inputs\":[") + inputs + "],\"outputs\":[],\"code\":\"" + escaped +
           "\",\"name\":\"" + name + "\",\"description\":\"\",\"type\":\"" + type + "\"}";
}

QByteArray Project(const QByteArray& passes) {
    return "{\"Shader\":{\"ver\":\"0.1\",\"info\":{},\"renderpass\":[" + passes + "]}}";
}

QByteArray Input(const char* ctype, const char* src) {
    return QByteArray("{\"id\":1,\"src\":\"") + src + "\",\"ctype\":\"" + ctype +
           "\",\"channel\":0,\"sampler\":{\"filter\":\"nearest\",\"wrap\":\"clamp\",\"vflip\":\"true\","
           "\"srgb\":\"false\"},\"published\":1}";
}

// A stage's text that makes every pixel this colour.
QByteArray Shows(const QByteArray& colour) {
    return "void mainImage(out vec4 c, in vec2 p) { c = " + colour + "; }";
}

class HeadlessRender : public ::testing::Test {
  protected:
    QString Path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
    void Write(const char* name, const QByteArray& bytes) const {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    // A project of one stage.
    void WriteImage(const char* name, const QByteArray& code, const QByteArray& inputs = "") const {
        Write(name, Project(Pass("image", "Image", code, inputs)));
    }
    QColor Pixel(const char* name = "frame-0001.png") const { return QImage(Path(name)).pixelColor(1, 1); }
    Outcome Run(const QStringList& arguments) const {
        QProcess process;
        process.setWorkingDirectory(folder_.path());
        process.start(program_, arguments);
        Outcome outcome;
        if (!process.waitForFinished(60000) || process.exitStatus() == QProcess::CrashExit) return outcome;
        outcome.exitCode = process.exitCode();
        outcome.out = QString::fromLatin1(process.readAllStandardOutput());
        outcome.err = QString::fromLatin1(process.readAllStandardError());
        return outcome;
    }
    Outcome Run(const char* line) const {
        return Run(QString::fromLatin1(line).split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }

    // The program in a folder of its own, as an installed one, with or without the module that reads
    // pictures.
    void CopyProgram(bool withModule) {
        for (const char* folder : {"bin", "lib/pixelgrove"})
            ASSERT_TRUE(QDir(folder_.path()).mkpath(QString::fromLatin1(folder)));
        program_ = Path("bin/pixelgrove-render");
        const QString built = QStringLiteral(PIXELGROVE_BIN_DIR "/");
        const QString module = QStringLiteral("../lib/pixelgrove/pixelgrove-pictures.so");
        ASSERT_TRUE(QFile::copy(built + QStringLiteral("pixelgrove-render"), program_));
        if (withModule) {
            ASSERT_TRUE(QFile::copy(built + module, Path("bin/") + module));
        }
    }

    // Where nobody listens.
    void SetUp() override { qputenv("PIXELGROVE_SERVICE_URL", "http://127.0.0.1:9"); }
    void TearDown() override { qunsetenv("PIXELGROVE_SERVICE_URL"); }

    QTemporaryDir folder_;
    QString program_ = QStringLiteral(PIXELGROVE_BIN_DIR "/pixelgrove-render");
};

const QByteArray kGradient =
    "uniform float blue;\nvoid mainImage(out vec4 c, in vec2 p) { c = vec4(p / iResolution.xy, blue, 1.0); }";

TEST_F(HeadlessRender, WritesNumberedFramesOfTheAskedSize) {
    WriteImage("a.json", kGradient);
    const Outcome outcome = Run("a.json --frames 3 --size 8x4 --set blue=0.4 --format f%02d.png");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_EQ(QDir(folder_.path()).entryList({QStringLiteral("*.png")}),
              (QStringList{QStringLiteral("f01.png"), QStringLiteral("f02.png"), QStringLiteral("f03.png")}));
    const QImage image(Path("f01.png"));
    ASSERT_EQ(image.size(), QSize(8, 4));
    // Picture row 0 is the top, the highest y.
    EXPECT_EQ(image.pixelColor(0, 3), QColor(16, 32, 102));
    EXPECT_EQ(image.pixelColor(7, 0), QColor(239, 223, 102));
}

TEST_F(HeadlessRender, TheCameraIsLeftAloneAndThatIsSaid) {
    qputenv("PIXELGROVE_CAMERA", "videotestsrc");
    WriteImage("a.json", Shows("texture(iChannel0, p)"), Input("webcam", ""));
    const Outcome outcome = Run("a.json --size 4x4 --frames 40");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err.count(QStringLiteral("webcam")), 1) << outcome.err.toStdString();
    EXPECT_EQ(Pixel("frame-0040.png"), QColor(0, 0, 0));
    qunsetenv("PIXELGROVE_CAMERA");
}

TEST_F(HeadlessRender, TimeStartsOneStepAfterStart) {
    WriteImage("a.json", Shows("vec4(abs(iTime - 0.75) < 1e-6, iTimeDelta == 0.25, iFrame == 0, 1.0)"));
    ASSERT_EQ(Run("a.json --start 0.5 --speed 0.25 --size 4x4").exitCode, 0);
    EXPECT_EQ(Pixel(), QColor(255, 255, 255));
}

TEST_F(HeadlessRender, ValuesArriveExactly) {
    WriteImage("a.json",
               "uniform bool b, d; uniform int i, j; uniform uint u; void mainImage(out vec4 c, in vec2 p) "
               "{ c = vec4(b && !d, i == -3 && j == 16777217, u == 4294967295u, 1.0); }");
    EXPECT_EQ(Run("a.json --size 4x4 --set b=true --set d=0 --set i=-3 --set j=16777217 --set u=4294967295")
                  .err.toStdString(),
              "");
    EXPECT_EQ(Pixel(), QColor(255, 255, 255));
    for (const char* line :
         {"a.json --set i=1.5", "a.json --set u=-1", "a.json --set j=3e9", "a.json --set u=a"})
        EXPECT_EQ(Run(line).exitCode, 2) << line;
}

TEST_F(HeadlessRender, LiveControlsAreListedSetAndDrawn) {
    Write("a.json",
          Project(Pass("buffer", "Buffer A", "#define OTHER 1 // o [1..9]\n" + kGradient) + "," +
                  Pass("image", "Image",
                       "#define RED 0.5 // red [0.0..1.0, 0.25]\n"
                       "#define MODE 1 // mode: pick [NONE, @FULL]\n"
                       "#define OFF // blue [OFF, ON]\n"
                       "#define NONE 0.0\n#define FULL 1.0\n"
                       "uniform float gain; // a!b: gain [0.0..2.0, 0.5]\n"
                       "#ifdef ON\n#define BLUE gain\n#else\n#define BLUE 0.0\n#endif\n"
                       "void mainImage(out vec4 c, in vec2 p) { c = vec4(RED, MODE, BLUE, 1.0); }")));
    EXPECT_EQ(Run("a.json --list-controls --set gain=1.5").out.toStdString(),
              "Defines!red \tfloat\t0..1\t0.25\nDefines!mode: pick \tlist\tNONE,FULL\tFULL\n"
              "Defines!blue \tlist\tOFF,ON\tOFF\nUniforms!Speed\tfloat\t-1..1\t0.03\n"
              "Uniforms!a!b!gain\tfloat\t0..2\t1.5\n");
    const struct {
        QStringList settings;
        QColor colour;
    } rows[] = {
        {{}, QColor(64, 255, 0)},
        {{QStringLiteral("RED=1"), QStringLiteral("mode: pick=0"), QStringLiteral("blue=1")},
         QColor(255, 0, 128)},
        {{QStringLiteral("red=0.5"), QStringLiteral("MODE=NONE"), QStringLiteral("OFF=ON"),
          QStringLiteral("gain=1")},
         QColor(128, 0, 255)},
    };
    for (const auto& row : rows) {
        QStringList arguments{QStringLiteral("a.json"), QStringLiteral("--size"), QStringLiteral("4x4")};
        for (const QString& setting : row.settings)
            arguments << QStringLiteral("--set") << setting;
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.err.toStdString() + std::to_string(outcome.exitCode), "0");
        EXPECT_EQ(Pixel(), row.colour);
    }
    for (const auto& [setting, sentence] :
         {std::pair{"RED=1.5", "RED is a value from 0 to 1."},
          {"MODE=2", "MODE is one of: NONE, FULL."},
          {"OFF=1", "OFF is one of: OFF, ON."},
          {"gain=x", "\"x\" is no value for gain."},
          {"nobody=1", "no stage uses a float, int, uint or bool uniform named nobody."}}) {
        const Outcome outcome =
            Run({QStringLiteral("a.json"), QStringLiteral("--set"), QString::fromLatin1(setting)});
        EXPECT_EQ(outcome.exitCode, 2);
        EXPECT_TRUE(outcome.err.contains(QLatin1String(sentence))) << outcome.err.toStdString();
    }
    const QString source = Run("a.json --print-source image --set RED=1").out;
    EXPECT_TRUE(source.contains(QLatin1String("#define RED 1.00000 // "))) << source.toStdString();
}

TEST_F(HeadlessRender, CubeFacesStandInARow) {
    Write("a.json", Project(Pass("image", "Image", kGradient) + "," +
                            Pass("cubemap", "Cube A",
                                 "void mainCubemap(out vec4 c, in vec2 p, in vec3 o, in vec3 d) { c = "
                                 "vec4(0.5 + 0.5 * d, 1.0); }")));
    const Outcome outcome =
        Run({QStringLiteral("a.json"), QStringLiteral("--stage"), QStringLiteral("Cube A")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    const QImage strip(Path("frame-0001.png"));
    ASSERT_EQ(strip.size(), QSize(6144, 1024));
    EXPECT_NEAR(strip.pixelColor(512, 512).red(), 255, 1);         // +X
    EXPECT_NEAR(strip.pixelColor(1024 + 512, 512).red(), 0, 1);    // -X
    EXPECT_NEAR(strip.pixelColor(2048 + 512, 512).green(), 0, 1);  // +Y holds the ray with y = -1
    EXPECT_NEAR(strip.pixelColor(4096 + 512, 512).blue(), 0, 1);   // +Z holds z = -1
    EXPECT_EQ(Run({QStringLiteral("a.json"), QStringLiteral("--stage"), QStringLiteral("Buffer A")}).exitCode,
              2);
}

TEST_F(HeadlessRender, CompileFailuresAreOneWithMappedMessages) {
    const QByteArray wrong = "void mainImage(out vec4 c, in vec2 p)\n{\n\n    c = wrong;\n}";
    WriteImage("a.json", wrong);
    for (const char* line : {"a.json", "a.json --check"}) {
        const Outcome outcome = Run(line);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_TRUE(outcome.err.contains(QLatin1String("Image(4): error: "))) << outcome.err.toStdString();
    }
    // The driver's column; a file of one stage needs no stage's name.
    Write("a.glsl", wrong);
    Write("b.json", Project(Pass("common", "Common", "float f() {\n  return gone;\n}") + "," +
                            Pass("image", "Image", Shows("vec4(f())"))));
    Write("c.json", "{");
    const struct {
        const char* file;
        const char* start;
    } rows[] = {{"a.json", "^a\\.json:4:(9|1): error: Image: [^\\n]+\\n"},
                {"a.glsl", "^a\\.glsl:4:(9|1): error: (?!Image)[^\\n]+\\n"},
                {"b.json", "^b\\.json:2:(10|1): error: Common: [^\\n]+\\n"},
                {"c.json", "^c\\.json:1:1: error: [^\\n]+\\n"}};
    for (const auto& [file, start] : rows) {
        const Outcome outcome = Run((QByteArray(file) + " --check --format-errors gcc").constData());
        EXPECT_NE(outcome.exitCode, 0);
        EXPECT_TRUE(QRegularExpression(QLatin1String(start)).match(outcome.err).hasMatch())
            << outcome.err.toStdString();
    }
    WriteImage("baked.json", "#define N a // n [0..4]\nvoid mainImage() { N; N }");
    const Outcome baked = Run("baked.json --check");
    EXPECT_EQ(baked.exitCode, 1);
    EXPECT_TRUE(
        baked.err.contains(QLatin1String("Image(1): note: the control \"n \" put its value in place"
                                         " of \"#define N a // n [0..4]\"\n")))
        << baked.err.toStdString();
    WriteImage("good.json", kGradient);
    EXPECT_EQ(Run("good.json --check").exitCode, 0);
    EXPECT_TRUE(QDir(folder_.path()).entryList({QStringLiteral("*.png")}).isEmpty());
}

TEST_F(HeadlessRender, AnOpenGlThatIsTooOldIsNamed) {
    WriteImage("a.json", kGradient);
    qputenv("MESA_GL_VERSION_OVERRIDE", "3.1COMPAT");
    const Outcome outcome = Run("a.json --check");
    qunsetenv("MESA_GL_VERSION_OVERRIDE");
    if (outcome.exitCode == 0) GTEST_SKIP() << "no driver of Mesa";
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_TRUE(outcome.err.contains(QLatin1String("OpenGL 4.2 or newer is needed. This system has: 3.1")));
}

TEST_F(HeadlessRender, PicturesBeyondTheDriversMemoryAreAFailure) {
    WriteImage("a.json", kGradient);
    const Outcome outcome = Run("a.json --check --size 16384x16384");
    if (outcome.exitCode == 0 && outcome.err.isEmpty()) GTEST_SKIP() << "this driver has room for them";
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains(QLatin1String("no room for pictures of 16384 by 16384 pixels")));
}

TEST_F(HeadlessRender, LongExpressionsCompile) {
    const QByteArray sum = "p.x" + QByteArray("+p.x").repeated(40000);
    WriteImage("a.json", Shows("vec4(" + sum + ")"));
    EXPECT_EQ(Run("a.json --check").exitCode, 0);
}

TEST_F(HeadlessRender, PrintsTheWholeSourceOfAStage) {
    Write("a.json", Project(Pass("common", "Common", "float two() { return 2.0; }") + "," +
                            Pass("image", "Image", kGradient)));
    const Outcome outcome = Run("a.json --print-source image");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(outcome.out.startsWith(QLatin1String("#version ")));
    EXPECT_TRUE(outcome.out.contains(
        QLatin1String("uniform sampler2D iChannel0;\nfloat two() { return 2.0; }\nuniform float blue;")));
    EXPECT_TRUE(outcome.out.endsWith(QLatin1String("gl_FragColor = color;\n}\n")));
}

TEST_F(HeadlessRender, BadProjectFilesAreTwoAndSayWhy) {
    const QByteArray good = Project(Pass("image", "Image", kGradient));
    QByteArray junk(50 << 20, '\0');
    for (qsizetype i = 0; i < junk.size(); ++i)
        junk[i] = char(i * 31);
    const std::pair<const char*, QByteArray> files[] = {
        {"empty", ""},
        {"cut", good.left(good.size() / 2)},
        {"junk", junk},
        {"text", "void main() {}"},
        {"deep", "{\"Shader\":" + QByteArray(1000000, '[')},
        {"types", "{\"Shader\":{\"ver\":\"1\",\"info\":[],\"renderpass\":{}}}"},
        {"noimage", Project(Pass("common", "Common", "float x;"))},
        {"sound", Project(Pass("sound", "Sound", kGradient))},
    };
    for (const auto& [name, bytes] : files) {
        Write("bad.json", bytes);
        const Outcome outcome = Run("bad.json");
        EXPECT_EQ(outcome.exitCode, 2) << name;
        EXPECT_FALSE(outcome.err.isEmpty()) << name;
    }
    for (const char* line :
         {"missing.json", ".", "", "--nonsense", "bad.json --out nowhere/at/all", "/dev/zero"}) {
        EXPECT_EQ(Run(line).exitCode, 2) << line;
    }
    Write("good.json", good);
    for (const char* line : {"good.json --set other=1", "good.json --set Speed=3",
                             "good.json --format x%d.xyz", "good.json --out nowhere"}) {
        EXPECT_EQ(Run(line).exitCode, 2) << line;
    }
    EXPECT_EQ(Run("--help").exitCode, 0);
    EXPECT_TRUE(Run("--version").out.startsWith(QLatin1String("pixelgrove-render ")));
}

TEST_F(HeadlessRender, MediaThatLieAreACompileFailure) {
    QByteArray volume("BIN\0", 4);
    for (const quint32 value : {1024u, 1024u, 4096u, 1u})
        volume.append(reinterpret_cast<const char*>(&value), 4);
    Write("lie.bin", volume);
    QByteArray bitmap("BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0", 18);
    for (const quint32 value : {60000u, 60000u})
        bitmap.append(reinterpret_cast<const char*>(&value), 4);
    bitmap.append(QByteArray("\x01\0\x18\0", 4)).append(QByteArray(24, '\0'));
    Write("lie.bmp", bitmap);
    const QLatin1String damaged("\" is damaged or cut short.\n");
    const QLatin1String missing(
        "Image: the texture of channel 0 can't be used: no file \"gone.png\" was found in ");
    for (const auto& [type, src, words] : {std::tuple{"volume", "lie.bin", damaged},
                                           {"texture", "lie.bmp", damaged},
                                           {"texture", "gone.png", missing},
                                           {"cubemap", "lie.bmp", damaged}}) {
        WriteImage("a.json", kGradient, Input(type, src));
        const Outcome outcome = Run("a.json --size 8x8");
        EXPECT_EQ(outcome.exitCode, 1) << type << " " << src;
        // Once as a warning of the load, once as what the compile failed of.
        EXPECT_EQ(outcome.err.count(words), 2) << outcome.err.toStdString();
    }
}

TEST_F(HeadlessRender, WhatALoadLeavesOutIsSaidOnStderr) {
    Write("a.json", Project(Pass("image", "Image", kGradient) + "," + Pass("sound", "Sound", "x") + "," +
                            Pass("buffer", "Buffer E", "x")));
    const Outcome outcome = Run("a.json --check");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err.toStdString(),
              "pixelgrove-render: a.json: The sound pass was left out; there is no such stage here.\n"
              "pixelgrove-render: a.json: The pass \"Buffer E\" was left out; no stage has that name.\n");
}

TEST_F(HeadlessRender, OfSeveralShadersOneIsPicked) {
    const auto shader = [](const char* id, const char* code) {
        return QByteArray("{\"info\":{\"id\":\"") + id + "\",\"name\":\"N\"},\"renderpass\":[" +
               Pass("image", "Image", code) + "]}";
    };
    Write("many.json",
          "{\"shaders\":[" + shader("one111", kGradient) + "," + shader("two222", "no GLSL at all") + "]}");
    Write("plain.glsl", kGradient);
    const QString list = QStringLiteral("\n#1\tone111\t\"N\"\n#2\ttwo222\t\"N\"\n");
    const std::tuple<const char*, int, QString> rows[] = {
        {"many.json", 2, QStringLiteral("holds 2 shaders. Choose one with --pick:") + list},
        {"many.json --pick none", 2, QStringLiteral("holds 2 shaders. None of them is \"none\":") + list},
        {"many.json --check --pick one111", 0, {}},
        {"many.json --check --pick #1", 0, {}},
        {"many.json --check --pick two222", 1, QStringLiteral("error")},
        {"plain.glsl --check", 0, {}},
        {"plain.glsl --check --pick one111", 2, QStringLiteral("there is no shader \"one111\".")},
    };
    for (const auto& [line, exitCode, words] : rows) {
        const Outcome outcome = Run(line);
        EXPECT_EQ(outcome.exitCode, exitCode) << line << '\n' << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains(words)) << outcome.err.toStdString();
    }
}

TEST_F(HeadlessRender, PicturesNeedTheModuleAndNothingElseDoes) {
    Write("a.json", Project(Pass("image", "Image", kGradient)));
    for (const bool isThere : {true, false}) {
        CopyProgram(isThere);
        EXPECT_EQ(Run("a.json --size 4x4").exitCode, 0);
        const Outcome outcome = Run("a.json --size 4x4 --format a.jpg");
        EXPECT_EQ(outcome.exitCode, isThere ? 0 : 2);
        EXPECT_EQ(outcome.err.contains(QStringLiteral("a part of the program is missing")), !isThere);
        EXPECT_EQ(QFile::remove(Path("a.jpg")), isThere);
        ASSERT_TRUE(QDir(Path("bin")).removeRecursively() && QDir(Path("lib")).removeRecursively());
    }
}

TEST_F(HeadlessRender, AShadersIdIsFetchedOnce) {
    pixelgrove::test::TestService service;
    ASSERT_TRUE(service.IsReady());
    QImage white(4, 4, QImage::Format_RGB32);
    white.fill(Qt::white);
    ASSERT_TRUE(white.save(service.FilePath("media/white.png")));
    service.Put("shaders/AbC12.json",
                Project(Pass("image", "Image", Shows("texelFetch(iChannel0, ivec2(0), 0)"),
                             Input("texture", "/media/a/white.png"))));
    // The cache is below the program's own folder.
    CopyProgram(true);
    qputenv("SSL_CERT_FILE", service.CertificatePath());
    qputenv("PIXELGROVE_SERVICE_URL", service.Https("/gzip").toLocal8Bit());
    for (const bool isThere : {true, false}) {
        if (!isThere) service.Stop();
        const Outcome outcome = Run("AbC12 --size 4x4");
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
        EXPECT_EQ(outcome.err.toStdString(), "");
        EXPECT_EQ(Pixel(), QColor(255, 255, 255));
        ASSERT_TRUE(QFile::remove(Path("frame-0001.png")));
    }
    const Outcome outcome = Run("other");
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.err.toStdString(),
              "pixelgrove-render: other: The shader \"other\" can't be loaded: \"127.0.0.1\" refuses "
              "connections.\n");
    qunsetenv("SSL_CERT_FILE");
}

QByteArray AllOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

TEST_F(HeadlessRender, RateAndDateAreTheFilmsOwn) {
    WriteImage("a.json",
               Shows("vec4(iFrameRate == 0.5, iDate.xyz == vec3(2027, 1, 1), iDate.w == 3.0, 1.0)"));
    ASSERT_EQ(Run("a.json --size 4x4 --frames 3 --rate 0.5 --date 2026-12-31T23:59:59").exitCode, 0);
    EXPECT_EQ(Pixel(), QColor(255, 0, 0));
    EXPECT_EQ(Pixel("frame-0003.png"), QColor(255, 255, 255));
}

TEST_F(HeadlessRender, ARangeOfFramesIsTheSameAsInOneRun) {
    using pixelgrove::test::Tone;
    Write("a.wav", pixelgrove::test::WaveFile(Tone(3000.0, 8000, 8000), 8000));
    const QByteArray all =
        "vec4 all(vec2 p) { return fract(vec4(iTime * 9.7, iFrame * 0.13, iDate.w * 0.011 + "
        "iFrameRate, iTimeDelta + iChannelTime[1]) + p.xyyx * 0.05); }\n";
    const QByteArray sound = Input("musicstream", "");
    const struct {
        const char* name;
        QByteArray image, input;
        const char* said;
    } rows[] = {
        {"alone", "c = all(p);", "", "frames 1 to 4 are left out: "},
        {"sound", "c = all(p) * 0.5 + 0.5 * texture(iChannel0, p / 8.0).x;", sound,
         "frames 3 to 4 are left out: "},
        {"own", "c = fract(texelFetch(iChannel1, ivec2(p), 0) * 0.7 + all(p));", sound,
         "frames 1 to 4 are drawn without being written: Image "},
    };
    for (const auto& row : rows) {
        WriteImage("a.json", all + "void mainImage(out vec4 c, in vec2 p) { " + row.image + " c.w = 1.0; }",
                   row.input);
        const auto run = [&](const QString& range) {
            return Run((QStringLiteral("a.json --size 8x8 --rate 7 --date 2026-11-23 --audio a.wav --format "
                                       "%d.png ") +
                        range)
                           .split(u' '));
        };
        ASSERT_EQ(run(QStringLiteral("--frames 9 --jobs 3")).err.toStdString(), "") << row.name;
        QList<QByteArray> whole;
        for (int frame = 1; frame <= 9; ++frame) {
            whole.append(AllOf(Path(qPrintable(QStringLiteral("%1.png").arg(frame)))));
            QFile::remove(Path(qPrintable(QStringLiteral("%1.png").arg(frame))));
        }
        EXPECT_NE(whole[3], whole[4]);
        for (const int first : {2, 5, 8}) {
            const Outcome outcome = run(QStringLiteral("--first %1 --frames 2").arg(first));
            ASSERT_EQ(outcome.exitCode, 0);
            EXPECT_FALSE(outcome.err.contains(QLatin1String("would make the same")));
            if (first == 5) {
                EXPECT_TRUE(outcome.err.contains(QLatin1String(row.said))) << outcome.err.toStdString();
            }
            for (const int frame : {first, first + 1})
                EXPECT_EQ(AllOf(Path(qPrintable(QStringLiteral("%1.png").arg(frame)))), whole[frame - 1])
                    << row.name << " " << frame;
        }
    }
    const QString said = Run("a.json --size 8x8 --first 2").err;
    for (const char* name : {"iDate, which --date ", "iFrameRate, which --rate "})
        EXPECT_TRUE(said.contains(QLatin1String(name))) << said.toStdString();
}

TEST_F(HeadlessRender, AToneHasItsBarAtItsFrequency) {
    using pixelgrove::test::Tone;
    WriteImage("a.json", Shows("vec4(texelFetch(iChannel0, ivec2(p.x, 0), 0).x > 0.99)"),
               Input("musicstream", ""));
    for (const int hertz : {1000, 5000, 15000}) {
        Write("a.wav", pixelgrove::test::WaveFile(Tone(hertz, 48000, 48000), 48000));
        ASSERT_EQ(Run("a.json --size 512x2 --frames 30 --audio a.wav").err.toStdString(), "");
        const QImage picture(Path("frame-0030.png"));
        const int column = int(hertz / 20000.0 * 512);
        int full = 0;
        for (int x = 0; x < 512; ++x) {
            if (picture.pixelColor(x, 0) != QColor(Qt::white)) continue;
            ++full;
            EXPECT_NEAR(x, column, 4) << hertz;
        }
        EXPECT_GT(full, 0) << hertz;
    }
}

TEST_F(HeadlessRender, WhatCantBeHeardIsNamed) {
    WriteImage("a.json", kGradient);
    Write("text.wav", "no sound");
    for (const char* file : {"none.wav", ".", "text.wav", "a.json", "/dev/zero"}) {
        const Outcome outcome =
            Run({QStringLiteral("a.json"), QStringLiteral("--audio"), QLatin1String(file)});
        EXPECT_EQ(outcome.exitCode, 2);
        EXPECT_TRUE(outcome.err.startsWith(
            QStringLiteral("pixelgrove-render: %1 can't be heard: ").arg(QLatin1String(file))))
            << outcome.err.toStdString();
    }
}

TEST_F(HeadlessRender, APipeCarriesThePixelsOfTheFiles) {
    WriteImage("a.json", Shows("vec4(p / 8.0, fract(iTime * 7.0), 1.0)"));
    ASSERT_EQ(Run("a.json --size 7x5 --frames 3").exitCode, 0);
    QByteArray pixels;
    for (int frame = 1; frame <= 3; ++frame) {
        const QImage image =
            QImage(Path(qPrintable(QStringLiteral("frame-%1.png").arg(frame, 4, 10, QChar(u'0')))))
                .convertToFormat(QImage::Format_RGB888);
        for (int row = 0; row < 5; ++row)
            pixels.append(reinterpret_cast<const char*>(image.constScanLine(row)), 21);
    }
    const auto shell = [&](const char* line) {
        QProcess process;
        process.setWorkingDirectory(folder_.path());
        process.start(QStringLiteral("bash"),
                      {QStringLiteral("-c"), QString::fromLatin1(line).replace(u'@', program_)});
        EXPECT_TRUE(process.waitForFinished(60000));
        return process.readAllStandardError();
    };
    EXPECT_EQ(shell("@ a.json --size 7x5 --frames 3 --pipe > rgb"), "");
    EXPECT_EQ(AllOf(Path("rgb")), pixels);
    EXPECT_EQ(shell("@ a.json --size 7x5 --frames 3 --rate 25 --pipe y4m > y4m"), "");
    const QByteArray header = "YUV4MPEG2 W7 H5 F25:1 Ip A1:1 C444 XCOLORRANGE=LIMITED\nFRAME\n";
    EXPECT_TRUE(AllOf(Path("y4m")).startsWith(header));
    EXPECT_EQ(AllOf(Path("y4m")).size(), header.size() + 2 * 6 + pixels.size());
    EXPECT_EQ(
        shell("@ a.json --size 1280x720 --frames 9 --pipe | head -c 9 > cut; echo ${PIPESTATUS[0]} >&2"),
        "pixelgrove-render: the program that reads the frames ended before it had frame 1.\n2\n");
    EXPECT_EQ(
        shell("@ a.json --pipe > /dev/full; echo $? >&2"),
        "pixelgrove-render: frame 1 can't be written to standard output: No space left on device.\n2\n");
}

}  // namespace
