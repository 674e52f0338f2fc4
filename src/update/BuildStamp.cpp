#include "update/BuildStamp.h"

#include <optional>

#include "platform/TextScan.h"

namespace pixelgrove {

namespace {

// Three letters each, from January at 3 on.
constexpr QStringView kMonths = u"   JANFEBMARAPRMAYJUNJULAUGSEPOCTNOVDEC";

int MonthNumber(QStringView word) {
    if (word.isEmpty()) return 0;
    const qsizetype at = kMonths.indexOf(word, 0, Qt::CaseInsensitive);
    return at < 0 ? 0 : int(at / 3);
}

struct Stamp {
    QString type, month, time;
    int day = 0, year = 0;
};

// As scanf reads "%s %s %d %d @ %s": up to the first part that isn't there.
Stamp Read(QStringView text) {
    Stamp stamp;
    qsizetype at = 0;
    stamp.type = ScanWord(text, at).toString();
    stamp.month = ScanWord(text, at).toString();
    const std::optional<int> day = ScanInt(text, at);
    if (!day) return stamp;
    stamp.day = *day;
    const std::optional<int> year = ScanInt(text, at);
    if (!year) return stamp;
    stamp.year = *year;
    SkipSpace(text, at);
    if (SkipChar(text, at, u'@')) stamp.time = ScanWord(text, at).toString();
    return stamp;
}

QString Padded(int number, int width) {
    return QString::number(uint32_t(number)).rightJustified(width, u'0');
}

}  // namespace

QString NormaliseBuildStamp(QStringView text) {
    const Stamp stamp = Read(text);
    return QStringLiteral("%1-%2-%3 ")
               .arg(Padded(stamp.year, 4), Padded(MonthNumber(stamp.month), 2), Padded(stamp.day, 2)) +
           stamp.time + u' ' + stamp.type;
}

}  // namespace pixelgrove
