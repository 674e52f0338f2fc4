#include "controls/BakedText.h"

#include <algorithm>
#include <optional>

#include "controls/Annotations.h"
#include "controls/ControlRecords.h"
#include "controls/Modulation.h"
#include "platform/CodePage.h"
#include "platform/TextScan.h"

namespace pixelgrove {

namespace {

bool EndsLine(QChar unit) {
    return unit == u'\r' || unit == u'\n';
}

// The line's end, or the text's.
qsizetype EndOfLine(QStringView text, qsizetype from) {
    return std::find_if(text.begin() + from, text.end(), EndsLine) - text.begin();
}

// Where the value is written: at the third word of the line, or in place of the name where the third word is
// a comment. Nothing on a line without a third word.
std::optional<qsizetype> ValuePosition(QStringView line) {
    qsizetype end = 0;
    ScanWord(line, end);
    const QStringView name = ScanWord(line, end);
    const qsizetype nameBegin = end - name.size();
    const QStringView value = ScanWord(line, end);
    if (value.isEmpty()) return std::nullopt;
    return value.startsWith(u'/') ? nameBegin : end - value.size();
}

// Nothing for a record without a value. An option may be without text.
std::optional<QString> ValueText(const UniformControl& control) {
    switch (control.type) {
        case kControlFloat:
            return QString::number(double(control.range.value), 'f', 5);
        case kControlInt:
        case kControlUint:
            return QString::number(RoundedHalfUp(control.range.value));
        case kControlList:
            if (size_t(control.combo.selection) >= control.options.size()) return std::nullopt;
            return control.options[size_t(control.combo.selection)].text;
        default:
            return std::nullopt;
    }
}

// The line with the value in it. The rest of the old line stays behind it as a comment, so that the length is
// the same, or goes where there is no room for it.
QString BakedLineText(QStringView line, qsizetype at, const QString& value) {
    QString baked = line.first(at).toString() + value + QStringLiteral(" //");
    const qsizetype rest = baked.size() + 1;
    if (rest <= line.size()) baked.append(u' ').append(line.sliced(rest));
    return baked;
}

}  // namespace

BakedText BakeDefines(ControlSet& controls, const QString& stageText) {
    ScanDefines(controls, stageText);
    BakedText baked;
    QString text;
    const QStringView source(stageText);
    qsizetype done = 0;  // of the source
    int line = 1;
    for (const UniformControl& control : DefinesOf(controls)) {
        const qsizetype begin = qsizetype(control.sourcePos);
        const QStringView old = source.sliced(begin, EndOfLine(source, begin) - begin);
        const std::optional<qsizetype> at = ValuePosition(old);
        const std::optional<QString> value = ValueText(control);
        if (!at || !value) continue;
        const QStringView between = source.sliced(done, begin - done);
        line += int(std::count_if(between.begin(), between.end(), EndsLine));
        text.append(between).append(BakedLineText(old, *at, *value));
        baked.lines.push_back({line, control.displayName, old.toString(), *value});
        done = begin + old.size();
    }
    text.append(source.sliced(done));
    baked.text = PlainStageText(text);
    return baked;
}

QByteArray PlainStageText(const QString& stageText) {
    QByteArray bytes = ToCodePage(stageText);
    return bytes.replace('\r', '\n');
}

}  // namespace pixelgrove
