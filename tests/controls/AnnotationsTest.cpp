#include "controls/Annotations.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <cmath>
#include <memory>
#include <string>

#include "core/CommentMap.h"

namespace pixelgrove {
namespace {

// "PATH|TYPE MINIMUM..MAXIMUM=VALUE" or "PATH|list OPTION,OPTION=SELECTION", and "|NAME VALUE" of a define.
QString Describe(const UniformControl& control) {
    static const char* const kTypes[] = {"none", "float", "int", "uint", "bool", "list"};
    QString text = control.treePath + u'|' + QString::fromLatin1(kTypes[control.type]) + u' ';
    EXPECT_TRUE(control.treePath.endsWith(u'!' + control.displayName));
    EXPECT_EQ(control.kind, control.type == kControlList);
    if (control.kind == 1) {
        QStringList options;
        for (const ControlOption& option : control.options) {
            EXPECT_EQ(option.index, options.size());
            options += option.text;
        }
        EXPECT_EQ(control.combo.count, options.size());
        text += options.join(u',') + u'=' + QString::number(control.combo.selection);
    } else {
        const RangeControlState& range = control.range;
        EXPECT_EQ(range.name, control.displayName.left(63));
        EXPECT_EQ(range.isFloat, control.type == kControlFloat);
        EXPECT_EQ(range.hasModulation, !control.restartOnChange);
        text += QStringLiteral("%1..%2=%3").arg(range.minimum).arg(range.maximum).arg(range.value);
    }
    if (control.restartOnChange) text += u'|' + control.name + u' ' + control.value;
    return text;
}

struct Scanner {
    std::unique_ptr<ControlSet> controls = std::make_unique<ControlSet>();

    // All controls but "Speed", defines first, joined by " & ".
    std::string Scan(const QString& text) {
        ScanDefines(*controls, text);
        ScanUniforms(*controls, text, BuildCommentMap(text));
        QStringList found;
        for (int i = 0; i < controls->defineCount; ++i)
            found += Describe(controls->defines[size_t(i)]);
        for (int i = 1; i < controls->uniformCount; ++i)
            found += Describe(controls->uniforms[size_t(i)]);
        return found.join(QStringLiteral(" & ")).toStdString();
    }
    std::string Scan(const char* text) { return Scan(QString::fromUtf8(text)); }
};

// What one line gives in new records.
constexpr struct {
    const char* line;
    const char* controls;
} kLines[] = {
    // Uniforms: path and presets
    {"uniform float gain; // audio!input: level [0.00..2.00, 1.00]",
     "Uniforms!audio!input!gain|float 0..2=1"},
    {"uniform int count; // shape: steps [1..16, 4]", "Uniforms!shape!count|int 1..16=4"},
    {"uniform uint seed; // misc: seed", "Uniforms!misc!seed|uint 0..100=50"},
    {"uniform float x; // a : b", "Uniforms!a !x|float 0..1=0.5"},
    {"uniform float x; // a b/c;\td : e : f", "Uniforms!a bcd !x|float 0..1=0.5"},
    {"uniform float x; //:", "Uniforms!!x|float 0..1=0.5"},
    {"uniform float x; // 100%s %n: b", "Uniforms!100%s %n!x|float 0..1=0.5"},
    {"uniform float x; /* a: b [0.0..9.0] */", "Uniforms!x|float 0..1=0.5"},
    {"uniform float x; /* // a: b [0.0..9.0] */", "Uniforms!a!x|float 0..9=0.5"},
    {"uniform float x; // a [0.0..3.0] : b", "Uniforms!a [0.0..3.0] !x|float 0..3=0.5"},
    {"uniform float x; // mlvar [0.00..2.00, 1.00]", "Uniforms!x|float 0..2=1"},
    {"uniform float x; // MLVAR", "Uniforms!x|float 0..1=0.5"},
    {"uniform int x  // mlvar", ""},
    {"uniform float x; // no colon here [0.0..1.0]", ""},
    // Uniforms: keyword, type word, identifier
    {"layout(location = 0) uniform float x; // a: b", "Uniforms!a!x|float 0..1=0.5"},
    {"x: y // z\rmyUNIFORMs float x; // a: b", "Uniforms!a!x|float 0..1=0.5"},
    {"uniform\tfloat\tx ;// a: b", "Uniforms!a!x|float 0..1=0.5"},
    {"uniform float x;// a: b", "Uniforms!a!x//|float 0..1=0.5"},
    {"uniform int; x; // a: b", "Uniforms!a!x|int 0..100=50"},
    {"uniform float a, b; // c: d", "Uniforms!c!a,|float 0..1=0.5"},
    {"uniform float a; uniform int b; // c: d", "Uniforms!c!a|float 0..1=0.5"},
    {"uniform Float x; // a: b", ""},
    {"uniform highp float x; // a: b", ""},
    {"uniform bool x; // a: b", ""},
    {"uniform combo x; // a: int [1, 2]", ""},
    {"uniform mlvar float x; // a: b", ""},
    {"uniform float\nx; // a: b", ""},
    {"// uniform float x; // a: b", ""},
    {"/* uniform float x; // a: b\nuniform */ uniform float y; // a: b", "Uniforms!a!y|float 0..1=0.5"},
    {"uniform int a; // p: q\r\nuniform int a; // p: q",
     "Uniforms!p!a|int 0..100=50 & Uniforms!p!a|int 0..100=50"},
    // Uniforms: numbers
    {"uniform float x; // a: b [0..5, 1]", "Uniforms!a!x|float 0..1=0.5"},
    {"uniform float x; // a: b [0...5, 1]", "Uniforms!a!x|float 0..5=1"},
    {"uniform float x; // a: b [ -.5.. +2e1,.25]", "Uniforms!a!x|float -0.5..20=0.25"},
    {"uniform float x; // a: b [-2.0 ..5.0, 1.0]", "Uniforms!a!x|float -2..1=0.5"},
    {"uniform float x; // a: b [0.0..4.0 , 1.0]", "Uniforms!a!x|float 0..4=0.5"},
    {"uniform float x; // a: b [0.0..2.0e, 1.0]", "Uniforms!a!x|float 0..2=0.5"},
    {"uniform float x; // a: b [0.0..inf, 1.0]", "Uniforms!a!x|float 0..1=0.5"},
    {"uniform float x; // a: b [-1e400..0x2p3, 1.0]", "Uniforms!a!x|float -3.40282e+38..0=0"},
    {"uniform float x; // a: b [0.0../1.0;, 9.0]", "Uniforms!a!x|float 0..1=1"},
    {"uniform float x; // a: b [0.0..5.0, -9.0]", "Uniforms!a!x|float 0..5=0"},
    {"uniform float x; // a: [] [0.0..5.0, 2.0]", "Uniforms!a!x|float 0..1=0.5"},
    {"uniform int x; // a: b [0.0..1.0, 0.5]", "Uniforms!a!x|int 0..100=50"},
    {"uniform uint x; // a: b [5..1, 3]", "Uniforms!a!x|uint 5..1=5"},
    {"uniform int x; // a: b [-9999999999..9999999999, 7]", "Uniforms!a!x|int -2.14748e+09..2.14748e+09=7"},
    // Defines: label and words
    {"#define WIDTH 0.5 // width [0.0..1.0, 0.25]", "Defines!width |float 0..1=0.25|WIDTH 0.5"},
    {"#define A 1 // time [0..1]", "Defines!ime |int 0..1=0|A 1"},
    {"#define A 1 //t/ t tt/ test : a!b [0..1]", "Defines!est : a!b |int 0..1=0|A 1"},
    {"#define A 1 //\ttest [0..2]", "Defines!\ttest |int 0..2=1|A 1"},
    {"#define A 1 // 100%s [0..2]", "Defines!100%s |int 0..2=1|A 1"},
    {"  int i; #DeFiNe A 1 // a // b [0..2]", "Defines!a // b |int 0..2=1|A 1"},
    {"#define F(a, b) a // f [0..2]", "Defines!f |int 0..2=1|F(a, b)"},
    {"#define N 8 // t [1..32]", "Defines!|int 1..32=16|N 8"},
    {"#define FAST // speed [SLOW, @FAST]", "Defines!speed |list SLOW,FAST=1|FAST "},
    {"#define A//a[0..2]\n\n \vB 7", "Defines!a|int 0..2=1|A//a[0..2] B"},
    {"#define A 1 // a [0..2]\n#define//b[0..1]", "Defines!a |int 0..2=1|A 1"},
    {"#define//b[0..2] C\n", ""},
    {"/* #define A 1 // a [0..2] */ #define B 2 // b [0..2]", "Defines!b |int 0..2=1|B 2"},
    {"// #define A 1 // a [0..2]", ""},
    {"# define A 1 // a [0..2]", ""},
    {"#define A 1 /* a [0..2] */", ""},
    {"#define A x[1,2] // a [0..2]", ""},
    {"#define A 1 // a ]0..2[", ""},
    // Defines: numbers and lists
    {"#define A 1 // a [-3..0]", "Defines!a |int -3..0=-1|A 1"},
    {"#define A 1 // a [1..2.5]", "Defines!a |float 1..2.5=1.75|A 1"},
    {"#define A 1 // a [0..5, 1]", "Defines!a |int 0..5=1|A 1"},
    {"#define A 1 // a [1..32,8]", "Defines!a |int 1..328=164|A 1"},
    {"#define A 1 // a [0...5 @.25]", "Defines!a |float 0..0.5=0.25|A 1"},
    {"#define A 1 // a [2147483647..2147483647]", "Defines!a |int 2.14748e+09..2.14748e+09=2.14748e+09|A 1"},
    {"#define A 1 // a [0..]", ""},
    {"#define A 1 // a [5]", ""},
    {"#define A 1 // b [0..2 [1..4] 9..9]", "Defines!b |int 1..4=2|A 1"},
    {"#define MODE 1 // mode: pick [@1, 2, 3]", "Defines!mode: pick |list 1,2,3=0|MODE 1"},
    {"#define A 1 // a [@p, x@y ,,\t@ q r ]", "Defines!a |list p,x@y ,,q r =3|A 1"},
    {"#define A 1 // a [one,]", "Defines!a |list one,=0|A 1"},
    {"#define A 1 // a [0.,.1]", "Defines!a |list 0.,.1=0|A 1"},
};

TEST(Annotations, ALineGivesTheControlThatItsCommentDescribes) {
    for (const auto& row : kLines)
        EXPECT_EQ(Scanner().Scan(row.line), row.controls) << row.line;
}

TEST(Annotations, AScanKeepsWhatTheUserSetAtTheSameIndexUnderTheSameName) {
    Scanner scanner;
    const char* const text =
        "#define A 1 // a [0..10]\n#define M 1 // m [x, y, z]\n"
        "uniform float f; // g: [0.0..4.0, 1.0]\nuniform int i; // g: [0..8, 2]";
    scanner.Scan(text);
    ControlSet& controls = *scanner.controls;
    controls.uniforms[0].range.value = 0.9f;
    controls.defines[0].range.value = 7.25f;
    controls.defines[1].combo.selection = 2;
    for (RangeControlState* range : {&controls.uniforms[1].range, &controls.uniforms[2].range}) {
        range->low = 1.0f;
        range->value = 3.0f;
        range->frequency = range->phase = 2.0f;
        range->modulationKind = kModulationSine;
    }
    // A define's whole state stays; a uniform's value and phase, and whole numbers rise by one.
    const std::string kept =
        "Defines!a |int 0..10=7.25|A 1 & Defines!m |list x,y,z=2|M 1 & Uniforms!g!f|float 0..4=3 & "
        "Uniforms!g!i|int 0..8=";
    for (const char* const risen : {"4", "5", "6", "7", "8", "8"})
        EXPECT_EQ(scanner.Scan(text), kept + risen);
    EXPECT_EQ(controls.uniforms[0].range.value, 0.03f);
    EXPECT_EQ(controls.uniforms[1].range.low, 0.0f);
    EXPECT_EQ(controls.uniforms[1].range.frequency, 1.0f);
    EXPECT_EQ(controls.uniforms[1].range.phase, 2.0f);
    EXPECT_EQ(controls.uniforms[1].range.modulationKind, kModulationFixed);

    // Other bounds under the same label don't count; a list that is too short for its selection starts anew;
    // what has moved by a line has lost its old place.
    EXPECT_EQ(scanner.Scan("#define A 1 // a [1..2]\n#define M 1 // q [x, @y]\nuniform int i; // g:"),
              "Defines!a |int 0..10=7.25|A 1 & Defines!q |list x,y=1|M 1 & Uniforms!g!i|int 0..100=50");
}

TEST(Annotations, WholeNumbersCreepFromAnyValue) {
    for (const auto& [value, next] : {std::pair{-0.5f, 0.0f},
                                      {-0.75f, 0.0f},
                                      {-1.0f, -1.0f},
                                      {-3.0f, -3.0f},
                                      {2.5f, 3.0f},
                                      {1e30f, 50.0f},
                                      {NAN, 0.0f}}) {
        Scanner scanner;
        const char* const text = "uniform int i; // g: [-50..50, 7]";
        scanner.Scan(text);
        scanner.controls->uniforms[1].range.value = value;
        scanner.Scan(text);
        EXPECT_EQ(scanner.controls->uniforms[1].range.value, next) << value;
    }
}

TEST(Annotations, ALineThatGivesNothingLeavesItsRecordToTheNext) {
    Scanner scanner;
    scanner.Scan("#define A 1 // a [0..10]\n#define B 1 // b [x, y]");
    scanner.controls->defines[0].range.value = 8.0f;
    EXPECT_EQ(scanner.Scan("#define Z 9 // b [no]\n#define A 1 // a [0..10]"), "Defines!a |int 0..10=8|A 1");
    EXPECT_EQ(scanner.controls->defines[1].name, QStringLiteral("B"));  // past the count, as it was

    // Gone for a scan, a label finds its old state again at its old place.
    scanner.Scan("");
    EXPECT_EQ(scanner.controls->defineCount, 0);
    EXPECT_EQ(scanner.Scan("#define A 1 // a [0..10]"), "Defines!a |int 0..10=8|A 1");
}

TEST(Annotations, WhatIsTooMuchForARecordIsCutAndStillFound) {
    const QString longName(300, u'n');
    const QString text =
        QStringLiteral("#define %1 %1 // %1[0..9]\nuniform float %1; // mlvar").arg(longName);
    Scanner scanner;
    ControlSet& controls = *scanner.controls;
    for (int scan = 0; scan < 2; ++scan) {
        ScanDefines(controls, text);
        ScanUniforms(controls, text, BuildCommentMap(text));
        for (UniformControl* control : {&controls.defines[0], &controls.uniforms[1]}) {
            EXPECT_EQ(control->displayName, longName.left(259));
            EXPECT_EQ(control->treePath.size(), 259);
            EXPECT_EQ(control->range.name, longName.left(63));
            EXPECT_EQ(control->range.value == 0.75f, scan == 1);
            control->range.value = 0.75f;
        }
        EXPECT_EQ(controls.defines[0].name, longName.left(127));
        EXPECT_EQ(controls.defines[0].value, longName.left(127));
    }
}

TEST(Annotations, TheFortyFirstControlIsLeftOut) {
    QString text;
    for (int i = 0; i < 200; ++i)
        text += QStringLiteral("#define A%1 1 // a%1[x,y]\nuniform int u%1; // a:\n").arg(i);
    Scanner scanner;
    scanner.Scan(text);
    ControlSet& controls = *scanner.controls;
    EXPECT_EQ(controls.defineCount, 40);
    EXPECT_EQ(controls.uniformCount, 40);
    EXPECT_EQ(controls.defines[39].name, QStringLiteral("A39"));
    EXPECT_EQ(controls.uniforms[39].displayName, QStringLiteral("u38"));
    EXPECT_EQ(controls.uniforms[39].sourcePos, uint32_t(text.indexOf(QStringLiteral("uniform int u38"))));

    // What is freed are the options in use; the lists keep their sizes and places.
    controls.defineCount = 39;
    FreeControlOptions(controls);
    EXPECT_TRUE(controls.defines[38].options.empty());
    EXPECT_EQ(controls.defines[38].combo.count, 2);
    EXPECT_EQ(controls.defines[39].options.size(), 2u);

    // Without a map of the comments there is "Speed" alone.
    ScanUniforms(controls, text, {});
    EXPECT_EQ(controls.uniformCount, 1);
    EXPECT_EQ(Describe(controls.uniforms[0]).toStdString(), "Uniforms!Speed|float -1..1=0.03");
}

}  // namespace
}  // namespace pixelgrove
