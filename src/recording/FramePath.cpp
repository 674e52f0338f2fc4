#include "recording/FramePath.h"

#include <QStringView>
#include <algorithm>

namespace pixelgrove {

namespace {

constexpr qsizetype kMaxLength = RecorderSettings::kMaxPathLength;
constexpr QStringView kTooLong = u"The resulting path is too long.";
constexpr QStringView kNoField =
    u"The filename format doesn't contain a frame number format specifier (eg. %05d).";
constexpr QStringView kBadField =
    u"Only one frame number format specifier (eg. %05d) is possible. Write %% for a percent sign.";

// One '%' and what follows it, as it stands in a format.
struct NumberField {
    bool isLeft = false, isSigned = false, isSpaced = false, isPrefixed = false, isZeroFilled = false;
    qsizetype width = 0;
    qsizetype precision = -1;  // none
    char16_t kind = 0;
};

// Takes the digits at the start of rest. A length that no path can have counts as the first such, which keeps
// what is made of it small and still makes the path too long.
qsizetype TakeLength(QStringView& rest) {
    qsizetype length = 0;
    for (; !rest.isEmpty() && rest.front() >= u'0' && rest.front() <= u'9'; rest = rest.sliced(1))
        length = std::min<qsizetype>(length * 10 + (rest.front().unicode() - u'0'), kMaxLength + 1);
    return length;
}

bool TakeFlag(NumberField& field, char16_t flag) {
    switch (flag) {
        case u'-':
            field.isLeft = true;
            return true;
        case u'+':
            field.isSigned = true;
            return true;
        case u' ':
            field.isSpaced = true;
            return true;
        case u'#':
            field.isPrefixed = true;
            return true;
        case u'0':
            field.isZeroFilled = true;
            return true;
        default:
            return false;
    }
}

// Takes what follows the '%' of a field, which isn't a '%'.
std::optional<NumberField> TakeField(QStringView& rest) {
    NumberField field;
    while (!rest.isEmpty() && TakeFlag(field, rest.front().unicode()))
        rest = rest.sliced(1);
    field.width = TakeLength(rest);
    if (rest.startsWith(u'.')) {
        rest = rest.sliced(1);
        field.precision = TakeLength(rest);
    }
    if (rest.isEmpty() || !QStringView(u"diuxXoc").contains(rest.front())) return {};
    field.kind = rest.front().unicode();
    rest = rest.sliced(1);
    return field;
}

struct FieldText {
    QString prefix;  // before the zeros that fill the width
    QString digits;
};

// The character of that code. Nothing for one that no path can hold.
std::optional<FieldText> CharacterText(uint32_t code) {
    if (code == 0 || code > QChar::LastValidCodePoint || QChar::isSurrogate(code)) return {};
    const char32_t character = code;
    return FieldText{{}, QString::fromUcs4(&character, 1)};
}

FieldText DigitsText(const NumberField& field, uint32_t number) {
    const bool isHex = field.kind == u'x' || field.kind == u'X';
    const bool isOctal = field.kind == u'o';
    const bool isDecimal = field.kind == u'd' || field.kind == u'i';
    FieldText text;
    if (number != 0 || field.precision != 0)
        text.digits = QString::number(number, isHex ? 16 : isOctal ? 8 : 10);
    if (field.kind == u'X') text.digits = text.digits.toUpper();
    text.digits = text.digits.rightJustified(std::max<qsizetype>(field.precision, 0), u'0');
    if (isOctal && field.isPrefixed && !text.digits.startsWith(u'0')) text.digits.prepend(u'0');
    if (isHex && field.isPrefixed && number != 0)
        text.prefix = field.kind == u'x' ? QStringLiteral("0x") : QStringLiteral("0X");
    if (isDecimal && field.isSigned)
        text.prefix = QStringLiteral("+");
    else if (isDecimal && field.isSpaced)
        text.prefix = QStringLiteral(" ");
    return text;
}

std::optional<QString> FormatField(const NumberField& field, uint32_t number) {
    const bool isCharacter = field.kind == u'c';
    const std::optional<FieldText> text =
        isCharacter ? CharacterText(number) : std::optional(DigitsText(field, number));
    if (!text) return {};
    if (field.isZeroFilled && !field.isLeft && !isCharacter && field.precision < 0)
        return text->prefix + text->digits.rightJustified(field.width - text->prefix.size(), u'0');
    const QString whole = text->prefix + text->digits;
    return field.isLeft ? whole.leftJustified(field.width) : whole.rightJustified(field.width);
}

// The text, however long. Nothing when there is more than one field, or anything else behind a '%'.
std::optional<QString> Format(QStringView rest, uint32_t number) {
    QString result;
    bool hadField = false;
    while (!rest.isEmpty()) {
        const qsizetype percent = rest.indexOf(u'%');
        result += rest.first(percent < 0 ? rest.size() : percent);
        if (percent < 0) break;
        rest = rest.sliced(percent + 1);
        if (rest.startsWith(u'%')) {
            result += u'%';
            rest = rest.sliced(1);
            continue;
        }
        const std::optional<NumberField> field = TakeField(rest);
        if (!field || hadField) return {};
        hadField = true;
        const std::optional<QString> text = FormatField(*field, number);
        if (!text) return {};
        result += *text;
    }
    return result;
}

QString JoinPath(const FramePathTemplate& path) {
    QStringView folder = path.folder;
    while (folder.endsWith(u'/') || folder.endsWith(u'\\'))
        folder.chop(1);
    return folder.toString() + u'/' + path.format;
}

}  // namespace

std::optional<QString> FormatNumber(const QString& format, uint32_t number) {
    std::optional<QString> text = Format(format, number);
    if (text && text->size() > kMaxLength) text.reset();
    return text;
}

std::optional<QString> BuildFramePath(const FramePathTemplate& path, uint32_t number) {
    return FormatNumber(JoinPath(path), number);
}

FramePathSample PreviewFramePath(const FramePathTemplate& path, uint32_t number) {
    const QString joined = JoinPath(path);
    if (joined.size() > kMaxLength) return {false, kTooLong.toString()};
    if (!joined.contains(u'%')) return {false, kNoField.toString()};
    const std::optional<QString> text = Format(joined, number);
    if (!text) return {false, kBadField.toString()};
    if (text->size() > kMaxLength) return {false, kTooLong.toString()};
    return {true, *text};
}

}  // namespace pixelgrove
