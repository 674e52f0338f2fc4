#include "render/source/MessageLines.h"

#include "core/Stages.h"
#include "platform/TextScan.h"

namespace pixelgrove {
namespace {

constexpr qsizetype kMarkedLineLength = 62;
constexpr qsizetype kTargetLineLength = 255;
constexpr qsizetype kTargetNameLength = kFileNameCapacity - 1;
constexpr qsizetype kTargetNumberLength = 31;

bool IsStageName(const QString& name) {
    for (uint32_t id = kStageCommon; id <= kStageImage; ++id) {
        if (name == StageName(id)) return true;
    }
    return false;
}

}  // namespace

std::vector<int> ErrorLinesOf(const QString& paneText, const QString& stageName) {
    std::vector<int> lines;
    ForEachLine(paneText, [&](QStringView whole) {
        const QStringView line = whole.left(kMarkedLineLength);
        if (!line.contains(stageName, Qt::CaseInsensitive)) return;
        const qsizetype close = line.indexOf(u')');
        if (close < 0) return;
        const qsizetype open = line.first(close).lastIndexOf(u'(');
        if (open < 0) return;
        qsizetype position = 0;
        if (const auto number = ScanInt(line.sliced(open + 1, close - open - 1), position)) {
            lines.push_back(*number);
        }
    });
    return lines;
}

std::optional<MessageTarget> ParseMessageLine(const QString& line) {
    const QStringView text = QStringView(line).left(kTargetLineLength);
    const qsizetype open = text.indexOf(u'(');
    if (open < 1 || open > kTargetNameLength) return std::nullopt;
    const qsizetype close = text.indexOf(u')', open + 1);
    if (close < 0) return std::nullopt;
    const QStringView numberText = text.sliced(open + 1, close - open - 1);
    if (numberText.isEmpty() || numberText.size() > kTargetNumberLength) return std::nullopt;

    // Text that is no number counts as 0, and a 0 must be written as one.
    qsizetype position = 0;
    const int number = ScanInt(numberText, position).value_or(0);
    if (number == 0 && numberText.front() != u'0') return std::nullopt;

    MessageTarget target{text.first(open).toString(), number};
    target.isStage = IsStageName(target.name);
    return target;
}

}  // namespace pixelgrove
