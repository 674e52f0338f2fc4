#include <algorithm>
#include <cmath>
#include <limits>

#include "controls/AnnotationLines.h"
#include "controls/Annotations.h"
#include "controls/RangeState.h"
#include "platform/TextScan.h"

namespace pixelgrove {

namespace {

// Minimum, maximum and default.
template <typename Number>
using Numbers = std::array<Number, 3>;

// Reads "[A..B, C]", in which only the numbers may have blanks in front. Ends at the first thing that is
// different; the numbers from there on stay what they were.
template <typename Number>
void ReadBracket(QStringView text, std::optional<Number> (*scan)(QStringView, qsizetype&),
                 Numbers<Number>& numbers) {
    static constexpr QStringView kBefore[] = {u"[", u"..", u","};
    qsizetype position = 0;
    for (size_t i = 0; i < numbers.size(); ++i) {
        if (!text.sliced(position).startsWith(kBefore[i])) return;
        position += kBefore[i].size();
        const std::optional<Number> number = scan(text, position);
        if (!number) return;
        numbers[i] = *number;
    }
}

// A kept value as a whole number. It is raised by a half twice, so that it grows by one with each scan.
int RaisedWhole(float value) {
    if (std::isnan(value)) return 0;
    const double raised = double(value) + 0.5;
    const double whole = raised < 0.0 ? raised - 0.5 : raised + 0.5;
    return int(
        std::clamp(whole, double(std::numeric_limits<int>::min()), double(std::numeric_limits<int>::max())));
}

bool HasAnnotation(QStringView line) {
    const auto has = [line](QStringView word) { return line.contains(word, Qt::CaseInsensitive); };
    if (has(u"mlvar")) return line.contains(u';');
    return line.contains(u':') && (has(u"float") || has(u"int") || has(u"bool"));
}

// The node of the tree that the comment puts in front of a colon, with its separator; else nothing.
QString ParentPath(QStringView comment) {
    const qsizetype colon = comment.indexOf(u':');
    if (colon < 0) return {};
    const QString parent = Without(comment.first(colon), u";/\t\r\n");
    return WithoutLeading(parent, u"\t ").toString() + u'!';
}

// Sets the type, and the range anew with the record's old value if it has this name; false for other types.
bool TakeRange(UniformControl& control, QStringView typeWord, QStringView bracket, QStringView identifier) {
    RangeControlState& range = control.range;
    const QString name = identifier.left(kMaxControlName).toString();
    const bool keeps = range.name == name;
    if (typeWord == u"float") {
        Numbers<float> numbers = {0.0f, 1.0f, 0.5f};
        ReadBracket(bracket, ScanFloat, numbers);
        if (keeps) numbers[2] = range.value;
        control.type = kControlFloat;
        InitialiseRange(range, true, true, name, numbers[0], numbers[1], numbers[2]);
        return true;
    }
    if (typeWord == u"int" || typeWord == u"uint") {
        Numbers<int> numbers = {0, 100, 50};
        ReadBracket(bracket, ScanInt, numbers);
        if (keeps) numbers[2] = RaisedWhole(range.value);
        control.type = typeWord == u"int" ? kControlInt : kControlUint;
        InitialiseRange(range, true, false, name, float(numbers[0]), float(numbers[1]), float(numbers[2]));
        return true;
    }
    control.type = kControlNone;
    return false;
}

}  // namespace

void ScanUniforms(ControlSet& controls, QStringView text, std::span<const uint8_t> commentMap) {
    InitialiseSpeed(controls);
    controls.uniformCount = 1;
    KeywordLines lines(text, commentMap, u"uniform");
    while (controls.uniformCount < kMaxControls) {
        const std::optional<KeywordLine> line = lines.Next();
        if (!line) return;
        if (!HasAnnotation(line->text)) continue;
        const auto words = FirstWords(line->text);
        if (!words) continue;

        const qsizetype slashes = line->text.indexOf(u"//");
        const QStringView comment = slashes < 0 ? QStringView() : line->text.sliced(slashes);
        const QString plain = Without(comment, u";/\t\r\n");
        const qsizetype open = plain.indexOf(u'[');
        const QStringView bracket = open < 0 ? QStringView() : QStringView(plain).sliced(open);

        const QString typeWord = Without((*words)[1], u"; \t\r\n");
        const QString identifier = Without((*words)[2], u"; \t\r\n").left(kMaxControlLabel);
        UniformControl& control = controls.uniforms[size_t(controls.uniformCount)];
        if (!TakeRange(control, typeWord, bracket, identifier)) continue;

        control.kind = 0;
        control.sourcePos = uint32_t(line->position);
        control.restartOnChange = 0;
        control.displayName = identifier;
        control.treePath =
            (QStringLiteral("Uniforms!") + ParentPath(comment) + identifier).left(kMaxControlLabel);
        ++controls.uniformCount;
    }
}

}  // namespace pixelgrove
