#include "controls/ControlText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "controls/ControlRecords.h"
#include "platform/TextScan.h"

namespace pixelgrove {

namespace {

constexpr qsizetype kMostExported = 16384;

QString FloatText(float value) {
    return QString::number(double(value), 'f', 3);
}

QString WholeText(float value) {
    constexpr double kLeast = std::numeric_limits<int32_t>::min();
    constexpr double kMost = std::numeric_limits<int32_t>::max();
    return QString::number(std::isnan(value) ? 0 : int32_t(std::clamp(double(value), kLeast, kMost)));
}

QString LineOf(const QString& words) {
    return QStringLiteral("#define ") + words + QStringLiteral("\r\n");
}

QString LineOf(const QString& name, const QString& value) {
    return LineOf(name + QStringLiteral(" \t") + value);
}

// Empty for a record that gives no line.
QString DefineLine(const UniformControl& control) {
    const float value = control.range.value;
    switch (control.type) {
        case kControlFloat:
            return LineOf(control.name, FloatText(value));
        case kControlInt:
        case kControlUint:
            return LineOf(control.name, WholeText(value));
        case kControlBool:
            return LineOf(control.name, value != 0.0f ? QStringLiteral("true") : QStringLiteral("false"));
        case kControlList: {
            if (size_t(control.combo.selection) >= control.options.size()) return {};
            const QString& option = control.options[size_t(control.combo.selection)].text;
            return control.name.isEmpty() ? LineOf(option) : LineOf(control.name, option);
        }
        default:
            return {};
    }
}

bool SetUniforms(ControlSet& controls, QStringView name, float value) {
    bool found = false;
    for (UniformControl& control : UniformsOf(controls)) {
        if (control.displayName != name) continue;
        control.range.value = value;
        found = true;
    }
    return found;
}

// Whether the line was this record's.
bool SetDefine(UniformControl& control, QStringView name, QStringView last, float value) {
    if (control.kind == 1) {
        for (const ControlOption& option : control.options) {
            if (option.text != last) continue;
            control.combo.selection = option.index;
            return true;
        }
        return false;
    }
    const bool isNumber = control.type >= kControlFloat && control.type <= kControlUint;
    if (!isNumber || control.name != name) return false;
    if (!(control.range.minimum <= value && value <= control.range.maximum)) return false;
    control.range.value = value;
    return true;
}

void ImportLine(ControlSet& controls, QStringView line) {
    qsizetype position = 0;
    ScanWord(line, position);
    const QStringView name = ScanWord(line, position);
    if (name.isEmpty()) return;
    const QStringView third = ScanWord(line, position);
    qsizetype within = 0;
    const float value = ScanFloat(third, within).value_or(0.0f);
    if (SetUniforms(controls, name, value)) return;
    for (UniformControl& control : DefinesOf(controls))
        if (SetDefine(control, name, third.isEmpty() ? name : third, value)) return;
}

}  // namespace

QString ExportDefinesToText(const ControlSet& controls) {
    QString text;
    const auto add = [&text](const QString& line) {
        const bool fits = text.size() + line.size() <= kMostExported;
        if (fits) text += line;
        return fits;
    };
    for (const UniformControl& control : DefinesOf(controls))
        if (!add(DefineLine(control))) return text;
    const std::span uniforms = UniformsOf(controls);
    for (const UniformControl& control : uniforms.subspan(std::min<size_t>(1, uniforms.size())))
        if (control.type != kControlNone && !add(LineOf(control.displayName, FloatText(control.range.value))))
            return text;
    return text;
}

void ImportDefinesFromText(ControlSet& controls, const QStringList& lines) {
    for (const QString& line : lines)
        ImportLine(controls, line);
}

}  // namespace pixelgrove
