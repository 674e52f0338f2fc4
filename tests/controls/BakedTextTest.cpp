#include "controls/BakedText.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "controls/Annotations.h"
#include "controls/BakedNote.h"
#include "controls/ControlText.h"

namespace pixelgrove {
namespace {

BakedText Bake(const QString& text, ControlSet* controls = nullptr) {
    const auto own = std::make_unique<ControlSet>();
    return BakeDefines(controls ? *controls : *own, text);
}

TEST(BakedText, EachLineHoldsItsControlsValue) {
    const struct {
        const char *line, *baked;  // baked up to where the old line's rest goes on
    } rows[] = {
        {"#define WIDTH 0.5 // width [0.0..1.0, 0.25]", "#define WIDTH 0.25000 //"},
        {"#define N 8 // n [1..32]", "#define N 16 //"},
        {"#define N -3 // n [-5..5, -3]", "#define N -2 //"},  // half up, then cut towards zero
        {"#define MODE 1 // pick [1, @two, 3]", "#define MODE two //"},
        {"#define MODE 1 // pick [ , two]", "#define MODE  //"},
        {"#define FAST // speed [SLOW, @FAST]", "#define FAST //"},
        {"#define OFF   // way [UP, @FAST]", "#define FAST //"},
        {"#define N // n [1..3]", "#define 2 //"},  // a number takes the name's place likewise
        {"#define F(x) x*x+1.0 // f [0.0..2.0]", "#define F(x) 1.00000 //"},
        {"#define A 1//a[0.0..9e9]", "#define A 4499999744.00000 //"},  // longer than the line was
        {"\t#DEFINE A 1 // 100% [0.0..1.0]", "\t#DEFINE A 0.50000 //"},
        {"#define A//a[0..1]", "#define A//a[0..1]"},  // its third word stands on the next line
        {"#define A 1 // a [5]", "#define A 1 // a [5]"},
    };
    for (const auto& row : rows) {
        const QByteArray line(row.line);
        QByteArray expected(row.baked);
        if (expected.size() < line.size()) expected += ' ' + line.mid(expected.size() + 1);
        EXPECT_EQ(Bake(QString::fromLatin1("// a\r" + line + "\nint b;\n")).text.toStdString(),
                  ("// a\n" + expected + "\nint b;\n").toStdString());
    }
}

TEST(BakedText, LaterLinesKeepTheirPlacesAndAreCounted) {
    const BakedText baked = Bake(
        QStringLiteral("a\n#define A 1//a[0.0..9e9]\r#define B 2 // b [1..5]\n\n  #define C x // c [y, z]"));
    EXPECT_EQ(baked.text,
              "a\n#define A 4499999744.00000 //\n#define B 3 // b [1..5]\n\n  #define C y // c [y, z]");
    ASSERT_EQ(baked.lines.size(), 3u);
    EXPECT_EQ(baked.lines[0].line, 2);
    EXPECT_EQ(baked.lines[1].line, 3);
    EXPECT_EQ(baked.lines[2].line, 5);
    EXPECT_EQ(baked.lines[2].control, QStringLiteral("c "));
    EXPECT_EQ(baked.lines[2].source, QStringLiteral("#define C x // c [y, z]"));
}

TEST(BakedText, AValueOutlivesTheScanWhereItsLabelDoes) {
    const auto controls = std::make_unique<ControlSet>();
    const QString line = QStringLiteral("#define A 1 // amount [0.0..1.0]");
    EXPECT_EQ(Bake(line, controls.get()).text.left(17), "#define A 0.50000");
    controls->defines[0].range.value = 0.75f;
    EXPECT_EQ(Bake(u'\n' + line, controls.get()).text.left(18), "\n#define A 0.75000");
    EXPECT_EQ(Bake(QStringLiteral("#define A 1 // other [0.0..1.0]"), controls.get()).text.left(17),
              "#define A 0.50000");
    EXPECT_EQ(Bake(line, controls.get()).text.left(17), "#define A 0.50000");
}

TEST(BakedText, AFailedStageNamesTheLineThatItsMessagesPointAt) {
    BakedStages baked;
    baked[kStageImage] = {
        {4, QStringLiteral("width "), QStringLiteral("#define W 1 // width [0.0..1.0]"), {}},
        {9, QStringLiteral("n"), QStringLiteral("#define N 1 // n [p, q]"), QStringLiteral("oops")}};
    baked[kStageCommon] = {{2, QStringLiteral("c"), QStringLiteral("#define C 1 // c [0..1]"), {}}};
    const struct {
        uint32_t stage;
        const char* place;
        int line;
        const char* named;
        const char* text = "";
    } rows[] = {{kStageImage, "Image", 9, "Image(9): note: the control \"n\" "},
                {kStageImage, "Common", 2, "Common(2): note: the control \"c\" "},
                {kStageImage, "Common", 9, "Image(4): note: the control \"width \" "},
                {kStageImage, "Image", 7, "Image(9): note: the control \"n\" ", "`oops' undeclared"},
                {kStageBufferA, "Buffer A", 9, "Common(2): note: the control \"c\" "}};
    for (const auto& row : rows) {
        std::array<CompileMessages, kStageCount> errors;
        errors[row.stage] = {{QString::fromLatin1(row.place), row.line, QString::fromLatin1(row.text)}};
        const auto note = BakedNote(row.stage, baked, errors);
        ASSERT_TRUE(note);
        EXPECT_TRUE(note->text.startsWith(QLatin1String(row.named))) << note->text.toStdString();
        EXPECT_EQ(note->text.contains(QLatin1String("2 more lines")), row.stage == kStageImage);
        EXPECT_TRUE(note->text.startsWith(note->place + u'(' + QString::number(note->line)));
    }
    EXPECT_FALSE(BakedNote(kStageBufferA, BakedStages(), {}));
}

struct ControlTextOf : ::testing::Test {
    void SetUp() override {
        const QString text = QStringLiteral(
            "#define WIDTH 0.5 // width [0.0..1.0, 0.25]\n#define N 1 // n [0..9, 3]\n"
            "#define MODE 1 // mode [A, @B]\n#define FAST // speed [SLOW, @FAST]\n"
            "uniform int steps; // s: steps [1..16, 4]\nuniform float gain; // s: gain [0.0..2.0, 1.0]\n");
        ScanDefines(*controls, text);
        ScanUniforms(*controls, text, std::vector<uint8_t>(size_t(text.size())));
    }
    std::unique_ptr<ControlSet> controls = std::make_unique<ControlSet>();
};

TEST_F(ControlTextOf, ExportGivesALineARecord) {
    controls->defines[1].range.value = 3.9f;  // cut, not rounded
    EXPECT_EQ(ExportDefinesToText(*controls).toStdString(),
              "#define WIDTH \t0.250\r\n#define N \t3\r\n#define MODE \tB\r\n#define FAST \tFAST\r\n"
              "#define steps \t4.000\r\n#define gain \t1.000\r\n");
    controls->defines[0].name = QString(16360, u'x');
    EXPECT_EQ(ExportDefinesToText(*controls).size(), 16377);  // the whole lines of at most 16,384 characters
    EXPECT_EQ(ExportDefinesToText(ControlSet()), QString());
}

TEST_F(ControlTextOf, ImportSetsWhatALineNames) {
    const struct {
        const char* line;
        float width, n;
        int mode, speed;
        float steps, gain;
    } rows[] = {
        {"#define WIDTH \t0.75", 0.75f, 3, 1, 1, 4, 1},
        {"const WIDTH 0.5 more", 0.5f, 3, 1, 1, 4, 1},
        {"#define WIDTH 1.5", 0.5f, 3, 1, 1, 4, 1},  // out of its range
        {"#define WIDTH", 0.0f, 3, 1, 1, 4, 1},      // no value is 0
        {"#define N 7.5", 0.0f, 7.5f, 1, 1, 4, 1},
        {"#define other A", 0.0f, 7.5f, 0, 1, 4, 1},  // a list goes by its options alone
        {"#define SLOW", 0.0f, 7.5f, 0, 0, 4, 1},
        {"#define gain 9", 0.0f, 7.5f, 0, 0, 4, 9},  // uniforms take any number
        {"#define steps x", 0.0f, 7.5f, 0, 0, 0, 9},
        {"#define", 0.0f, 7.5f, 0, 0, 0, 9},
        {"", 0.0f, 7.5f, 0, 0, 0, 9},
    };
    for (const auto& row : rows) {
        ImportDefinesFromText(*controls, {QString::fromLatin1(row.line)});
        EXPECT_EQ(controls->defines[0].range.value, row.width) << row.line;
        EXPECT_EQ(controls->defines[1].range.value, row.n) << row.line;
        EXPECT_EQ(controls->defines[2].combo.selection, row.mode) << row.line;
        EXPECT_EQ(controls->defines[3].combo.selection, row.speed) << row.line;
        EXPECT_EQ(controls->uniforms[1].range.value, row.steps) << row.line;
        EXPECT_EQ(controls->uniforms[2].range.value, row.gain) << row.line;
    }
}

TEST_F(ControlTextOf, ImportTakesBackWhatExportGave) {
    const QStringList lines = ExportDefinesToText(*controls).split(QStringLiteral("\r\n"));
    ImportDefinesFromText(*controls, {QStringLiteral("a WIDTH 1"), QStringLiteral("a N 9"),
                                      QStringLiteral("a MODE A"), QStringLiteral("a gain 0")});
    ImportDefinesFromText(*controls, lines);
    EXPECT_EQ(ExportDefinesToText(*controls).split(QStringLiteral("\r\n")), lines);
}

}  // namespace
}  // namespace pixelgrove
