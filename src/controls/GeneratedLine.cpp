#include "controls/GeneratedLine.h"

#include <stdlib.h>

#include <QList>
#include <array>
#include <charconv>

#include "platform/TextScan.h"

namespace pixelgrove {

namespace {

QString DefaultOption(QStringView options) {
    std::optional<QStringView> first;
    for (QStringView option : options.split(u',')) {
        while (option.startsWith(u' '))
            option = option.sliced(1);
        if (option.startsWith(u'@')) return option.sliced(1).toString();
        if (!first) first = option;
    }
    return first.value_or(QStringView()).toString();
}

QString TypeWord(GeneratedData data) {
    switch (data) {
        case GeneratedData::FloatRange:
            return QStringLiteral("float");
        case GeneratedData::IntRange:
            return QStringLiteral("int");
        case GeneratedData::ItemSelect:
            break;
    }
    return QStringLiteral("combo");
}

QString OnOneLine(const QString& text) {
    return WithLineFeeds(text).replace(u'\n', u' ');
}

QString TwoDecimals(const QString& text) {
    const double number = strtod_l(text.toLatin1().constData(), nullptr, PlainLocale());
    std::array<char, kMaxGeneratorField> digits;
    const std::to_chars_result result =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, 2);
    if (result.ec != std::errc()) return text;
    return QString::fromLatin1(digits.data(), result.ptr - digits.data());
}

}  // namespace

std::optional<QString> GeneratedLine(const GeneratorFields& fields) {
    for (const QString* text : {&fields.name, &fields.parent, &fields.description, &fields.options,
                                &fields.minimum, &fields.maximum, &fields.defaultValue})
        if (text->isEmpty()) return std::nullopt;

    const bool isList = fields.data == GeneratedData::ItemSelect;
    QString name = fields.name;
    QString value = isList ? DefaultOption(fields.options) : fields.defaultValue;
    const QString bracket =
        isList ? fields.options
               : fields.minimum + QStringLiteral("..") + fields.maximum + QStringLiteral(", ") + value;
    if (fields.control == GeneratedControl::FlagDefine) {
        name = value;
        value.clear();
    }
    const QString code = fields.control == GeneratedControl::Uniform
                             ? QStringLiteral("uniform ") + TypeWord(fields.data) + u' ' + name + u';'
                             : QStringLiteral("#define ") + name + u'\t' + value;
    const QString comment = QStringLiteral("// ") + fields.parent + QStringLiteral(": ") + fields.description;
    return OnOneLine(code + u'\t' + comment + QStringLiteral(" [") + bracket + u']').left(kMaxGeneratedLine);
}

QString NumberText(GeneratedData data, const QString& text) {
    switch (data) {
        case GeneratedData::FloatRange:
            return TwoDecimals(text);
        case GeneratedData::IntRange: {
            qsizetype position = 0;
            return QString::number(ScanInt(text, position).value_or(0));
        }
        case GeneratedData::ItemSelect:
            break;
    }
    return text;
}

}  // namespace pixelgrove
