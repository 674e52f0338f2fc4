#include <vector>

#include "controls/AnnotationLines.h"
#include "controls/Annotations.h"
#include "controls/RangeState.h"
#include "core/CommentMap.h"
#include "platform/TextScan.h"

namespace pixelgrove {

namespace {

// What an annotated line says.
struct DefineLine {
    QStringView label;
    QStringView content;  // of the innermost bracket that closes first
};

std::optional<DefineLine> Dissect(QStringView line) {
    const qsizetype open = line.indexOf(u'[');
    const qsizetype close = line.indexOf(u']');
    const qsizetype comment = line.indexOf(u"//");
    // A bracket in front of the comment belongs to the code: there is no label.
    if (open < 0 || close < open || comment < 0 || open < comment) return std::nullopt;

    const qsizetype innermost = line.lastIndexOf(u'[', close);
    // The letter is in the set: labels lose leading t's.
    const QStringView label = WithoutLeading(line.sliced(comment, open - comment), u"/ t");
    return DefineLine{label, line.sliced(innermost + 1, close - innermost - 1)};
}

struct Bounds {
    bool isFloat = false;
    float minimum = 0.0f, maximum = 0.0f, defaultValue = 0.0f;
};

// Up to three numbers in a row; returns how many there were.
template <typename Number>
int ReadNumbers(QStringView text, std::optional<Number> (*scan)(QStringView, qsizetype&),
                std::array<Number, 3>& numbers) {
    qsizetype position = 0;
    int count = 0;
    for (Number& number : numbers) {
        const std::optional<Number> read = scan(text, position);
        if (!read) break;
        number = *read;
        ++count;
    }
    return count;
}

std::optional<Bounds> ReadBounds(QStringView content) {
    QString text = Without(content, u"@,");
    text.replace(QStringLiteral(".."), QStringLiteral(" "));
    if (text.contains(u'.')) {
        std::array<float, 3> numbers{};
        const int count = ReadNumbers(text, ScanFloat, numbers);
        if (count < 2) return std::nullopt;
        if (count == 2) numbers[2] = (numbers[0] + numbers[1]) * 0.5f;
        return Bounds{true, numbers[0], numbers[1], numbers[2]};
    }
    std::array<int, 3> numbers{};
    const int count = ReadNumbers(text, ScanInt, numbers);
    if (count < 2) return std::nullopt;
    if (count == 2) numbers[2] = int((int64_t(numbers[0]) + numbers[1]) / 2);
    return Bounds{false, float(numbers[0]), float(numbers[1]), float(numbers[2])};
}

void TakeRange(UniformControl& control, const Bounds& bounds, QStringView label) {
    control.kind = 0;
    control.type = bounds.isFloat ? kControlFloat : kControlInt;
    const QString name = label.left(kMaxControlName).toString();
    // A record that was never filled has no name either, and nothing to keep for a line without a label.
    if (control.range.name == name && control.range.layoutRows != 0) return;
    InitialiseRange(control.range, false, bounds.isFloat, name, bounds.minimum, bounds.maximum,
                    bounds.defaultValue);
}

void TakeList(UniformControl& control, QStringView content) {
    control.kind = 1;
    control.type = kControlList;
    int32_t defaultIndex = 0;
    control.options = SplitOptionList(content, defaultIndex);

    ComboControlState& combo = control.combo;
    const int32_t count = int32_t(control.options.size());
    combo.randomize = 0;
    if (combo.count == 0 || combo.selection < 0 || combo.selection >= count) combo.selection = defaultIndex;
    combo.count = count;
}

}  // namespace

void ScanDefines(ControlSet& controls, QStringView text) {
    const std::vector<uint8_t> commentMap = BuildCommentMap(text);
    KeywordLines lines(text, commentMap, u"#define");
    controls.defineCount = 0;
    while (controls.defineCount < kMaxControls) {
        const std::optional<KeywordLine> line = lines.Next();
        if (!line) return;
        const std::optional<DefineLine> parts = Dissect(line->text);
        if (!parts) continue;
        // The words may come from the lines that follow.
        const auto words = FirstWords(line->rest);
        if (!words) return;

        // A line that gives no control leaves its record to the next one.
        UniformControl& control = controls.defines[size_t(controls.defineCount)];
        const auto [keyword, name, value] = *words;
        control.keyword = keyword.left(kMaxControlToken).toString();
        control.name = name.left(kMaxControlToken).toString();
        control.value = value.startsWith(u'/') ? QString() : value.left(kMaxControlToken).toString();
        control.type = kControlNone;
        if (parts->content.contains(u"..")) {
            if (const auto bounds = ReadBounds(parts->content)) TakeRange(control, *bounds, parts->label);
        } else if (parts->content.contains(u',')) {
            TakeList(control, parts->content);
        }
        if (control.type == kControlNone) continue;

        control.sourcePos = uint32_t(line->position);
        control.restartOnChange = 1;
        control.displayName = parts->label.left(kMaxControlLabel).toString();
        control.treePath = (QStringLiteral("Defines!") + control.displayName).left(kMaxControlLabel);
        ++controls.defineCount;
    }
}

}  // namespace pixelgrove
