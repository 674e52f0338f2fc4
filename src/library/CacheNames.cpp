#include "library/CacheNames.h"

#include <algorithm>
#include <cstdint>

#include "platform/Files.h"

namespace pixelgrove {
namespace {

constexpr char16_t kAlphabet[] = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ234567";
constexpr int kDigitBits = 5;
constexpr qsizetype kGroupDigits = 8;

bool IsCapital(QChar unit) {
    return unit >= u'A' && unit <= u'Z';
}

bool IsSmall(QChar unit) {
    return unit >= u'a' && unit <= u'z';
}

// Other letters stay: there are some whose capital's small letter is another.
constexpr char16_t kCaseBit = u'a' - u'A';

bool IsUsableId(QStringView id) {
    return !id.isEmpty() && id.size() <= kMaxShaderIdUnits && IsSafeFileName(id);
}

std::optional<uint32_t> Base32Value(QChar digit) {
    if (digit >= u'A' && digit <= u'Z') return digit.unicode() - u'A';
    if (digit >= u'2' && digit <= u'7') return digit.unicode() - u'2' + 26;
    return std::nullopt;
}

}  // namespace

std::optional<QString> EncodeCacheName(QStringView id) {
    if (!IsUsableId(id)) return std::nullopt;
    QString name = id.toString();
    uint32_t mask = 0;
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (!IsCapital(name[i])) continue;
        name[i] = QChar(name[i].unicode() + kCaseBit);
        mask |= 1u << i;
    }
    return name + u'_' + QString::number(mask, 16).toUpper();
}

std::optional<QString> DecodeCacheName(QStringView name) {
    const qsizetype split = name.indexOf(u'_');
    if (split < 0 || !IsUsableId(name.first(split))) return std::nullopt;
    const QStringView digits = name.sliced(split + 1);
    // toULongLong would take blanks and signs as well.
    const auto isDigit = [](QChar unit) {
        return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'F') ||
               (unit >= u'a' && unit <= u'f');
    };
    bool fits = false;
    const qulonglong mask = digits.toULongLong(&fits, 16);
    if (!fits || !std::all_of(digits.begin(), digits.end(), isDigit)) return std::nullopt;
    QString id = name.first(split).toString();
    for (qsizetype i = 0; i < id.size(); ++i)
        if ((mask >> i & 1) != 0 && IsSmall(id[i])) id[i] = QChar(id[i].unicode() - kCaseBit);
    return id;
}

QString Base32Encode(QStringView text) {
    QString name;
    name.reserve((text.size() + 4) / 5 * kGroupDigits);
    uint32_t bits = 0;
    int count = 0;
    for (const QChar unit : text) {
        bits = bits << 8 | (unit.unicode() & 0xFF);
        for (count += 8; count >= kDigitBits; count -= kDigitBits)
            name += kAlphabet[bits >> (count - kDigitBits) & 31];
    }
    if (count > 0) name += kAlphabet[bits << (kDigitBits - count) & 31];
    while (name.size() % kGroupDigits != 0)
        name += u'=';
    return name;
}

std::optional<QString> Base32Decode(QStringView name) {
    if (name.size() % kGroupDigits != 0) return std::nullopt;
    QString text;
    uint32_t bits = 0;
    int count = 0;
    for (const QChar digit : name) {
        if (digit == u'=') break;
        const std::optional<uint32_t> value = Base32Value(digit);
        if (!value) return std::nullopt;
        bits = bits << kDigitBits | *value;
        count += kDigitBits;
        if (count < 8) continue;
        count -= 8;
        text += QChar(char16_t(bits >> count & 0xFF));
    }
    return text;
}

bool IsShaderId(QStringView text) {
    return !text.isEmpty() && text.size() <= kMaxShaderIdUnits &&
           std::all_of(text.begin(), text.end(), [](QChar unit) {
               return IsCapital(unit) || IsSmall(unit) || (unit >= u'0' && unit <= u'9');
           });
}

}  // namespace pixelgrove
