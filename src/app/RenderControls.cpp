#include "app/RenderControls.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>

#include "controls/ControlRecords.h"

namespace pixelgrove {

namespace {

// The fewest digits that give the same value back.
QString NumberText(float value) {
    std::array<char, 64> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return QString::fromLatin1(text.data(), end - text.data());
}

bool IsOption(const UniformControl& control, const QString& text) {
    return std::ranges::any_of(control.options,
                               [&](const ControlOption& option) { return option.text.trimmed() == text; });
}

// A define without a value, whose options take the place of its name.
bool IsFlag(const UniformControl& control) {
    return control.kind == 1 && control.value.isEmpty();
}

QString OptionTexts(const UniformControl& control, const QString& between) {
    QStringList texts;
    for (const ControlOption& option : control.options)
        texts.append(option.text.trimmed());
    return texts.join(between);
}

// As SetControl's result, empty when the value was taken.
QString SetNumber(UniformControl& control, const QString& name, const QString& text) {
    const std::optional<double> number = ControlNumber(text);
    if (!number) return QStringLiteral("\"%1\" is no value for %2.").arg(text, name);
    if (control.type != kControlFloat && std::trunc(*number) != *number)
        return QStringLiteral("%1 is a whole number and can't be %2.").arg(name, text);
    const float value = float(*number);
    RangeControlState& range = control.range;
    if (!(range.minimum <= value && value <= range.maximum)) {
        return QStringLiteral("%1 is a value from %2 to %3.")
            .arg(name, NumberText(range.minimum), NumberText(range.maximum));
    }
    range.value = value;
    return {};
}

QString SetOption(UniformControl& control, const QString& name, const QString& text, bool takesIndex) {
    for (const ControlOption& option : control.options) {
        if (option.text.trimmed() != text) continue;
        control.combo.selection = option.index;
        return {};
    }
    bool isIndex = false;
    const int index = text.toInt(&isIndex);
    if (takesIndex && isIndex && index >= 0 && size_t(index) < control.options.size()) {
        control.combo.selection = index;
        return {};
    }
    return QStringLiteral("%1 is one of: %2.").arg(name, OptionTexts(control, QStringLiteral(", ")));
}

QString SetRecord(UniformControl& control, const QString& name, const QString& value, bool takesIndex) {
    return control.kind == 1 ? SetOption(control, name, value, takesIndex) : SetNumber(control, name, value);
}

QString TypeName(int32_t type) {
    switch (type) {
        case kControlFloat:
            return QStringLiteral("float");
        case kControlInt:
            return QStringLiteral("int");
        case kControlUint:
            return QStringLiteral("uint");
        case kControlBool:
            return QStringLiteral("bool");
        default:
            return QStringLiteral("list");
    }
}

// A field of a line: what would begin another one becomes a blank.
QString Field(QString text) {
    return text.replace(u'\t', u' ');
}

QString ControlLine(const UniformControl& control) {
    QString limits =
        NumberText(control.range.minimum) + QStringLiteral("..") + NumberText(control.range.maximum);
    QString value = NumberText(control.range.value);
    if (control.kind == 1) {
        limits = OptionTexts(control, QStringLiteral(","));
        const size_t selection = size_t(control.combo.selection);
        value = selection < control.options.size() ? control.options[selection].text.trimmed() : QString();
    }
    return QStringList{Field(control.treePath), TypeName(control.type), Field(limits), Field(value)}.join(
               u'\t') +
           u'\n';
}

}  // namespace

std::optional<double> ControlNumber(const QString& text) {
    if (text == QLatin1String("true")) return 1.0;
    if (text == QLatin1String("false")) return 0.0;
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number)) return std::nullopt;
    return number;
}

ControlSetting SetControl(ControlSet& controls, const QString& name, const QString& value) {
    ControlSetting setting;
    for (UniformControl& control : UniformsOf(controls)) {
        if (control.displayName.trimmed() != name) continue;
        setting = {true, SetRecord(control, name, value, true)};
    }
    if (setting.isControl) return setting;
    const std::span defines = DefinesOf(controls);
    for (UniformControl& control : defines) {
        const bool byOption = IsFlag(control) && IsOption(control, name);
        if (byOption || control.name == name) return {true, SetRecord(control, name, value, !byOption)};
    }
    for (UniformControl& control : defines)
        if (control.displayName.trimmed() == name) return {true, SetRecord(control, name, value, true)};
    return setting;
}

QString ControlLines(const ControlSet& controls) {
    QString lines;
    for (const std::span records : {DefinesOf(controls), UniformsOf(controls)})
        for (const UniformControl& control : records)
            lines += ControlLine(control);
    return lines;
}

}  // namespace pixelgrove
