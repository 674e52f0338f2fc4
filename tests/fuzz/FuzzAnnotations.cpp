// Any bytes as the texts of a stage, parted by the record separator (0x1e): each is scanned twice into the
// same records, as an editor does while its user types, and baked; its lines are taken as values too.
#include <QByteArrayList>
#include <algorithm>

#include "FuzzTarget.h"
#include "controls/Annotations.h"
#include "controls/BakedText.h"
#include "controls/ControlText.h"
#include "core/CommentMap.h"
#include "platform/CodePage.h"

using namespace pixelgrove;

const std::vector<std::string>& FuzzSeeds() {
    static const std::vector<std::string> seeds = {
        "uniform float gain; // audio!input: level [0.00..2.00, 1.00]\n"
        "uniform int count; // shape: steps [1..16, 4]\r\nlayout(location = 0) uniform uint seed; // misc: "
        "seed\n"
        "uniform float x; // mlvar [-.5..2e1, 1.00]\n/* uniform float y; // a: b */ uniform bool z; // a:\n",
        "#define WIDTH 0.5 // width [0.0..1.0, 0.25]\n#define STEPS 8 // t steps [1..32]\r"
        "#define MODE 1 // mode: pick [@1, 2, 3]\n#define FAST // speed [SLOW, @FAST]\n#define//a[b,c]",
        "#define A 1 // a [x, y, z]\nuniform int i; // g: [-8..8, 2]\n\x1e"
        "#define A 1 // a [0..3]\nuniform int j; // g:\nuniform int i; // g:\n\x1e"
        "#define B 1 // a [0..3]\n#define A 1 // b [@x, y]\nuniform float i; // g:\n",
    };
    return seeds;
}

namespace {

void CheckRange(const UniformControl& control) {
    const RangeControlState& range = control.range;
    FUZZ_CHECK(range.name.size() <= kMaxControlName);
    FUZZ_CHECK(range.name == control.displayName.left(kMaxControlName));
    // A default at the minimum stands even where the maximum lies below it.
    FUZZ_CHECK(range.value >= std::min(range.minimum, range.maximum));
    FUZZ_CHECK(range.value <= std::max(range.minimum, range.maximum));
}

void CheckControl(const UniformControl& control, const QString& branch, const QString& keyword,
                  const QString& text) {
    FUZZ_CHECK(control.type != kControlNone && (control.kind == 1) == (control.type == kControlList));
    FUZZ_CHECK(control.displayName.size() <= kMaxControlLabel && control.treePath.size() <= kMaxControlLabel);
    FUZZ_CHECK(control.treePath.startsWith(branch));
    FUZZ_CHECK(text.mid(control.sourcePos).startsWith(keyword, Qt::CaseInsensitive));
    for (const QString* word : {&control.keyword, &control.name, &control.value})
        FUZZ_CHECK(word->size() <= kMaxControlToken);
    if (control.kind == 0) return CheckRange(control);
    FUZZ_CHECK(control.combo.count == int32_t(control.options.size()) && control.combo.count >= 2);
    FUZZ_CHECK(control.combo.selection >= 0 && control.combo.selection < control.combo.count);
}

void ScanAndCheck(ControlSet& controls, const QString& text) {
    ScanDefines(controls, text);
    ScanUniforms(controls, text, BuildCommentMap(text));
    FUZZ_CHECK(controls.defineCount >= 0 && controls.defineCount <= kMaxControls);
    FUZZ_CHECK(controls.uniformCount >= 1 && controls.uniformCount <= kMaxControls);
    for (int i = 0; i < controls.defineCount; ++i)
        CheckControl(controls.defines[size_t(i)], QStringLiteral("Defines!"), QStringLiteral("#define"),
                     text);
    for (int i = 1; i < controls.uniformCount; ++i)
        CheckControl(controls.uniforms[size_t(i)], QStringLiteral("Uniforms!"), QStringLiteral("uniform"),
                     text);
    FUZZ_CHECK(controls.uniforms[0].displayName == QStringLiteral("Speed"));
}

// What the scans found, values aside.
QString Found(const ControlSet& controls) {
    QString found;
    for (int i = 0; i < controls.defineCount; ++i)
        found += controls.defines[size_t(i)].treePath + u'\n';
    for (int i = 0; i < controls.uniformCount; ++i)
        found += controls.uniforms[size_t(i)].treePath + u'\n';
    return found;
}

// Only the lines that it names differ, none runs into the next, and values survive the scan.
void BakeAndCheck(ControlSet& controls, const QString& text) {
    const BakedText baked = BakeDefines(controls, text);
    const QByteArrayList before = PlainStageText(text).split('\n');
    const QByteArrayList after = baked.text.split('\n');
    FUZZ_CHECK(before.size() == after.size());
    size_t next = 0;
    for (qsizetype i = 0; i < before.size(); ++i) {
        const bool isBaked = next < baked.lines.size() && baked.lines[next].line == i + 1;
        next += isBaked ? 1 : 0;
        FUZZ_CHECK(isBaked ? after[i].size() >= before[i].size() && after[i].contains(" //")
                           : after[i] == before[i]);
    }
    FUZZ_CHECK(next == baked.lines.size());
    FUZZ_CHECK(BakeDefines(controls, text).text == baked.text);
    ImportDefinesFromText(controls, text.split(u'\n'));
    FUZZ_CHECK(ExportDefinesToText(controls).size() <= 16384);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray input(reinterpret_cast<const char*>(data), qsizetype(size));
    static ControlSet controls;
    controls = {};
    for (const QByteArray& part : input.split('\x1e')) {
        const QString text = FromCodePage(part);
        ScanAndCheck(controls, text);
        const QString found = Found(controls);
        ScanAndCheck(controls, text);
        FUZZ_CHECK(Found(controls) == found);
        BakeAndCheck(controls, text);
    }
    FreeControlOptions(controls);
    for (const UniformControl& control : std::span(controls.defines).first(size_t(controls.defineCount)))
        FUZZ_CHECK(control.options.empty());
    return 0;
}
