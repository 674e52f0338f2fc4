#include "platform/CodePage.h"

#include <QList>
#include <algorithm>
#include <array>
#include <optional>

namespace pixelgrove {

namespace {

// Code points of the bytes 0x80 to 0x9F; all other bytes stand for the code point of the same number.
constexpr char16_t kHighControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

std::optional<char> ByteOf(char16_t unit) {
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return char(unit);
    for (int i = 0; i < 32; ++i) {
        if (kHighControls[i] == unit) return char(0x80 + i);
    }
    return std::nullopt;
}

}  // namespace

QByteArray ToCodePage(QStringView text) {
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char* out = bytes.data();
    for (QChar unit : text)
        *out++ = ByteOf(unit.unicode()).value_or('?');
    return bytes;
}

qsizetype CountLackingCharacters(QStringView text) {
    return std::ranges::count_if(text.toUcs4(),
                                 [](uint point) { return point > 0xFFFF || !ByteOf(char16_t(point)); });
}

QString FromCodePage(QByteArrayView bytes) {
    QString text(bytes.size(), Qt::Uninitialized);
    QChar* out = text.data();
    for (char byte : bytes) {
        const auto value = uint8_t(byte);
        *out++ = QChar(value >= 0x80 && value < 0xA0 ? kHighControls[value - 0x80] : char16_t(value));
    }
    return text;
}

}  // namespace pixelgrove
